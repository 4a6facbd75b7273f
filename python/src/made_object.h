#pragma once

#include <cstddef>
#include <memory>
#include <pybind11/pybind11.h>
#include <utility>

namespace metrify_python {

/// The base of classes whose objects Python owns. Code in Python can make an object without its constructor,
/// as in `Plan.__new__(Plan)`. Its methods would work on memory without an object, which pybind11 allocates
/// with the operator of the class.
struct made_object {
    static void* operator new(std::size_t /*size*/) {
        throw pybind11::type_error("the object was made without its constructor");
    }
};

/// The constructor of such a class.
template <class Object, class... Arguments>
std::unique_ptr<Object> make_object(Arguments... arguments) {
    return std::unique_ptr<Object>(::new Object(std::move(arguments)...));
}

} // namespace metrify_python
