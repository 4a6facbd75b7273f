#include "tables.h"

#include "errors.h"
#include "text.h"

#include <metrify/metrify.h>

namespace py = pybind11;

namespace metrify_python {

namespace {

// A dimension that the unit lacks is left out.
py::dict exponents(const metrify_unit& unit) {
    py::dict result;
    for (std::size_t i = 0; i < METRIFY_DIMENSIONS; ++i)
        if (unit.exponents[i] != 0.0)
            result[to_str(metrify_dimension_name(i))] = unit.exponents[i];
    return result;
}

py::list unit_rows() {
    py::list rows;
    for (std::size_t i = 0; i < metrify_unit_count(); ++i) {
        metrify_unit unit{};
        check(metrify_unit_at(i, &unit));
        rows.append(py::make_tuple(to_str(unit.name), unit.factor, unit.offset, exponents(unit)));
    }
    return rows;
}

py::list function_rows() {
    py::list rows;
    for (std::size_t i = 0; i < metrify_function_count(); ++i) {
        metrify_function f{};
        check(metrify_function_at(i, &f));
        rows.append(py::make_tuple(to_str(f.name), to_str(f.arguments), to_str(f.chapter), to_str(f.help),
                                   to_str(f.takes), to_str(f.gives), to_str(f.domain), to_str(f.example),
                                   to_str(f.answer)));
    }
    return rows;
}

} // namespace

void add_tables(py::module_& module) {
    module.def("unit_rows", unit_rows, "The fields of all units.");
    module.def("function_rows", function_rows, "The fields of all built-in functions.");
}

} // namespace metrify_python
