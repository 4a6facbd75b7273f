#include "integration/application/com_holder.h"

#include "integration/application/object_text.h"
#include "integration/com/dispatch_call.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace metrify {

namespace {

bool Report(bool is_done, const ComFailure& failure, XlComFailure& failure_out) {
    if (!is_done)
        failure_out = {failure.text, static_cast<std::uint32_t>(failure.code)};
    return is_done;
}

ComVariant VariantOf(const XlComValue& value) {
    if (const auto* number = std::get_if<std::int32_t>(&value))
        return ComVariant(*number);
    if (const auto* flag = std::get_if<bool>(&value))
        return ComVariant(*flag);
    const auto* text = std::get_if<std::u16string>(&value);
    return text ? ComVariant(*text) : ComVariant();
}

// Returns false if the value can't be the value of a cell.
bool TakeAnswer(const ComVariant& given, CXlOper& answer) {
    ComVariant number = given;
    switch (given.Type()) {
    case VT_BOOL:
        answer.SetBool(V_BOOL(&given.Get()) != VARIANT_FALSE ? 1 : 0);
        return true;
    case VT_BSTR:
        answer.SetText(given.Text());
        return true;
    case VT_EMPTY:
    case VT_ERROR:
        return false;
    default:
        if (!number.Become(VT_R8))
            return false;
        answer.SetNumber(V_R8(&number.Get()));
        return true;
    }
}

} // namespace

bool CXlComHolder::Start(XlComFailure& failure) {
    ComFailure reason;
    return Report(com_.Init(reason), reason, failure);
}

bool CXlComHolder::Connect(XlComFailure& failure) {
    ComFailure reason;
    return Report(com_.SetEvents(true, reason), reason, failure);
}

bool CXlComHolder::DescribeWorkbook(XlHostObject* workbook, std::u16string& name) {
    return workbook && SUCCEEDED(ObjectName(AsDispatch(workbook), name));
}

bool CXlComHolder::DescribeSheet(XlHostObject* sheet, std::u16string& workbook, std::u16string& name) {
    ComPtr<IDispatch> book;
    std::u16string book_name;
    if (!sheet || FAILED(GetObjectProperty(AsDispatch(sheet), u"Parent", book)) ||
        FAILED(ObjectName(book.Get(), book_name)) || FAILED(ObjectName(AsDispatch(sheet), name)))
        return false;
    workbook = book_name;
    return true;
}

bool CXlComHolder::DescribeRange(XlHostObject* range, std::u16string& address) {
    return range && SUCCEEDED(RangeAddress(AsDispatch(range), address, false));
}

bool CXlComHolder::Run(std::span<const XlComValue> values, CXlOper& answer) {
    std::vector<ComVariant> arguments;
    std::transform(values.begin(), values.end(), std::back_inserter(arguments), VariantOf);
    ComVariant given;
    return SUCCEEDED(com_.RunMacroByName(arguments, given)) && TakeAnswer(given, answer);
}

bool CXlComHolder::RunText(const std::u16string& text, CXlOper& answer) {
    ComVariant given;
    return SUCCEEDED(com_.RunMacroByText(text, given)) && TakeAnswer(given, answer);
}

} // namespace metrify
