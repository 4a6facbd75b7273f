// The static objects of the module, constructed in this order.

#include "addin/application.h"
#include "addin/function_records.h"
#include "addin/module/module_integration.h"
#include "xllrt/app/ribbon_callback.h"

namespace metrify {

namespace {

const CXlFunctionRecordLink metrify_link(metrify_record);
const CXlFunctionRecordLink macro_link(macro_record);

CMetrifyApp application(ModuleIntegration());

const CXlFunctionRecordLink ribbon_link(ribbon_record);
const CRibbonEventRegistrar ribbon_registrar;

} // namespace

} // namespace metrify
