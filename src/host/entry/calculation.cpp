#include "host/entry/calculation.h"

#include "host/entry/registered_call.h"
#include "host/formula/formula_conversion.h"
#include "host/formula/formula_evaluator.h"

#include <algorithm>
#include <set>

namespace metrify::host {

namespace {

// The sheets, cells and functions that formulas of the active sheet refer to.
class SheetContext : public EvaluationContext {
  public:
    SheetContext(HostState& state, CallContext context) : state_(state), context_(context) {}

    IDSHEET SheetOf(std::u16string_view qualifier) override {
        std::u16string name(
            qualifier.substr(0, qualifier.size() - std::min<std::size_t>(qualifier.size(), 1)));
        std::erase(name, u'\'');
        const Sheet* sheet = name.empty() ? state_.books.Active() : state_.books.Find(name);
        return sheet ? sheet->id() : 0;
    }

    CellValue ValueOf(const Reference& reference) override { return ValueOfReference(state_, reference); }

    CellValue CallRegistered(const std::u16string& name, const std::vector<CellValue>& arguments) override {
        const Registration* registration = state_.registrations.Find(name);
        if (!registration || registration->IsCommand())
            return CellError{xlerrName};
        return host::CallRegistered(state_, *registration, arguments, context_);
    }

  private:
    HostState& state_;
    CallContext context_;
};

// The value of one cell in the area of an array formula. A single row, column or value is repeated.
CellValue PartOf(const CellValue& value, std::int32_t row, std::int32_t column) {
    const auto* array = value.As<CellArray>();
    if (!array)
        return value;
    row = array->rows == 1 ? 0 : row;
    column = array->columns == 1 ? 0 : column;
    return row < array->rows && column < array->columns ? array->At(row, column)
                                                        : CellValue(CellError{xlerrNA});
}

CellValue ShownValue(const CellValue& value) {
    return value.Is<EmptyCell>() ? CellValue(0.0) : value;
}

// Evaluates all formulas of a sheet once.
class Calculation final : private SheetContext {
  public:
    Calculation(HostState& state, Sheet& sheet)
        : SheetContext(state, CallContext::worksheet_function), state_(state), sheet_(sheet) {}

    void Run() {
        std::vector<CellPosition> formulas;
        for (const auto& [at, cell] : sheet_.cells())
            if (!cell.formula.empty())
                formulas.push_back(at);
        for (const CellPosition at : formulas)
            Evaluate(at);
    }

  private:
    // Formulas in the cells of a reference are evaluated before it is read.
    CellValue ValueOf(const Reference& reference) override {
        if (reference.sheet == sheet_.id() && reference.areas.size() == 1) {
            const Area& area = reference.areas.front();
            std::vector<CellPosition> inside;
            for (const auto& [at, cell] : sheet_.cells())
                if (!cell.formula.empty() && area.Contains(at.row, at.column))
                    inside.push_back(at);
            for (const CellPosition at : inside)
                Evaluate(at);
        }
        return SheetContext::ValueOf(reference);
    }

    void Evaluate(CellPosition at) {
        const Cell cell = *sheet_.Find(at);
        const Area area = cell.array.value_or(Area{at.row, at.row, at.column, at.column});
        const CellPosition base{area.first_row, area.first_column};
        if (!begun_.insert(base).second)
            return;
        const std::u16string_view body = std::u16string_view(cell.formula).substr(1);
        const auto tree = ParseFormulaText(body, {ReferenceStyle::r1c1, base, state_.books.size()});
        const CellValue value = tree ? EvaluateFormula(*tree, *this) : CellValue(CellError{xlerrValue});
        for (std::int32_t row = area.first_row; row <= area.last_row; ++row) {
            for (std::int32_t column = area.first_column; column <= area.last_column; ++column)
                sheet_.Make({row, column}).value =
                    ShownValue(PartOf(value, row - area.first_row, column - area.first_column));
        }
    }

    HostState& state_;
    Sheet& sheet_;
    std::set<CellPosition> begun_;
};

// The value of a constant that a user types.
CellValue ConstantOf(const std::u16string& text) {
    if (double number = 0.0; ReadNumber(text, number))
        return number;
    if (const std::optional<bool> boolean = ReadBoolean(text))
        return *boolean;
    if (const std::optional<CellError> error = ReadError(text);
        error && text.size() == ErrorText(*error).size())
        return *error;
    return text.empty() ? CellValue() : CellValue(text);
}

bool IsFormula(std::u16string_view text) {
    return text.size() > 1 && text.front() == u'=';
}

// True if an array is partly inside and partly outside the area.
bool CutsThroughArray(const Sheet& sheet, const Area& area) {
    return std::any_of(
        sheet.cells().begin(), sheet.cells().end(),
        [&area](const auto& entry) {
            const auto& [at, cell] = entry;
            return cell.array && area.Contains(at.row, at.column) &&
                   !(area.Contains(cell.array->first_row, cell.array->first_column) &&
                     area.Contains(cell.array->last_row, cell.array->last_column));
        });
}

} // namespace

std::optional<CellValue> EvaluateText(HostState& state, std::u16string_view formula, ReferenceStyle style,
                                      CellPosition base, CallContext context) {
    if (!IsFormula(formula))
        return std::nullopt;
    const auto tree = ParseFormulaText(formula.substr(1), {style, base, state.books.size()});
    if (!tree)
        return std::nullopt;
    SheetContext sheet(state, context);
    return EvaluateFormula(*tree, sheet);
}

bool EnterCells(HostState& state, const Area& area, const std::u16string& text, ReferenceStyle style,
                bool as_array) {
    Sheet* sheet = state.books.Active();
    if (!sheet || CutsThroughArray(*sheet, area))
        return false;
    std::u16string formula;
    if (IsFormula(text)) {
        const CellPosition base{area.first_row, area.first_column};
        const auto converted =
            ConvertFormulaText(text, {style, base, state.books.size()}, ReferenceStyle::r1c1);
        if (!converted)
            return false;
        formula = *converted;
    }
    const CellValue value = formula.empty() ? ConstantOf(text) : CellValue();
    const bool is_array = as_array && !formula.empty();
    for (std::int32_t row = area.first_row; row <= area.last_row; ++row)
        for (std::int32_t column = area.first_column; column <= area.last_column; ++column)
            sheet->Make({row, column}) = {formula, value, is_array ? std::optional(area) : std::nullopt};
    Recalculate(state);
    return true;
}

void Recalculate(HostState& state) {
    if (Sheet* sheet = state.books.Active())
        Calculation(state, *sheet).Run();
}

CellValue ValueOfReference(HostState& state, const Reference& reference) {
    if (reference.areas.size() != 1)
        return CellError{xlerrValue};
    const Sheet* sheet = state.books.Find(reference.sheet);
    return sheet ? sheet->Values(reference.areas.front()) : CellValue(CellError{xlerrRef});
}

} // namespace metrify::host
