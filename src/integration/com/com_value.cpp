#include "integration/com/com_value.h"

namespace metrify {

std::u16string TextOf(const wchar_t* text) {
    return text ? reinterpret_cast<const char16_t*>(text) : std::u16string();
}

ComVariant::ComVariant(std::u16string_view text) : ComVariant() {
    V_VT(&value_) = VT_BSTR;
    V_BSTR(&value_) =
        SysAllocStringLen(reinterpret_cast<const wchar_t*>(text.data()), static_cast<UINT>(text.size()));
}

ComVariant::ComVariant(std::int32_t integer) : ComVariant() {
    V_VT(&value_) = VT_I4;
    V_I4(&value_) = integer;
}

ComVariant::ComVariant(IDispatch* object) : ComVariant() {
    V_VT(&value_) = VT_DISPATCH;
    V_DISPATCH(&value_) = ComPtr<IDispatch>(object).Release();
}

ComVariant::ComVariant(const VARIANT& other) : ComVariant() {
    VariantCopy(&value_, const_cast<VARIANT*>(&other)); // which only reads it
}

ComVariant ComVariant::Missing() {
    ComVariant missing;
    V_VT(&missing.value_) = VT_ERROR;
    V_ERROR(&missing.value_) = DISP_E_PARAMNOTFOUND;
    return missing;
}

VARIANT* ComVariant::Receive() {
    VariantClear(&value_);
    return &value_;
}

bool ComVariant::Become(VARTYPE type) {
    return Type() == type || SUCCEEDED(VariantChangeType(&value_, &value_, 0, type));
}

std::u16string ComVariant::Text() const {
    if (Type() != VT_BSTR || !V_BSTR(&value_))
        return {};
    return {reinterpret_cast<const char16_t*>(V_BSTR(&value_)), SysStringLen(V_BSTR(&value_))};
}

ComPtr<IDispatch> ComVariant::Object() const {
    return ComPtr<IDispatch>(Type() == VT_DISPATCH ? V_DISPATCH(&value_) : nullptr);
}

void ComVariant::MoveTo(VARIANT& target) {
    target = value_;
    VariantInit(&value_);
}

} // namespace metrify
