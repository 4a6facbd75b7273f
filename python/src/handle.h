#pragma once

#include <memory>

namespace metrify_python {

/// The owner of an object of the library, which is released by the function Free.
template <auto Free>
struct releaser {
    template <class Object>
    void operator()(Object* object) const {
        Free(object);
    }
};
template <class Object, auto Free>
using handle = std::unique_ptr<Object, releaser<Free>>;

} // namespace metrify_python
