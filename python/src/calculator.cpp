#include "calculator.h"

#include "errors.h"
#include "handle.h"
#include "made_object.h"
#include "text.h"

#include <metrify/metrify.h>
#include <mutex>
#include <string_view>

namespace py = pybind11;
using namespace py::literals;

namespace metrify_python {

namespace {

// Releases the listing, whether the call succeeded or not.
py::str take_listing(metrify_status status, metrify_text* listing) {
    const handle<metrify_text, metrify_text_free> owner(listing);
    check(status);
    return to_str({metrify_text_data(listing), metrify_text_size(listing)});
}

py::str run(const py::str& program) {
    const text_bytes bytes(program);
    metrify_text* listing = nullptr;
    metrify_status status = METRIFY_OK;
    {
        const py::gil_scoped_release released;
        status = metrify_run(bytes.data(), bytes.size(), &listing);
    }
    return take_listing(status, listing);
}

py::tuple cells(double value, const py::str& in_units, const py::str& out_units) {
    const text_bytes in(in_units);
    const text_bytes out(out_units);
    metrify_cells* found = nullptr;
    check(metrify_convert(value, in.data(), in.size(), out.data(), out.size(), &found));
    const handle<metrify_cells, metrify_cells_free> owner(found);
    const py::str text = to_str({metrify_cells_text(found), metrify_cells_text_size(found)});
    switch (metrify_cells_kind(found)) {
    case METRIFY_KIND_NUMBER:
        return py::make_tuple(metrify_cells_number(found), text);
    case METRIFY_KIND_ERROR:
        return py::make_tuple(text, "");
    case METRIFY_KIND_EMPTY:
        break;
    }
    return py::make_tuple("", "");
}

class calculator_object : public made_object {
  public:
    calculator_object() {
        metrify_calculator* made = nullptr;
        check(metrify_calculator_new(&made));
        calculator_.reset(made);
    }

    py::str enter(const py::str& lines) {
        const text_bytes bytes(lines);
        metrify_text* listing = nullptr;
        const metrify_status status = alone([&] {
            return metrify_calculator_enter(calculator_.get(), bytes.data(), bytes.size(), &listing);
        });
        return take_listing(status, listing);
    }

    void reset() {
        check(alone([&] { return metrify_calculator_reset(calculator_.get()); }));
    }

  private:
    // Other threads of Python run during the call, but none of them in this calculator.
    template <class Call>
    metrify_status alone(const Call& call) {
        const py::gil_scoped_release released;
        const std::lock_guard guard(use_);
        return call();
    }

    handle<metrify_calculator, metrify_calculator_free> calculator_;
    std::mutex use_;
};

constexpr const char* run_help =
    R"(Run a program of the language and return its listing.

>>> print(run("x = 3 ft\nx; in"), end="")
[  1 ] x = 3 ft
       x = 0.9144 m
<BLANKLINE>
[  2 ] x; in
        = 36 in
<BLANKLINE>

A line that is refused has its message in the listing.)";

constexpr const char* cells_help =
    R"(Return the two cells that the worksheet function gives.

The number is rounded to six significant digits. A message is in the first cell, and the second is then empty.

>>> cells(3.5, "ft", "m")
(1.0668, 'm\n\n')
>>> cells(3.5, "ft", "kg")
("ERROR IN REQUESTED OUTPUT: 'kg' is incompatible.\n", ''))";

constexpr const char* calculator_help =
    R"(A calculator that keeps its variables, units and block from one call to the next.

>>> calculator = Calculator()
>>> listing = calculator.enter("x = 3 ft")
>>> print(calculator.enter("x; in"), end="")
[  2 ] x; in
        = 36 in
<BLANKLINE>

Threads that use the same calculator wait for each other.)";

} // namespace

void add_calculator(py::module_& module) {
    module.def("run", run, run_help, "program"_a);
    module.def("cells", cells, cells_help, "value"_a, "in_units"_a, "out_units"_a = "");
    py::class_<calculator_object>(module, "Calculator", calculator_help)
        .def(py::init(&make_object<calculator_object>))
        .def("enter", &calculator_object::enter, "Run lines and return their listing.", "lines"_a)
        .def("reset", &calculator_object::reset, "Forget everything, as if the calculator were new.");
}

} // namespace metrify_python
