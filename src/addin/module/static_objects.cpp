// What exists once in the module, made in this order while it is initialised.

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
