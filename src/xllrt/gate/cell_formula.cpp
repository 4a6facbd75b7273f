#include "xllrt/gate/cell_formula.h"

#include "xllrt/gate/host_gate.h"
#include "xllrt/value/text_value.h"
#include "xllrt/value/thread_state.h"

namespace metrify {

namespace {

// The item of xlfGetCell that tells whether the cell is a part of an array.
constexpr double kPartOfArray = 49.0;

int WithOption(int function, bool international) {
    return international ? function | xlIntl : function;
}

int CallConvert(CXlOper& result, const CXlOper& reference, bool international, const CXlOper& formula,
                bool to_a1) {
    return Call(result, WithOption(xlfFormulaConvert, international), formula, CXlOper(!to_a1),
                CXlOper(to_a1), ThisThreadState().missing, reference);
}

} // namespace

int Coerce(CXlOper& result, std::uint16_t type, const CXlOper* source) {
    const CXlOper own_value = source ? CXlOper() : CXlOper(result);
    CXlOper wanted;
    wanted.SetInt(type);
    const int code = Call(result, xlCoerce, source ? *source : own_value, wanted);
    return result.IsType(type) ? code : xlretFailed;
}

bool ActiveCell(CXlOper& result) {
    return CallNoArgs(result, xlfActiveCell) == xlretSuccess && Coerce(result, xltypeRef) == xlretSuccess;
}

bool GetCellFormula(const CXlOper& reference, bool international, std::string& formula, bool& is_array,
                    bool to_a1) {
    if (reference.IsSRef()) {
        CXlOper full;
        return Coerce(full, xltypeRef, &reference) == xlretSuccess &&
               GetCellFormula(full, international, formula, is_array, to_a1);
    }
    if (!reference.IsRef())
        return false;
    CXlOper text;
    CXlOper part_of_array;
    if (Call(text, WithOption(xlfGetFormula, international), reference) != xlretSuccess ||
        Call(part_of_array, xlfGetCell, CXlOper(kPartOfArray), reference) != xlretSuccess)
        return false;
    if (to_a1) {
        CXlOper converted;
        if (CallConvert(converted, reference, international, text, true) != xlretSuccess)
            return false;
        // The host converts formulas only. Any other text stays as it is.
        if (!converted.IsError())
            text = converted;
    }
    formula = text.ToText();
    is_array = part_of_array.ToBool();
    return true;
}

bool GetCellFormula(const CXlOper& reference, std::string& formula, bool& is_array, bool to_a1) {
    return GetCellFormula(reference, true, formula, is_array, to_a1);
}

bool ConvertFormula(const CXlOper& reference, bool international, const std::string& formula,
                    std::string& converted, bool to_a1) {
    CXlOper result;
    if (CallConvert(result, reference, international, TextValue(formula), to_a1) != xlretSuccess ||
        result.IsError())
        return false;
    converted = result.ToText();
    return true;
}

bool SetCellFormula(const CXlOper& reference, bool international, const std::string& formula, bool as_array,
                    bool from_a1) {
    std::string entered = formula;
    if (from_a1 && !ConvertFormula(reference, international, formula, entered, false))
        return false;
    if (!reference.IsRef())
        return false;
    const int command = as_array ? xlcFormulaArray : xlcFormula;
    return CallDiscard(WithOption(command, international), TextValue(entered), reference) == xlretSuccess;
}

bool SetCellFormula(const CXlOper& reference, const char* formula, bool as_array, bool from_a1) {
    return SetCellFormula(reference, true, formula ? formula : "", as_array, from_a1);
}

} // namespace metrify
