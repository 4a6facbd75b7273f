// Functions that read and write cells.

#include "host/core/host_functions.h"
#include "host/entry/calculation.h"
#include "host/formula/formula_conversion.h"
#include "host/sheet/coercion.h"

namespace metrify::host {

namespace {

// The first cell of a reference argument, or the active cell if the argument is omitted.
struct CellLocation {
    const Sheet* sheet;
    CellPosition at;
};

std::optional<CellLocation> ReferredCell(const HostCall& call, std::size_t index) {
    if (call.IsMissing(index)) {
        const auto active = call.state.books.ActiveCell();
        const Sheet* sheet = call.state.books.Active();
        return active && sheet ? std::optional(CellLocation{sheet, *active}) : std::nullopt;
    }
    const auto* reference = call.Argument(index).As<Reference>();
    const Sheet* sheet = reference ? call.state.books.Find(reference->sheet) : nullptr;
    if (!sheet || reference->areas.empty())
        return std::nullopt;
    const Area& first = reference->areas.front();
    return CellLocation{sheet, {first.first_row, first.first_column}};
}

// A boolean argument, which may be omitted. Nothing for any other value.
std::optional<bool> Flag(const HostCall& call, std::size_t index, bool if_missing) {
    const CellValue flag = call.IsMissing(index) ? CellValue(if_missing) : ToBoolValue(call.Argument(index));
    const auto* value = flag.As<bool>();
    return value ? std::optional(*value) : std::nullopt;
}

HostAnswer Enter(const HostCall& call, bool as_array) {
    const CellValue text = ToTextValue(call.arguments[0]);
    const std::optional<CellLocation> first = ReferredCell(call, 1);
    if (!text.Is<std::u16string>() || !first || first->sheet != call.state.books.Active())
        return HostAnswer::Code(xlretFailed);
    std::vector<Area> areas{{first->at.row, first->at.row, first->at.column, first->at.column}};
    if (const auto* reference = call.Argument(1).As<Reference>())
        areas = reference->areas;
    for (const Area& area : areas)
        if (!EnterCells(call.state, area, *text.As<std::u16string>(), ReferenceStyle::r1c1, as_array))
            return HostAnswer::Code(xlretFailed);
    return true;
}

} // namespace

HostAnswer ActiveCell(const HostCall& call) {
    const auto at = call.state.books.ActiveCell();
    if (!at)
        return CellError{xlerrNA};
    return Reference{call.state.books.Active()->id(), {{at->row, at->row, at->column, at->column}}, true};
}

HostAnswer GetFormula(const HostCall& call) {
    if (call.IsMissing(0))
        return CellError{xlerrValue};
    const std::optional<CellLocation> cell = ReferredCell(call, 0);
    return cell ? CellValue(cell->sheet->FormulaText(cell->at)) : CellValue(CellError{xlerrValue});
}

HostAnswer GetCell(const HostCall& call) {
    constexpr std::int32_t kRow = 2;
    constexpr std::int32_t kColumn = 3;
    constexpr std::int32_t kContents = 5;
    constexpr std::int32_t kFormula = 6;
    constexpr std::int32_t kHasFormula = 48;
    constexpr std::int32_t kIsPartOfArray = 49;
    const CellValue type = ToIntegerValue(call.arguments[0], 1, kIsPartOfArray);
    const auto* number = type.As<std::int32_t>();
    const std::optional<CellLocation> place = ReferredCell(call, 1);
    if (!number || !place)
        return CellError{xlerrValue};
    const Cell* cell = place->sheet->Find(place->at);
    switch (*number) {
    case kRow:
        return place->at.row + 1.0;
    case kColumn:
        return place->at.column + 1.0;
    case kContents:
        return cell ? cell->value : CellValue();
    case kFormula:
        return place->sheet->FormulaText(place->at);
    case kHasFormula:
        return cell && !cell->formula.empty();
    case kIsPartOfArray:
        return cell && cell->array;
    default:
        return CellError{xlerrValue};
    }
}

HostAnswer FormulaConvert(const HostCall& call) {
    // Which parts of the converted references are absolute.
    constexpr std::int32_t kAbsolute = 1;
    constexpr std::int32_t kRowAbsolute = 2;
    constexpr std::int32_t kColumnAbsolute = 3;
    constexpr std::int32_t kRelative = 4;
    const CellValue formula = ToTextValue(call.arguments[0]);
    const std::optional<bool> from_a1 = Flag(call, 1, true);
    const std::optional<bool> to_a1 = Flag(call, 2, from_a1.value_or(true));
    const CellValue kind =
        call.IsMissing(3) ? CellValue(0) : ToIntegerValue(call.Argument(3), kAbsolute, kRelative);
    const std::optional<CellLocation> base =
        call.IsMissing(4) ? CellLocation{nullptr, {}} : ReferredCell(call, 4);
    if (!formula.Is<std::u16string>() || !from_a1 || !to_a1 || !kind.Is<std::int32_t>() || !base)
        return CellError{xlerrValue};
    const std::int32_t wanted = *kind.As<std::int32_t>();
    std::optional<bool> row_absolute;
    std::optional<bool> column_absolute;
    if (wanted != 0) {
        row_absolute = wanted == kAbsolute || wanted == kRowAbsolute;
        column_absolute = wanted == kAbsolute || wanted == kColumnAbsolute;
    }
    const FormulaSetting from{*from_a1 ? ReferenceStyle::a1 : ReferenceStyle::r1c1, base->at,
                              call.state.books.size()};
    const ReferenceStyle to = *to_a1 ? ReferenceStyle::a1 : ReferenceStyle::r1c1;
    const auto converted =
        ConvertFormulaText(*formula.As<std::u16string>(), from, to, row_absolute, column_absolute);
    return converted ? CellValue(*converted) : CellValue(CellError{xlerrValue});
}

HostAnswer EnterFormula(const HostCall& call) {
    return Enter(call, false);
}

HostAnswer EnterArrayFormula(const HostCall& call) {
    return Enter(call, true);
}

} // namespace metrify::host
