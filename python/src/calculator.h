#pragma once

#include <pybind11/pybind11.h>

namespace metrify_python {

/// Adds the functions run and cells and the class Calculator to the module.
void add_calculator(pybind11::module_& module);

} // namespace metrify_python
