#include "host/automation/accessible_dialog.h"

#include <oleauto.h>

namespace metrify::host {

namespace {

// The dialog's children: its title, and the group with the name.
constexpr LONG kTitle = 1;
constexpr LONG kGroup = 2;

} // namespace

AccessibleDialog::AccessibleDialog(std::shared_ptr<ObjectContext> context, std::u16string name, LONG role,
                                   LONG name_role, ComPtr<IDispatch> group)
    : CountedObject(std::move(context)), name_(std::move(name)), role_(role), name_role_(name_role),
      group_(std::move(group)) {}

ComPtr<IDispatch> AccessibleDialog::MakeDialog(const std::shared_ptr<ObjectContext>& context,
                                               std::u16string name, LONG name_role, ComPtr<IDispatch> group) {
    return ComPtr<IDispatch>(MakeObject<AccessibleDialog>(context, std::move(name), LONG{ROLE_SYSTEM_DIALOG},
                                                          name_role, std::move(group))
                                 .Get());
}

ComPtr<IDispatch> AccessibleDialog::MakeGroup(const std::shared_ptr<ObjectContext>& context,
                                              std::u16string name, LONG name_role) {
    return ComPtr<IDispatch>(
        MakeObject<AccessibleDialog>(context, std::move(name), name_role, name_role, ComPtr<IDispatch>())
            .Get());
}

HRESULT AccessibleDialog::get_accChildCount(LONG* count) {
    if (IsCallFailing())
        return E_FAIL;
    *count = HasChildren() ? 2 : 0;
    return S_OK;
}

HRESULT AccessibleDialog::get_accChild(VARIANT child, IDispatch** object) {
    *object = nullptr;
    if (IsCallFailing())
        return E_FAIL;
    if (V_I4(&child) != kGroup || !group_)
        return S_FALSE;
    *object = ComPtr<IDispatch>(group_).Release();
    return S_OK;
}

HRESULT AccessibleDialog::get_accName(VARIANT child, BSTR* name) {
    if (IsCallFailing())
        return E_FAIL;
    const bool has_name = HasChildren() ? V_I4(&child) == kGroup && !group_ : V_I4(&child) == CHILDID_SELF;
    *name = has_name ? SysAllocString(reinterpret_cast<const wchar_t*>(name_.c_str())) : nullptr;
    return has_name ? S_OK : S_FALSE;
}

HRESULT AccessibleDialog::get_accRole(VARIANT child, VARIANT* role) {
    if (IsCallFailing())
        return E_FAIL;
    V_VT(role) = VT_I4;
    switch (V_I4(&child)) {
    case CHILDID_SELF:
        V_I4(role) = role_;
        return S_OK;
    case kTitle:
        V_I4(role) = ROLE_SYSTEM_STATICTEXT;
        return S_OK;
    default:
        V_I4(role) = name_role_;
        return S_OK;
    }
}

// The interface requires the other operations.

HRESULT AccessibleDialog::GetTypeInfoCount(UINT* count) {
    *count = 0;
    return S_OK;
}
HRESULT AccessibleDialog::GetTypeInfo(UINT, LCID, ITypeInfo**) {
    return E_NOTIMPL;
}
HRESULT AccessibleDialog::GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) {
    return E_NOTIMPL;
}
HRESULT AccessibleDialog::Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) {
    return E_NOTIMPL;
}
HRESULT AccessibleDialog::get_accParent(IDispatch**) {
    return E_NOTIMPL;
}
HRESULT AccessibleDialog::get_accValue(VARIANT, BSTR*) {
    return E_NOTIMPL;
}
HRESULT AccessibleDialog::get_accDescription(VARIANT, BSTR*) {
    return E_NOTIMPL;
}
HRESULT AccessibleDialog::get_accState(VARIANT, VARIANT*) {
    return E_NOTIMPL;
}
HRESULT AccessibleDialog::get_accHelp(VARIANT, BSTR*) {
    return E_NOTIMPL;
}
HRESULT AccessibleDialog::get_accHelpTopic(BSTR*, VARIANT, LONG*) {
    return E_NOTIMPL;
}
HRESULT AccessibleDialog::get_accKeyboardShortcut(VARIANT, BSTR*) {
    return E_NOTIMPL;
}
HRESULT AccessibleDialog::get_accFocus(VARIANT*) {
    return E_NOTIMPL;
}
HRESULT AccessibleDialog::get_accSelection(VARIANT*) {
    return E_NOTIMPL;
}
HRESULT AccessibleDialog::get_accDefaultAction(VARIANT, BSTR*) {
    return E_NOTIMPL;
}
HRESULT AccessibleDialog::accSelect(LONG, VARIANT) {
    return E_NOTIMPL;
}
HRESULT AccessibleDialog::accLocation(LONG*, LONG*, LONG*, LONG*, VARIANT) {
    return E_NOTIMPL;
}
HRESULT AccessibleDialog::accNavigate(LONG, VARIANT, VARIANT*) {
    return E_NOTIMPL;
}
HRESULT AccessibleDialog::accHitTest(LONG, LONG, VARIANT*) {
    return E_NOTIMPL;
}
HRESULT AccessibleDialog::accDoDefaultAction(VARIANT) {
    return E_NOTIMPL;
}
HRESULT AccessibleDialog::put_accName(VARIANT, BSTR) {
    return E_NOTIMPL;
}
HRESULT AccessibleDialog::put_accValue(VARIANT, BSTR) {
    return E_NOTIMPL;
}

} // namespace metrify::host
