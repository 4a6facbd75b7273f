#pragma once

// Calls members of automation objects by name.

#include "integration/com/com_value.h"

#include <initializer_list>
#include <span>

namespace metrify {

/// English, which the host's object model accepts in every language.
inline constexpr LCID kHostLocale = 1033;

struct DispatchCall {
    const char16_t* name;
    WORD flags;
    LCID locale = kHostLocale;
};

struct DispatchOutcome {
    HRESULT code;
    /// The step that gave the code: "GetIDsOfNames" or "Invoke".
    std::u16string_view step;
};

/// Looks up the name and calls the member, with arguments in source order.
DispatchOutcome CallMember(IDispatch* object, const DispatchCall& call, std::span<const ComVariant> arguments,
                           ComVariant& answer);

HRESULT GetProperty(IDispatch* object, const char16_t* name, ComVariant& value);
HRESULT GetProperty(IDispatch* object, const char16_t* name, std::span<const ComVariant> arguments,
                    ComVariant& value);
HRESULT PutProperty(IDispatch* object, const char16_t* name, const ComVariant& value);

/// Reads a property as text, converting it if necessary.
HRESULT GetTextProperty(IDispatch* object, const char16_t* name, std::u16string& text);

/// Reads a property that is an object. Returns `E_FAIL` for another type.
HRESULT GetObjectProperty(IDispatch* object, const char16_t* name, ComPtr<IDispatch>& value);

} // namespace metrify
