// Macros and properties by automation.

#include "integration/com/dispatch_call.h"
#include "integration/com/xll_com.h"

namespace metrify {

namespace {

// The host's alerts stay off as long as this lives, and come back if they were on.
class AlertsGuard {
  public:
    explicit AlertsGuard(IDispatch* application) : application_(application) {
        ComVariant value;
        were_on_ = SUCCEEDED(GetProperty(application, kAlerts, value)) && value.Become(VT_BOOL) &&
                   V_BOOL(&value.Get()) != VARIANT_FALSE;
        if (were_on_)
            PutProperty(application, kAlerts, ComVariant(false));
    }
    AlertsGuard(const AlertsGuard&) = delete;
    AlertsGuard& operator=(const AlertsGuard&) = delete;
    ~AlertsGuard() {
        if (were_on_)
            PutProperty(application_, kAlerts, ComVariant(true));
    }

  private:
    static constexpr const char16_t* kAlerts = u"DisplayAlerts";

    IDispatch* application_;
    bool were_on_ = false;
};

// "[", book, "]", sheet, "!" and the address.
HRESULT AddPlace(IDispatch* range, std::u16string& address) {
    ComPtr<IDispatch> sheet;
    ComPtr<IDispatch> book;
    std::u16string sheet_name;
    std::u16string book_name;
    HRESULT code = GetObjectProperty(range, u"Worksheet", sheet);
    if (SUCCEEDED(code))
        code = GetObjectProperty(sheet.Get(), u"Parent", book);
    if (SUCCEEDED(code))
        code = ObjectName(book.Get(), book_name);
    if (SUCCEEDED(code))
        code = ObjectName(sheet.Get(), sheet_name);
    if (SUCCEEDED(code))
        address = FilledText(u"[{0}]{1}!{2}", book_name, sheet_name, address);
    return code;
}

} // namespace

HRESULT CXllCom::RunMacroByText(std::u16string_view text, ComVariant& answer) {
    if (!application_)
        return E_POINTER;
    const AlertsGuard guard(application_.Get());
    return RunExcelMacroFromDisp(application_.Get(), text, answer);
}

HRESULT CXllCom::RunMacroByName(std::span<const ComVariant> arguments, ComVariant& answer) {
    if (!application_)
        return E_POINTER;
    const AlertsGuard guard(application_.Get());
    return CallMember(application_.Get(), {.name = u"Run", .flags = DISPATCH_METHOD}, arguments, answer).code;
}

HRESULT CXllCom::ActiveWorksheet(ComPtr<IDispatch>& sheet) const {
    if (!application_)
        return E_POINTER;
    const HRESULT code = GetObjectProperty(application_.Get(), u"ActiveWorksheet", sheet);
    // Not every host has the property under this name.
    return code == DISP_E_UNKNOWNNAME ? GetObjectProperty(application_.Get(), u"ActiveSheet", sheet) : code;
}

HRESULT ObjectName(IDispatch* object, std::u16string& name) {
    return GetTextProperty(object, u"Name", name);
}

HRESULT RangeAddress(IDispatch* range, std::u16string& text, bool external) {
    // Row absolute, column absolute, reference style, external, relative to.
    std::array<ComVariant, 5> arguments;
    arguments.fill(ComVariant::Missing());
    arguments[3] = ComVariant(true);
    constexpr std::size_t kPlainCount = 2;
    ComVariant address;
    const std::span<const ComVariant> all(arguments);
    const HRESULT code =
        GetProperty(range, u"AddressLocal", external ? all : all.first(kPlainCount), address);
    if (FAILED(code))
        return code;
    if (!address.Become(VT_BSTR))
        return DISP_E_TYPEMISMATCH;
    std::u16string found = address.Text();
    if (external && found.find(u'[') == std::u16string::npos) {
        if (const HRESULT place = AddPlace(range, found); FAILED(place))
            return place;
    }
    text = found;
    return S_OK;
}

} // namespace metrify
