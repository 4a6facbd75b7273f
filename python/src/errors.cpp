#include "errors.h"

#include "text.h"

#include <new>

namespace py = pybind11;

namespace metrify_python {

namespace {

// Lives as long as the interpreter, like every class of a module.
PyObject* error_class = nullptr;

py::str message() {
    std::string_view text = metrify_message();
    text.remove_suffix(text.size() - (text.find_last_not_of('\n') + 1));
    return to_str(text);
}

[[noreturn]] void raise(PyObject* exception) {
    PyErr_SetObject(exception, message().ptr());
    throw py::error_already_set();
}

} // namespace

void add_errors(py::module_& module) {
    error_class = PyErr_NewExceptionWithDoc(
        "metrify.Error", "The language refuses a text. The exception's text is the language's message.",
        PyExc_ValueError, nullptr);
    if (error_class == nullptr)
        throw py::error_already_set();
    module.add_object("Error", error_class);
}

void check(metrify_status status) {
    switch (status) {
    case METRIFY_OK:
        return;
    case METRIFY_OUT_OF_MEMORY:
        throw std::bad_alloc();
    case METRIFY_INTERRUPTED:
        raise(PyExc_KeyboardInterrupt);
    case METRIFY_BAD_ARGUMENT:
        raise(PyExc_ValueError);
    case METRIFY_REFUSED:
        break;
    }
    raise(error_class);
}

} // namespace metrify_python
