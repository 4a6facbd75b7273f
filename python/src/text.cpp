#include "text.h"

namespace py = pybind11;

namespace metrify_python {

text_bytes::text_bytes(const py::str& text) : owner_(text) {
    Py_ssize_t size = 0;
    // Python keeps these bytes with the text, so a second call costs nothing.
    const char* data = PyUnicode_AsUTF8AndSize(text.ptr(), &size);
    if (data == nullptr) {
        PyErr_Clear();
        owner_ = py::reinterpret_steal<py::object>(
            PyUnicode_AsEncodedString(text.ptr(), "utf-8", "surrogateescape"));
        if (!owner_)
            throw py::error_already_set();
        data = PyBytes_AS_STRING(owner_.ptr());
        size = PyBytes_GET_SIZE(owner_.ptr());
    }
    view_ = {data, static_cast<std::size_t>(size)};
}

py::str to_str(std::string_view text) {
    PyObject* made =
        PyUnicode_DecodeUTF8(text.data(), static_cast<Py_ssize_t>(text.size()), "surrogateescape");
    if (made == nullptr)
        throw py::error_already_set();
    return py::reinterpret_steal<py::str>(made);
}

} // namespace metrify_python
