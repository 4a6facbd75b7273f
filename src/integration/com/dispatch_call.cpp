#include "integration/com/dispatch_call.h"

#include <algorithm>
#include <vector>

namespace metrify {

DispatchOutcome CallMember(IDispatch* object, const DispatchCall& call, std::span<const ComVariant> arguments,
                           ComVariant& answer) {
    std::u16string name = call.name;
    LPOLESTR names[] = {reinterpret_cast<LPOLESTR>(name.data())};
    DISPID id = DISPID_UNKNOWN;
    const HRESULT found = object->GetIDsOfNames(IID_NULL, names, 1, call.locale, &id);
    if (FAILED(found))
        return {found, u"GetIDsOfNames"};
    // The interface takes the arguments in reverse order. The caller keeps ownership.
    std::vector<VARIANT> reversed;
    std::transform(arguments.rbegin(), arguments.rend(), std::back_inserter(reversed),
                   [](const ComVariant& argument) { return argument.Get(); });
    DISPPARAMS parameters{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
    DISPID put = DISPID_PROPERTYPUT;
    const bool is_put = call.flags == DISPATCH_PROPERTYPUT;
    if (is_put) {
        parameters.rgdispidNamedArgs = &put;
        parameters.cNamedArgs = 1;
    }
    return {object->Invoke(id, IID_NULL, call.locale, call.flags, &parameters,
                           is_put ? nullptr : answer.Receive(), nullptr, nullptr),
            u"Invoke"};
}

HRESULT GetProperty(IDispatch* object, const char16_t* name, ComVariant& value) {
    return GetProperty(object, name, {}, value);
}

HRESULT GetProperty(IDispatch* object, const char16_t* name, std::span<const ComVariant> arguments,
                    ComVariant& value) {
    return CallMember(object, {.name = name, .flags = DISPATCH_PROPERTYGET}, arguments, value).code;
}

HRESULT PutProperty(IDispatch* object, const char16_t* name, const ComVariant& value) {
    ComVariant none;
    return CallMember(object, {.name = name, .flags = DISPATCH_PROPERTYPUT}, {&value, 1}, none).code;
}

HRESULT GetTextProperty(IDispatch* object, const char16_t* name, std::u16string& text) {
    ComVariant value;
    if (const HRESULT code = GetProperty(object, name, value); FAILED(code))
        return code;
    if (!value.Become(VT_BSTR))
        return DISP_E_TYPEMISMATCH;
    text = value.Text();
    return S_OK;
}

HRESULT GetObjectProperty(IDispatch* object, const char16_t* name, ComPtr<IDispatch>& value) {
    ComVariant any;
    if (const HRESULT code = GetProperty(object, name, any); FAILED(code))
        return code;
    value = any.Object();
    return value ? S_OK : E_FAIL;
}

} // namespace metrify
