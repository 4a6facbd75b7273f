#include "integration/wizard/wizard_name.h"

#include "integration/com/com_value.h"
#include "integration/com/system_libraries.h"
#include "xllrt/text/code_page.h"

#include <vector>

namespace metrify {

namespace {

constexpr LONG kNameRole = 20;

ComVariant ChildId(LONG id) {
    return ComVariant(static_cast<std::int32_t>(id));
}

std::optional<std::string> NameOf(IAccessible* object, LONG child) {
    ComVariant name;
    VARIANT* const text = name.Receive();
    const HRESULT code = object->get_accName(ChildId(child).Get(), &V_BSTR(text));
    if (FAILED(code) || !V_BSTR(text))
        return std::nullopt;
    V_VT(text) = VT_BSTR;
    return ToNarrow(name.Text());
}

bool HasNameRole(IAccessible* object, LONG child) {
    ComVariant role;
    return SUCCEEDED(object->get_accRole(ChildId(child).Get(), role.Receive())) && role.Type() == VT_I4 &&
           V_I4(&role.Get()) == kNameRole;
}

std::vector<ComVariant> ChildrenOf(IAccessible* object) {
    LONG count = 0;
    std::vector<ComVariant> children;
    if (FAILED(object->get_accChildCount(&count)) || count <= 0)
        return children;
    std::vector<VARIANT> given(static_cast<std::size_t>(count));
    LONG obtained = 0;
    if (SUCCEEDED(GetSystemFunctions().accessible_children(object, 0, count, given.data(), &obtained))) {
        for (LONG i = 0; i < obtained; ++i) {
            children.emplace_back(given[static_cast<std::size_t>(i)]);
            VariantClear(&given[static_cast<std::size_t>(i)]);
        }
    }
    return children;
}

// Finds the first item with the role in the object or its descendants. Remembers a plain child of the root.
std::optional<std::string> Search(IAccessible* object, LONG* remembered) {
    for (const ComVariant& child : ChildrenOf(object)) {
        ComPtr<IAccessible> below;
        if (const auto any = child.Object()) {
            if (FAILED(any->QueryInterface(IID_IAccessible, below.ReceiveAny())))
                continue;
            if (HasNameRole(below.Get(), CHILDID_SELF))
                return NameOf(below.Get(), CHILDID_SELF);
            if (auto found = Search(below.Get(), nullptr))
                return found;
        } else if (child.Type() == VT_I4 && HasNameRole(object, V_I4(&child.Get()))) {
            if (remembered)
                *remembered = V_I4(&child.Get());
            return NameOf(object, V_I4(&child.Get()));
        }
    }
    return std::nullopt;
}

} // namespace

std::optional<std::string> WizardNameReader::Read(HWND dialog) {
    ComPtr<IAccessible> object;
    if (FAILED(GetSystemFunctions().accessible_object_from_window(dialog, static_cast<DWORD>(OBJID_CLIENT),
                                                                  IID_IAccessible, object.ReceiveAny())) ||
        !object)
        return std::nullopt;
    if (child_ != 0) {
        if (auto name = NameOf(object.Get(), child_))
            return name;
    }
    return Search(object.Get(), &child_);
}

} // namespace metrify
