#include "integration/application/object_text.h"

#include "integration/com/com_failure.h"
#include "integration/com/dispatch_call.h"

#include <array>
#include <span>

namespace metrify {

namespace {

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

HRESULT GetActiveWorksheet(IDispatch* application, ComPtr<IDispatch>& sheet) {
    if (!application)
        return E_POINTER;
    const HRESULT code = GetObjectProperty(application, u"ActiveWorksheet", sheet);
    // Not every host has the property under this name.
    return code == DISP_E_UNKNOWNNAME ? GetObjectProperty(application, u"ActiveSheet", sheet) : code;
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
