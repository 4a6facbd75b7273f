#include "conversion.h"

#include "errors.h"
#include "strided.h"

#include <algorithm>
#include <pybind11/numpy.h>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace py = pybind11;

namespace metrify_python {

namespace {

constexpr int aligned = py::detail::npy_api::NPY_ARRAY_ALIGNED_;
using number_array = py::array_t<double, py::array::forcecast | aligned>;

[[noreturn]] void refuse_type(const std::string& what) {
    throw py::type_error("real numbers are needed, not " + what);
}

std::string type_name(const py::handle& value) {
    return py::cast<std::string>(py::type::of(value).attr("__name__"));
}

std::string dtype_name(const py::array& array) {
    const std::string name = py::cast<std::string>(py::str(array.dtype()));
    return array.dtype().kind() == 'O' ? "an array of dtype " + name : name;
}

double to_double(const py::handle& value) {
    const double number = PyFloat_AsDouble(value.ptr());
    if (number == -1.0 && PyErr_Occurred() != nullptr)
        throw py::error_already_set();
    return number;
}

// Objects that can be converted to a float, such as decimals and fractions.
bool has_float(const py::handle& value) {
    const PyNumberMethods* methods = Py_TYPE(value.ptr())->tp_as_number;
    return methods != nullptr && methods->nb_float != nullptr;
}

bool is_plain_array(const py::object& value) {
    return Py_TYPE(value.ptr()) == py::detail::npy_api::get().PyArray_Type_;
}

bool is_aligned(const py::array& array) {
    return (array.flags() & aligned) != 0;
}

// Refers to the numbers of an array of float64, and otherwise is a copy.
number_array to_numbers(const py::object& value) {
    // The usual case first, since the checks below take longer than the conversion of a short array.
    if (is_plain_array(value) && py::isinstance<py::array_t<double>>(value)) {
        auto array = py::reinterpret_borrow<number_array>(value);
        if (is_aligned(array))
            return array;
    }
    const py::array numbers = py::array::ensure(value);
    if (!numbers)
        refuse_type(type_name(value));
    // Without the mask, the masked numbers would be results like any others.
    if (py::isinstance(value, py::module_::import("numpy").attr("ma").attr("MaskedArray")))
        refuse_type("a masked array; its method filled() gives a plain one");
    const char kind = numbers.dtype().kind();
    if (kind == 'O' && numbers.ndim() == 0 && has_float(value))
        return number_array(py::float_(to_double(value)));
    if (std::string_view("biuf").find(kind) == std::string_view::npos)
        refuse_type(kind == 'O' && !py::isinstance<py::array>(value) ? type_name(value)
                                                                     : dtype_name(numbers));
    number_array doubles = number_array::ensure(numbers);
    if (!doubles)
        throw py::error_already_set();
    return doubles;
}

bool have_same_shape(const py::array& a, const py::array& b) {
    return a.ndim() == b.ndim() && std::equal(a.shape(), a.shape() + a.ndim(), b.shape());
}

bool are_same_numbers(const py::array& a, const py::array& b) {
    return a.data() == b.data() && std::equal(a.strides(), a.strides() + a.ndim(), b.strides());
}

py::array to_result_array(const py::object& out, const py::array& from) {
    if (!py::isinstance<py::array_t<double>>(out))
        throw py::type_error("out must be an array of float64");
    auto array = py::reinterpret_borrow<py::array>(out);
    if (!have_same_shape(array, from))
        throw py::value_error("out must have the shape of the numbers");
    if (!array.writeable() || !is_aligned(array))
        throw py::value_error("out must be writeable and aligned");
    return array;
}

void apply(const metrify_plan& plan, const py::array& from, py::array& to) {
    if (from.size() == 0)
        return;
    std::vector<axis> axes;
    for (py::ssize_t i = 0; i < from.ndim(); ++i)
        axes.push_back({from.shape(i), from.strides(i), to.strides(i)});
    axes = simplified(std::move(axes));
    const axis& row = axes.back();
    const char* source = static_cast<const char*>(from.data());
    char* target = static_cast<char*>(to.mutable_data());
    metrify_status status = METRIFY_OK;
    {
        const py::gil_scoped_release released;
        for_each_row(axes, [&](std::ptrdiff_t from_offset, std::ptrdiff_t to_offset) {
            if (status == METRIFY_OK)
                status = metrify_plan_apply(&plan, reinterpret_cast<const double*>(source + from_offset),
                                            row.from_stride, reinterpret_cast<double*>(target + to_offset),
                                            row.to_stride, static_cast<std::size_t>(row.length));
        });
    }
    check(status);
}

py::array new_result_array(const py::array& from) {
    if (from.ndim() == 1 || (from.flags() & py::array::c_style) != 0)
        return py::array_t<double>(std::vector<py::ssize_t>(from.shape(), from.shape() + from.ndim()));
    // The numbers are in the same order in memory.
    return py::module_::import("numpy").attr("empty_like")(from);
}

// From the first byte of an array to the end of the last one.
std::pair<const char*, const char*> extent(const py::array& array) {
    const char* begin = static_cast<const char*>(array.data());
    const char* end = begin + sizeof(double);
    for (py::ssize_t i = 0; i < array.ndim(); ++i) {
        const py::ssize_t distance = array.strides(i) * (array.shape(i) - 1);
        (distance < 0 ? begin : end) += distance;
    }
    return {begin, end};
}

bool overlap(const py::array& a, const py::array& b) {
    if (a.size() == 0)
        return false;
    const auto [a_begin, a_end] = extent(a);
    const auto [b_begin, b_end] = extent(b);
    return a_begin < b_end && b_begin < a_end;
}

py::array convert_array(const metrify_plan& plan, py::array from, const py::object& out) {
    py::array result = out.is_none() ? new_result_array(from) : to_result_array(out, from);
    if (!out.is_none() && !are_same_numbers(from, result) && overlap(from, result))
        from = from.attr("copy")();
    apply(plan, from, result);
    return result;
}

} // namespace

py::object convert_value(const metrify_plan& plan, const py::object& value, const py::object& out) {
    // This also works without NumPy.
    if (out.is_none() && (PyFloat_Check(value.ptr()) || PyLong_Check(value.ptr())))
        return py::float_(metrify_plan_convert(&plan, to_double(value)));
    const number_array from = to_numbers(value);
    if (out.is_none() && from.ndim() == 0)
        return py::float_(metrify_plan_convert(&plan, *from.data()));
    return convert_array(plan, from, out);
}

} // namespace metrify_python
