#pragma once

// Automation objects whose members are called by name.

#include "host/automation/counted_object.h"
#include "integration/com/com_value.h"

#include <algorithm>
#include <cwchar>
#include <span>
#include <string_view>

namespace metrify::host {

/// A call of a member, with arguments in source order.
class MemberCall {
  public:
    MemberCall(WORD flags, const DISPPARAMS& given) : flags_(flags), given_(given) {}

    bool IsPut() const { return (flags_ & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0; }
    std::size_t count() const { return given_.cArgs; }
    /// The argument at the index, or an omitted argument.
    ComVariant At(std::size_t index) const {
        return index < count() ? ComVariant(given_.rgvarg[count() - 1 - index]) : ComVariant::Missing();
    }

  private:
    WORD flags_;
    const DISPPARAMS& given_;
};

template <class Object>
struct MemberRow {
    const wchar_t* name;
    HRESULT (Object::*call)(const MemberCall&, ComVariant&);
};

/// `Self` supplies `static std::span<const MemberRow<Self>> Members()`.
template <class Self, class... Others>
class DispatchObject : public CountedObject<IDispatch, Others...> {
  public:
    using CountedObject<IDispatch, Others...>::CountedObject;

    /// True if the object supports a member of its class.
    bool Knows(std::wstring_view /*member*/) const { return true; }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) final {
        *count = 0;
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) final { return E_NOTIMPL; }

    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID,
                                            DISPID* ids) final {
        if (this->IsCallFailing())
            return E_FAIL;
        if (iid != IID_NULL || count != 1)
            return DISP_E_UNKNOWNINTERFACE;
        const auto members = Self::Members();
        const auto found = std::find_if(members.begin(), members.end(), [this, names](const auto& member) {
            return _wcsicmp(member.name, names[0]) == 0 && static_cast<const Self*>(this)->Knows(member.name);
        });
        ids[0] =
            found != members.end() ? kFirstId + static_cast<DISPID>(found - members.begin()) : DISPID_UNKNOWN;
        return found != members.end() ? S_OK : DISP_E_UNKNOWNNAME;
    }

    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO*, UINT*) final {
        if (this->IsCallFailing())
            return E_FAIL;
        const auto members = Self::Members();
        const auto index = static_cast<std::size_t>(id - kFirstId);
        if (id < kFirstId || index >= members.size())
            return DISP_E_MEMBERNOTFOUND;
        ComVariant answer;
        const HRESULT code =
            (static_cast<Self*>(this)->*members[index].call)(MemberCall(flags, *parameters), answer);
        if (SUCCEEDED(code) && result)
            answer.MoveTo(*result);
        return code;
    }

  private:
    static constexpr DISPID kFirstId = 100;
};

} // namespace metrify::host
