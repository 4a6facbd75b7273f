#pragma once

#include <pybind11/pybind11.h>

namespace metrify_python {

/// Adds the functions that list units, dimensions and functions to the module.
void add_tables(pybind11::module_& module);

} // namespace metrify_python
