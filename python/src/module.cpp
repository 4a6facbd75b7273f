// The extension module _metrify, which the package metrify presents.

#include "calculator.h"
#include "errors.h"
#include "plan.h"
#include "tables.h"

#include <metrify/metrify.h>

PYBIND11_MODULE(_metrify, module) {
    module.attr("__version__") = metrify_version();
    metrify_python::add_errors(module);
    metrify_python::add_plans(module);
    metrify_python::add_calculator(module);
    metrify_python::add_tables(module);
}
