#pragma once

// Owning texts and values of automation.

#include "integration/com/com_ptr.h"

#include <concepts>
#include <oleauto.h>
#include <string>
#include <string_view>

namespace metrify {

/// The system's wide characters are UTF-16.
inline const wchar_t* AsSystemText(const std::u16string& text) {
    return reinterpret_cast<const wchar_t*>(text.c_str());
}
inline const wchar_t* AsSystemText(std::u16string&&) = delete;

/// Converts a text of the system; null becomes the empty text.
std::u16string TextOf(const wchar_t* text);

class ComVariant {
  public:
    ComVariant() { VariantInit(&value_); }
    explicit ComVariant(std::u16string_view text);
    /// Restricted to bool, because pointers convert to it.
    template <std::same_as<bool> Bool>
    explicit ComVariant(Bool logical) : ComVariant() {
        V_VT(&value_) = VT_BOOL;
        V_BOOL(&value_) = logical ? VARIANT_TRUE : VARIANT_FALSE;
    }
    explicit ComVariant(std::int32_t integer);
    /// Adds a reference.
    explicit ComVariant(IDispatch* object);
    ComVariant(const ComVariant& other) : ComVariant(other.value_) {}
    /// Copies; an object gets another reference.
    explicit ComVariant(const VARIANT& other);
    ComVariant(ComVariant&& other) noexcept : ComVariant() { std::swap(value_, other.value_); }
    ComVariant& operator=(ComVariant other) noexcept {
        std::swap(value_, other.value_);
        return *this;
    }
    ~ComVariant() { VariantClear(&value_); }

    /// The value of an omitted argument.
    static ComVariant Missing();

    const VARIANT& Get() const { return value_; }
    VARTYPE Type() const { return V_VT(&value_); }

    /// Output parameter of a call. Releases the present value.
    VARIANT* Receive();

    /// Converts the value to another type. Returns false on failure.
    bool Become(VARTYPE type);

    /// The text; empty for another type.
    std::u16string Text() const;
    /// The object with a reference; null for another type.
    ComPtr<IDispatch> Object() const;

    /// Transfers ownership of the value.
    void MoveTo(VARIANT& target);

  private:
    VARIANT value_;
};

} // namespace metrify
