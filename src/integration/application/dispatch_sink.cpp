#include "integration/application/dispatch_sink.h"

#include "integration/com/guarded.h"
#include "xllrt/app/host_event_table.h"

#include <new>
#include <vector>

namespace metrify {

namespace {

// The arguments of an event in the order of their declaration; the host passes them in reverse order.
class EventArguments {
  public:
    explicit EventArguments(const DISPPARAMS& given) : given_(given) {}

    std::size_t count() const { return given_.cArgs; }
    const VARIANT& At(std::size_t index) const { return given_.rgvarg[count() - 1 - index]; }
    VARTYPE Type(std::size_t index) const { return V_VT(&At(index)); }
    XlEventArgument Value(std::size_t index) const {
        if (Type(index) == VT_BOOL)
            return V_BOOL(&At(index)) != VARIANT_FALSE;
        return AsHostObject(V_DISPATCH(&At(index)));
    }

  private:
    const DISPPARAMS& given_;
};

// The types are tested in the order in which the host passes the arguments.
bool AreOfTypes(const EventArguments& arguments, const XlHostEventRow& row) {
    std::size_t index = arguments.count();
    if (row.is_cancellable && arguments.Type(--index) != (VT_BYREF | VT_BOOL))
        return false;
    while (index-- > 0)
        if (arguments.Type(index) != (row.signature[index] == 'F' ? VT_BOOL : VT_DISPATCH))
            return false;
    return true;
}

bool CallOperation(CXllApp& application, const XlHostEventRow& row, const EventArguments& arguments) {
    std::vector<XlEventArgument> values;
    for (std::size_t i = 0; i < row.signature.size(); ++i)
        values.push_back(arguments.Value(i));
    return row.call(application, values);
}

} // namespace

ComPtr<CDispatchSink> CDispatchSink::Create(CXllApp* application) {
    return ComPtr<CDispatchSink>::Take(new (std::nothrow) CDispatchSink(application));
}

HRESULT CDispatchSink::QueryInterface(REFIID iid, void** object) {
    if (!object)
        return E_POINTER;
    const bool is_known = iid == IID_IUnknown || iid == IID_IDispatch || iid == kHostApplicationEvents;
    *object = is_known ? static_cast<IDispatch*>(this) : nullptr;
    if (!is_known)
        return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

ULONG CDispatchSink::Release() {
    const ULONG left = --references_;
    if (left == 0)
        delete this;
    return left;
}

HRESULT CDispatchSink::GetTypeInfoCount(UINT* count) {
    *count = 0;
    return S_OK;
}

HRESULT CDispatchSink::GetTypeInfo(UINT /*index*/, LCID /*locale*/, ITypeInfo** /*info*/) {
    return E_NOTIMPL;
}

HRESULT CDispatchSink::GetIDsOfNames(REFIID /*iid*/, LPOLESTR* /*names*/, UINT /*count*/, LCID /*locale*/,
                                     DISPID* /*ids*/) {
    return E_NOTIMPL;
}

HRESULT CDispatchSink::Invoke(DISPID event, REFIID /*iid*/, LCID /*locale*/, WORD /*flags*/,
                              DISPPARAMS* parameters, VARIANT* /*result*/, EXCEPINFO* /*exception*/,
                              UINT* /*wrong_argument*/) {
    if (!parameters)
        return DISP_E_PARAMNOTFOUND;
    const XlHostEventRow* const row = FindHostEventByDispatchId(event);
    if (!row)
        return DISP_E_MEMBERNOTFOUND;
    const EventArguments arguments(*parameters);
    if (arguments.count() != row->signature.size() + (row->is_cancellable ? 1 : 0))
        return DISP_E_BADPARAMCOUNT;
    if (!AreOfTypes(arguments, *row))
        return DISP_E_TYPEMISMATCH;
    const bool answer =
        application_ && Guarded([&] { return CallOperation(*application_, *row, arguments); });
    if (row->is_cancellable)
        if (VARIANT_BOOL* const cancel = V_BOOLREF(&arguments.At(arguments.count() - 1)))
            *cancel = answer ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
}

} // namespace metrify
