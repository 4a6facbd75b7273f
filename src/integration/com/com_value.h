#pragma once

// Texts and values of automation, given back by their destructors.

#include "integration/com/com_ptr.h"

#include <concepts>
#include <oleauto.h>
#include <string>
#include <string_view>

namespace metrify {

/// UTF-16 is what the system calls wide.
inline const wchar_t* AsSystemText(const std::u16string& text) {
    return reinterpret_cast<const wchar_t*>(text.c_str());
}
inline const wchar_t* AsSystemText(std::u16string&&) = delete;

/// The text of the system's own kind; null is the empty text.
std::u16string TextOf(const wchar_t* text);

class ComVariant {
  public:
    ComVariant() { VariantInit(&value_); }
    explicit ComVariant(std::u16string_view text);
    /// Of a bool alone: pointers would become one.
    template <std::same_as<bool> Bool>
    explicit ComVariant(Bool logical) : ComVariant() {
        V_VT(&value_) = VT_BOOL;
        V_BOOL(&value_) = logical ? VARIANT_TRUE : VARIANT_FALSE;
    }
    explicit ComVariant(std::int32_t integer);
    /// Adds a reference.
    explicit ComVariant(IDispatch* object);
    ComVariant(const ComVariant& other) : ComVariant(other.value_) {}
    /// A copy, with a reference of its own.
    explicit ComVariant(const VARIANT& other);
    ComVariant(ComVariant&& other) noexcept : ComVariant() { std::swap(value_, other.value_); }
    ComVariant& operator=(ComVariant other) noexcept {
        std::swap(value_, other.value_);
        return *this;
    }
    ~ComVariant() { VariantClear(&value_); }

    /// The argument that is left out.
    static ComVariant Missing();

    const VARIANT& Get() const { return value_; }
    VARTYPE Type() const { return V_VT(&value_); }

    /// Where a call puts a value. What was there is let go.
    VARIANT* Receive();

    /// Turns the value into one of another type. False if that can't be.
    bool Become(VARTYPE type);

    /// The text; the empty text if it is none.
    std::u16string Text() const;
    /// The object with a reference; none if it is no object.
    ComPtr<IDispatch> Object() const;

    /// Hands the value over.
    void MoveTo(VARIANT& target);

  private:
    VARIANT value_;
};

} // namespace metrify
