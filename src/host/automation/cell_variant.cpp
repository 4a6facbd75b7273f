#include "host/automation/cell_variant.h"

namespace metrify::host {

namespace {

ComVariant NumberVariant(double number) {
    ComVariant variant;
    VARIANT* const target = variant.Receive();
    V_VT(target) = VT_R8;
    V_R8(target) = number;
    return variant;
}

} // namespace

ComVariant ToVariant(const CellValue& value) {
    if (const auto* text = value.As<std::u16string>())
        return ComVariant(*text);
    if (const auto* boolean = value.As<bool>())
        return ComVariant(*boolean);
    if (const auto* number = value.As<double>())
        return NumberVariant(*number);
    if (const auto* integer = value.As<std::int32_t>())
        return ComVariant(*integer);
    return value.Is<EmptyCell>() ? ComVariant() : ComVariant::Missing();
}

CellValue FromVariant(const ComVariant& value) {
    switch (value.Type()) {
    case VT_BSTR:
        return value.Text();
    case VT_BOOL:
        return V_BOOL(&value.Get()) != VARIANT_FALSE;
    case VT_I4:
        return static_cast<std::int32_t>(V_I4(&value.Get()));
    case VT_R8:
        return V_R8(&value.Get());
    case VT_EMPTY:
        return {};
    default:
        return MissingArgument{};
    }
}

} // namespace metrify::host
