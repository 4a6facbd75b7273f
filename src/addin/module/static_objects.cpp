// What exists once in the module, made in this order while it is initialised.

#include "addin/application.h"
#include "addin/function_records.h"

namespace metrify {

namespace {

const CXlFunctionRecordLink metrify_link(metrify_record);

CMetrifyApp application;

} // namespace

} // namespace metrify
