#pragma once

#include <metrify/metrify.h>
#include <pybind11/pybind11.h>

namespace metrify_python {

/// A float for a number, an array for an array or a sequence of numbers. The result is stored in `out`, which
/// is then returned, unless that is None. Arrays are converted without the interpreter's lock.
pybind11::object convert_value(const metrify_plan& plan, const pybind11::object& value,
                               const pybind11::object& out);

} // namespace metrify_python
