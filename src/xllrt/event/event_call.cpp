#include "xllrt/event/event_call.h"

#include "xllrt/text/code_page.h"

#include <string>
#include <utility>

namespace metrify {

namespace {

constinit bool runs_as_text = false;

} // namespace

void RunEventCallsAsText(bool as_text) {
    runs_as_text = as_text;
}

XlEventCall::XlEventCall(IXlComHolder& holder, const std::u16string& target) : holder_(holder) {
    values_.emplace_back(target);
}

void XlEventCall::AddNumber(int number) {
    Add(std::int32_t{number}, ToWide(std::to_string(number)));
}

void XlEventCall::AddArguments(std::string_view signature, std::span<const XlEventArgument> arguments) {
    for (std::size_t i = 0; i < signature.size() && i < arguments.size(); ++i)
        if (const bool* flag = std::get_if<bool>(&arguments[i]))
            Add(*flag, *flag ? u"TRUE" : u"FALSE");
        else
            AddObject(signature[i], std::get<XlHostObject*>(arguments[i]));
}

bool XlEventCall::Run(CXlOper& answer) const {
    return runs_as_text ? holder_.RunText(Text(), answer) : holder_.Run(values_, answer);
}

std::u16string XlEventCall::Text() const {
    return std::get<std::u16string>(values_.front()) + u"(" + arguments_text_ + u")";
}

void XlEventCall::Add(XlComValue value, const std::u16string& text) {
    if (values_.size() > 1)
        arguments_text_ += u",";
    arguments_text_ += text;
    values_.push_back(std::move(value));
}

void XlEventCall::AddName(bool is_described, const std::u16string& name) {
    if (is_described)
        Add(name, u"\"" + name + u"\"");
    else
        Add({}, {});
}

void XlEventCall::AddObject(char letter, XlHostObject* object) {
    std::u16string name;
    std::u16string workbook;
    switch (letter) {
    case 'B':
        AddName(holder_.DescribeWorkbook(object, name), name);
        break;
    case 'S':
        if (holder_.DescribeSheet(object, workbook, name))
            AddName(true, u"[" + workbook + u"]" + name);
        else
            AddName(false, {});
        break;
    default: // R
        AddName(holder_.DescribeRange(object, name), name);
        break;
    }
}

} // namespace metrify
