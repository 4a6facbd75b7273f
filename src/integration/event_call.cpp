#include "integration/event_call.h"

#include "integration/com_failure.h"
#include "integration/dispatch_call.h"
#include "integration/dispatch_sink.h"
#include "integration/xll_com.h"
#include "xllrt/format_printf.h"

#include <algorithm>

namespace metrify {

namespace {

constinit bool is_run_by_text = false;

std::u16string SheetText(IDispatch* sheet) {
    ComPtr<IDispatch> book;
    std::u16string book_name;
    std::u16string sheet_name;
    std::u16string text;
    if (SUCCEEDED(GetObjectProperty(sheet, u"Parent", book)) &&
        SUCCEEDED(ObjectName(book.Get(), book_name)) && SUCCEEDED(ObjectName(sheet, sheet_name))) {
        FormatPrintf(text, u"[%s]%s", book_name, sheet_name);
    }
    return text;
}

std::u16string Description(char letter, IDispatch* object) {
    std::u16string text;
    if (!object) {
        return text;
    }
    switch (letter) {
    case 'B':
        ObjectName(object, text);
        return text;
    case 'S':
        return SheetText(object);
    default:
        RangeAddress(object, text, false);
        return text;
    }
}

ComVariant Described(char letter, const XlEventArgument& argument) {
    if (const auto* const* object = std::get_if<XlHostObject*>(&argument)) {
        return ComVariant(Description(letter, AsDispatch(const_cast<XlHostObject*>(*object))));
    }
    return ComVariant(std::get<bool>(argument));
}

std::u16string TextForm(const ComVariant& argument) {
    if (argument.Type() == VT_BSTR) {
        return FilledText(u"\"{0}\"", argument.Text());
    }
    if (argument.Type() == VT_BOOL) {
        return V_BOOL(&argument.Get()) != VARIANT_FALSE ? u"TRUE" : u"FALSE";
    }
    ComVariant number = argument;
    number.Become(VT_BSTR);
    return number.Text();
}

bool TakeAnswer(const ComVariant& given, CXlOper& answer) {
    ComVariant number = given;
    switch (given.Type()) {
    case VT_BOOL:
        answer.SetBool(V_BOOL(&given.Get()) != VARIANT_FALSE ? 1 : 0);
        return true;
    case VT_BSTR:
        answer.SetText(given.Text());
        return true;
    default:
        if (given.Type() == VT_EMPTY || given.Type() == VT_ERROR || !number.Become(VT_R8)) {
            return false;
        }
        answer.SetNumber(V_R8(&number.Get()));
        return true;
    }
}

} // namespace

void SetEventsRunByText(bool by_text) {
    is_run_by_text = by_text;
}

std::vector<ComVariant> EventArguments(const XlEventCall& call) {
    std::vector<ComVariant> arguments{ComVariant(call.target)};
    if (call.number) {
        arguments.emplace_back(static_cast<std::int32_t>(*call.number));
    }
    const std::size_t count = std::min(call.signature.size(), call.arguments.size());
    for (std::size_t i = 0; i < count; ++i) {
        arguments.push_back(Described(call.signature[i], call.arguments[i]));
    }
    return arguments;
}

std::u16string EventMacroText(const XlEventCall& call) {
    const std::vector<ComVariant> arguments = EventArguments(call);
    std::u16string list;
    for (std::size_t i = 1; i < arguments.size(); ++i) {
        list.append(i > 1 ? u"," : u"").append(TextForm(arguments[i]));
    }
    return FilledText(u"{0}({1})", call.target, list);
}

bool RunEventCall(const XlEventCall& call, CXlOper& answer) {
    CXllCom* const com = CXllCom::Instance();
    if (!com) {
        return false;
    }
    ComVariant given;
    const HRESULT code = is_run_by_text ? com->RunMacroByText(EventMacroText(call), given)
                                        : com->RunMacroByName(EventArguments(call), given);
    return SUCCEEDED(code) && TakeAnswer(given, answer);
}

} // namespace metrify
