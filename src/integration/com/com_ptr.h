#pragma once

// An owning reference to a COM object.

#include <unknwn.h>
#include <utility>

namespace metrify {

template <class Interface>
class ComPtr {
  public:
    ComPtr() = default;
    /// Adds a reference. The object may be null.
    explicit ComPtr(Interface* object) : object_(object) {
        if (object_)
            object_->AddRef();
    }
    // The static analyser miscounts the references here and below.
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

    /// Takes ownership of an existing reference.
    static ComPtr Take(Interface* object) {
        ComPtr taken;
        taken.object_ = object;
        return taken;
    }

    Interface* Get() const { return object_; } // NOLINT(clang-analyzer-cplusplus.NewDelete)
    Interface* operator->() const { return object_; }
    explicit operator bool() const { return object_ != nullptr; }

    /// Output parameter of a call that adds a reference. Releases the present object.
    Interface** Receive() {
        *this = ComPtr();
        return &object_;
    }
    void** ReceiveAny() { return reinterpret_cast<void**>(Receive()); }

    /// Transfers the reference to the caller.
    Interface* Release() { return std::exchange(object_, nullptr); }

  private:
    Interface* object_ = nullptr;
};

} // namespace metrify
