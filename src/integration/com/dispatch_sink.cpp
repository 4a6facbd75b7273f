#include "integration/com/dispatch_sink.h"

#include "integration/com/guarded.h"

#include <algorithm>
#include <iterator>
#include <new>

namespace metrify {

namespace {

// The arguments of an event in the order in which they are declared; the host passes them last first.
class EventArguments {
  public:
    explicit EventArguments(const DISPPARAMS& given) : given_(given) {}

    std::size_t count() const { return given_.cArgs; }
    const VARIANT& At(std::size_t index) const { return given_.rgvarg[count() - 1 - index]; }
    XlHostObject* Object(std::size_t index) const { return AsHostObject(V_DISPATCH(&At(index))); }
    bool Flag(std::size_t index) const { return V_BOOL(&At(index)) != VARIANT_FALSE; }

  private:
    const DISPPARAMS& given_;
};

struct EventRow {
    DISPID id;
    /// A letter an argument: D object, B flag, R flag by reference, which takes the answer.
    std::string_view arguments;
    bool (*tell)(CXllApp&, const EventArguments&);
};

using Operation0 = bool (CXllApp::*)();
using Reserved = void (CXllApp::*)();
using Operation1 = bool (CXllApp::*)(XlHostObject*);
using Operation2 = bool (CXllApp::*)(XlHostObject*, XlHostObject*);
using OperationFlag = bool (CXllApp::*)(XlHostObject*, bool);

template <auto Operation>
bool Tell(CXllApp& application, const EventArguments& arguments) {
    using Kind = decltype(Operation);
    if constexpr (std::is_same_v<Kind, Reserved>) {
        (application.*Operation)();
        return false;
    } else if constexpr (std::is_same_v<Kind, Operation0>) {
        return (application.*Operation)();
    } else if constexpr (std::is_same_v<Kind, Operation1>) {
        return (application.*Operation)(arguments.Object(0));
    } else if constexpr (std::is_same_v<Kind, Operation2>) {
        return (application.*Operation)(arguments.Object(0), arguments.Object(1));
    } else {
        static_assert(std::is_same_v<Kind, OperationFlag>);
        return (application.*Operation)(arguments.Object(0), arguments.Flag(1));
    }
}

constexpr EventRow kEvents[] = {
    {1554, "DD", Tell<&CXllApp::OnReservedEvent17>},
    {1556, "DD", Tell<&CXllApp::OnReservedEvent18>},
    {1557, "DD", Tell<&CXllApp::OnReservedEvent19>},
    {1558, "DD", Tell<&CXllApp::OnSelectionChange>},
    {1559, "DDR", Tell<&CXllApp::OnBeforeDoubleClick>},
    {1560, "DDR", Tell<&CXllApp::OnBeforeRightClick>},
    {1561, "D", Tell<&CXllApp::OnSheetActivate>},
    {1562, "D", Tell<&CXllApp::OnSheetDeactivate>},
    {1563, "D", Tell<&CXllApp::OnCalculate>},
    {1564, "DD", Tell<&CXllApp::OnSheetChange>},
    {1565, "D", Tell<&CXllApp::OnNewWorkbook>},
    {1567, "D", Tell<&CXllApp::OnWorkbookOpen>},
    {1568, "D", Tell<&CXllApp::OnWorkbookActivate>},
    {1569, "D", Tell<&CXllApp::OnWorkbookDeactivate>},
    {1570, "DR", Tell<&CXllApp::OnWorkbookBeforeClose>},
    {1571, "DBR", Tell<&CXllApp::OnWorkbookBeforeSave>},
    {1572, "DR", Tell<&CXllApp::OnWorkbookEvent13>},
    {1573, "DD", Tell<&CXllApp::OnWorkbookNewSheet>},
    {1574, "D", Tell<&CXllApp::OnWorkbookEvent15>},
    {1575, "D", Tell<&CXllApp::OnWorkbookEvent16>},
    {2612, "", Tell<&CXllApp::OnAfterCalculate>},
    {2911, "DB", Tell<&CXllApp::OnWorkbookAfterSave>},
};

VARTYPE TypeOf(char letter) {
    switch (letter) {
    case 'D':
        return VT_DISPATCH;
    case 'B':
        return VT_BOOL;
    default:
        return VT_BYREF | VT_BOOL;
    }
}

bool AreOfTypes(const EventArguments& arguments, std::string_view letters) {
    for (std::size_t i = letters.size(); i-- > 0;)
        if (V_VT(&arguments.At(i)) != TypeOf(letters[i]))
            return false;
    return true;
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
    const auto* row = std::find_if(std::begin(kEvents), std::end(kEvents),
                                   [event](const EventRow& one) { return one.id == event; });
    if (row == std::end(kEvents))
        return DISP_E_MEMBERNOTFOUND;
    const EventArguments arguments(*parameters);
    if (arguments.count() != row->arguments.size())
        return DISP_E_BADPARAMCOUNT;
    if (!AreOfTypes(arguments, row->arguments))
        return DISP_E_TYPEMISMATCH;
    const bool answer = application_ && Guarded([&] { return row->tell(*application_, arguments); });
    if (row->arguments.ends_with('R'))
        *V_BOOLREF(&arguments.At(arguments.count() - 1)) = answer ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
}

} // namespace metrify
