#pragma once

// Conversion plans: a pair of unit texts that is read once, and then applied to numbers and arrays.

#include <metrify/metrify.h>
#include <pybind11/pybind11.h>

namespace metrify_python {

/// Adds the function convert and the class Plan to the module.
void add_plans(pybind11::module_& module);

} // namespace metrify_python
