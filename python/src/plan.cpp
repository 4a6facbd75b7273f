#include "plan.h"

#include "conversion.h"
#include "errors.h"
#include "made_object.h"
#include "text.h"

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

namespace py = pybind11;
using namespace py::literals;

namespace metrify_python {

namespace {

using shared_plan = std::shared_ptr<metrify_plan>;

// More pairs of units than a program uses in turn.
constexpr std::size_t most_recent_plans = 256;

shared_plan make_plan(std::string_view in_units, std::string_view out_units) {
    metrify_plan* plan = nullptr;
    check(metrify_plan_new(in_units.data(), in_units.size(), out_units.data(), out_units.size(), &plan));
    return {plan, metrify_plan_free};
}

// The interpreter's lock guards the plans.
shared_plan recent_plan(std::string_view in_units, std::string_view out_units) {
    static std::unordered_map<std::string, shared_plan> plans;
    static std::string key;
    key.assign(in_units).append(1, '\0').append(out_units);
    if (const auto found = plans.find(key); found != plans.end())
        return found->second;
    shared_plan made = make_plan(in_units, out_units);
    if (plans.size() == most_recent_plans)
        plans.clear();
    plans.emplace(key, made);
    return made;
}

py::object convert(const py::object& value, const py::str& in_units, const py::str& out_units,
                   const py::object& out) {
    // Shared, since another thread can replace the recent plans while an array is converted.
    const shared_plan plan = recent_plan(text_bytes(in_units).view(), text_bytes(out_units).view());
    return convert_value(*plan, value, out);
}

class plan_object : public made_object {
  public:
    plan_object(py::str in_units, py::str out_units)
        : plan_(make_plan(text_bytes(in_units).view(), text_bytes(out_units).view())),
          in_units_(std::move(in_units)), out_units_(std::move(out_units)) {}

    py::object convert(const py::object& value, const py::object& out) const {
        return convert_value(*plan_, value, out);
    }
    const py::str& in_units() const { return in_units_; }
    const py::str& out_units() const { return out_units_; }
    py::str repr() const { return py::str("Plan({!r}, {!r})").format(in_units_, out_units_); }

  private:
    shared_plan plan_;
    py::str in_units_;
    py::str out_units_;
};

constexpr const char* convert_help =
    R"(Convert a number, or an array of numbers, from one unit expression to another.

The number has the full precision of a float. The result of an array or a sequence of numbers is an array of float64
of the same shape. It is stored in `out` if that is given, which may be the array of the numbers itself. Other threads
run while an array is converted. Without `out_units` the result is in the default units.

>>> round(convert(100, "degC", "degF"), 6)
212.0

Raises Error if the language refuses the units, TypeError if the value has no real numbers.)";

constexpr const char* plan_help =
    R"(A conversion from one unit expression to another, for many numbers.

>>> to_meters = Plan("ft", "m")
>>> round(to_meters(3.5), 6)
1.0668

Several threads can use a plan at the same time. Plans can be pickled. Raises Error if the language refuses the
units.)";

} // namespace

void add_plans(py::module_& module) {
    module.def("convert", convert, convert_help, "value"_a, "in_units"_a, "out_units"_a = "", py::kw_only(),
               "out"_a = py::none());
    py::class_<plan_object>(module, "Plan", plan_help)
        .def(py::init(&make_object<plan_object, py::str, py::str>), "in_units"_a, "out_units"_a = "")
        .def("__call__", &plan_object::convert, "Convert a number or an array, like convert().", "value"_a,
             py::kw_only(), "out"_a = py::none())
        .def_property_readonly("in_units", &plan_object::in_units, "The units of the numbers.")
        .def_property_readonly("out_units", &plan_object::out_units, "The units of the results.")
        .def("__repr__", &plan_object::repr)
        // Not by py::pickle, since protocols 0 and 1 make the object without a constructor.
        .def("__reduce__", [](const py::object& self) {
            const auto& plan = self.cast<const plan_object&>();
            return py::make_tuple(py::type::of(self), py::make_tuple(plan.in_units(), plan.out_units()));
        });
}

} // namespace metrify_python
