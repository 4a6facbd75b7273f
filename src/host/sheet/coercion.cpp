#include "host/sheet/coercion.h"

#include <cmath>

namespace metrify::host {

namespace {

const CellValue value_error = CellError{xlerrValue};

} // namespace

const CellValue& FirstCell(const CellValue& value) {
    const auto* array = value.As<CellArray>();
    if (!array)
        return value;
    return array->cells.empty() ? value_error : array->cells.front();
}

CellValue ToNumberValue(const CellValue& value) {
    const CellValue& scalar = FirstCell(value);
    if (scalar.Is<double>() || scalar.Is<CellError>())
        return scalar;
    if (scalar.Is<EmptyCell>())
        return 0.0;
    if (const auto* boolean = scalar.As<bool>())
        return *boolean ? 1.0 : 0.0;
    if (const auto* integer = scalar.As<std::int32_t>())
        return static_cast<double>(*integer);
    double number = 0.0;
    if (const auto* text = scalar.As<std::u16string>(); text && ReadNumber(*text, number))
        return number;
    return value_error;
}

CellValue ToTextValue(const CellValue& value) {
    const CellValue& scalar = FirstCell(value);
    if (scalar.Is<std::u16string>() || scalar.Is<CellError>())
        return scalar;
    if (scalar.Is<EmptyCell>())
        return u"";
    if (const auto* boolean = scalar.As<bool>())
        return *boolean ? u"TRUE" : u"FALSE";
    if (const auto* number = scalar.As<double>())
        return NumberText(*number);
    if (const auto* integer = scalar.As<std::int32_t>())
        return NumberText(*integer);
    return value_error;
}

CellValue ToBoolValue(const CellValue& value) {
    const CellValue& scalar = FirstCell(value);
    if (const auto* text = scalar.As<std::u16string>()) {
        const std::optional<bool> boolean = ReadBoolean(*text);
        return boolean ? CellValue(*boolean) : value_error;
    }
    CellValue number = ToNumberValue(scalar);
    const auto* digits = number.As<double>();
    return digits ? CellValue(*digits != 0.0) : number;
}

CellValue ToIntegerValue(const CellValue& value, double smallest, double largest) {
    CellValue number = ToNumberValue(value);
    const auto* digits = number.As<double>();
    if (!digits)
        return number;
    const double whole = std::trunc(*digits);
    return whole >= smallest && whole <= largest ? CellValue(static_cast<std::int32_t>(whole)) : value_error;
}

} // namespace metrify::host
