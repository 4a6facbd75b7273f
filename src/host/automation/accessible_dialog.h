#pragma once

// The accessible objects of the formula dialog: a title, and a group with the name of the function.

#include "host/automation/counted_object.h"

#include <oleacc.h>
#include <string>

namespace metrify::host {

/// The group with the name, either an object or a plain child of the dialog.
class AccessibleDialog final : public CountedObject<IAccessible> {
  public:
    /// A dialog whose name has this role. `group` is an object for the name, or null if the name is a plain
    /// child.
    static ComPtr<IDispatch> MakeDialog(const std::shared_ptr<ObjectContext>& context, std::u16string name,
                                        LONG name_role, ComPtr<IDispatch> group);
    /// An object for a name.
    static ComPtr<IDispatch> MakeGroup(const std::shared_ptr<ObjectContext>& context, std::u16string name,
                                       LONG name_role);

    AccessibleDialog(std::shared_ptr<ObjectContext> context, std::u16string name, LONG role, LONG name_role,
                     ComPtr<IDispatch> group);

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                     UINT*) override;

    HRESULT STDMETHODCALLTYPE get_accParent(IDispatch** parent) override;
    HRESULT STDMETHODCALLTYPE get_accChildCount(LONG* count) override;
    HRESULT STDMETHODCALLTYPE get_accChild(VARIANT child, IDispatch** object) override;
    HRESULT STDMETHODCALLTYPE get_accName(VARIANT child, BSTR* name) override;
    HRESULT STDMETHODCALLTYPE get_accValue(VARIANT, BSTR*) override;
    HRESULT STDMETHODCALLTYPE get_accDescription(VARIANT, BSTR*) override;
    HRESULT STDMETHODCALLTYPE get_accRole(VARIANT child, VARIANT* role) override;
    HRESULT STDMETHODCALLTYPE get_accState(VARIANT, VARIANT*) override;
    HRESULT STDMETHODCALLTYPE get_accHelp(VARIANT, BSTR*) override;
    HRESULT STDMETHODCALLTYPE get_accHelpTopic(BSTR*, VARIANT, LONG*) override;
    HRESULT STDMETHODCALLTYPE get_accKeyboardShortcut(VARIANT, BSTR*) override;
    HRESULT STDMETHODCALLTYPE get_accFocus(VARIANT*) override;
    HRESULT STDMETHODCALLTYPE get_accSelection(VARIANT*) override;
    HRESULT STDMETHODCALLTYPE get_accDefaultAction(VARIANT, BSTR*) override;
    HRESULT STDMETHODCALLTYPE accSelect(LONG, VARIANT) override;
    HRESULT STDMETHODCALLTYPE accLocation(LONG*, LONG*, LONG*, LONG*, VARIANT) override;
    HRESULT STDMETHODCALLTYPE accNavigate(LONG, VARIANT, VARIANT*) override;
    HRESULT STDMETHODCALLTYPE accHitTest(LONG, LONG, VARIANT*) override;
    HRESULT STDMETHODCALLTYPE accDoDefaultAction(VARIANT) override;
    HRESULT STDMETHODCALLTYPE put_accName(VARIANT, BSTR) override;
    HRESULT STDMETHODCALLTYPE put_accValue(VARIANT, BSTR) override;

  private:
    bool HasChildren() const { return role_ == ROLE_SYSTEM_DIALOG; }

    std::u16string name_;
    LONG role_;
    LONG name_role_;
    ComPtr<IDispatch> group_;
};

} // namespace metrify::host
