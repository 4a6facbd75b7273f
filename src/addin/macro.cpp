#include "addin/macro.h"

#include "xllrt/app/app_call.h"
#include "xllrt/gate/cell_formula.h"
#include "xllrt/gate/host_alert.h"
#include "xllrt/gate/host_gate.h"

#include <algorithm>

namespace metrify {

namespace {

constexpr const char* function_name = "Metrify";

std::string upper_cased(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
    return text;
}

bool read_formula(const CXlOper& cell, std::string& formula) {
    bool is_array = false;
    return GetCellFormula(cell, formula, is_array, true);
}

bool uses_function(const CXlOper& cell, const std::string& name) {
    std::string formula;
    return read_formula(cell, formula) && upper_cased(formula).find(upper_cased(name)) != std::string::npos;
}

enum class cell_state { free, kept_by_user, out_of_reach };

cell_state state_of(const CXlOper& cell) {
    if (cell.IsNil())
        return cell_state::free;
    std::string contents;
    if (!cell.IsRefOrSRef() || !read_formula(cell, contents))
        return cell_state::out_of_reach;
    if (!contents.empty() && !Alert(std::string_view("Delete existing contents in cell?"), kAlertQuestion))
        return cell_state::kept_by_user;
    return cell_state::free;
}

CXlOper* run_macro() {
    start_function_wizard(function_name);
    return nullptr;
}

} // namespace

bool start_function_wizard_on(const CXlOper& cell, const std::string& name) {
    if (!uses_function(cell, name)) {
        const cell_state state = state_of(cell);
        if (state != cell_state::free)
            return state == cell_state::out_of_reach;
        // The wizard needs a formula to open on.
        const std::string call = "=" + name + "()";
        SetCellFormula(cell, call.c_str(), false, true);
    }
    CXlOper dropped;
    CallNoArgs(dropped, xlcFunctionWizard);
    return true;
}

bool start_function_wizard(const std::string& name) {
    CXlOper cell;
    if (!ActiveCell(cell)) {
        Alert(std::string_view("Please select a cell for the result and try again."), kAlertFailure);
        return false;
    }
    return start_function_wizard_on(cell, name);
}

extern "C" {

XLOPER12* METRIFY_HOST_CALL Metrify_Macro_12() {
    CXlOper xloResult;
    CallAppFunction(xloResult, run_macro);
    return xloResult.ReturnValue12();
}

XLOPER* METRIFY_HOST_CALL Metrify_Macro_4() {
    CXlOper xloResult;
    CallAppFunction(xloResult, run_macro);
    return xloResult.ReturnValue4();
}
}

} // namespace metrify
