#pragma once

// A reference to an object, given back by the destructor.

#include <unknwn.h>
#include <utility>

namespace metrify {

template <class Interface>
class ComPtr {
  public:
    ComPtr() = default;
    /// Adds a reference of its own; null is no object.
    explicit ComPtr(Interface* object) : object_(object) {
        if (object_)
            object_->AddRef();
    }
    // The checks lose count of the references here and below.
    ComPtr(const ComPtr& other) : ComPtr(other.object_) {} // NOLINT(clang-analyzer-cplusplus.NewDelete)
    ComPtr(ComPtr&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    ComPtr& operator=(ComPtr other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~ComPtr() {
        if (object_)
            object_->Release();
    }

    /// Takes over a reference that somebody else added.
    static ComPtr Take(Interface* object) {
        ComPtr taken;
        taken.object_ = object;
        return taken;
    }

    Interface* Get() const { return object_; } // NOLINT(clang-analyzer-cplusplus.NewDelete)
    Interface* operator->() const { return object_; }
    explicit operator bool() const { return object_ != nullptr; }

    /// Where a call puts an object with a reference. What was there is let go.
    Interface** Receive() {
        *this = ComPtr();
        return &object_;
    }
    void** ReceiveAny() { return reinterpret_cast<void**>(Receive()); }

    /// Hands the reference over to the caller.
    Interface* Release() { return std::exchange(object_, nullptr); }

  private:
    Interface* object_ = nullptr;
};

} // namespace metrify
