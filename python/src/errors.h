#pragma once

#include <metrify/metrify.h>
#include <pybind11/pybind11.h>

namespace metrify_python {

/// Adds the exception class Error to the module.
void add_errors(pybind11::module_& module);

/// Throws the Python exception of a failed call of the library; returns if there was no failure. The calling
/// thread holds the interpreter's lock and has made no other call of the library since.
void check(metrify_status status);

} // namespace metrify_python
