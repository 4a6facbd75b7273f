#include "addin/worksheet_function.h"

#include "addin/escape_key.h"
#include "base/build_settings.h"
#include "base/interruption.h"
#include "conversion/conversion.h"
#include "machine/calculator.h"
#include "xllrt/app/app_call.h"
#include "xllrt/gate/host_gate.h"
#include "xllrt/value/xl_cell_view.h"

#include <string>
#include <string_view>

namespace metrify {

namespace {

constexpr std::string_view kRefusal = "This version of Excel is not supported.  Check ";

void fill_cells(CXlOper& result, const conversion& answer) {
    result.MakeArray(1, 2);
    if (answer.outcome == conversion_outcome::converted) {
        result.Cell(0, 0)->SetNumber(answer.number);
        result.Cell(0, 1)->SetText(answer.text);
    } else {
        result.Cell(0, 0)->SetText(answer.text);
        result.Cell(0, 1)->SetText("");
    }
}

} // namespace

double host_release_number() {
    // A counted text, which is not copied. The host does not write to it.
    XLOPER12 record{};
    record.xltype = xltypeStr;
    record.val.str = const_cast<XCHAR*>(u"\7Release");
    const CXlOper item = CXlOper::Wrap12(&record);
    CXlOper release;
    return Call(release, xlfInfo, item) == xlretSuccess ? release.ToNumber() : 0.0;
}

CXlOper* convert_units_cell(CXlOper& result, double Val, CXlDualString& InUnits, CXlDualString& OutUnits) {
    if (host_release_number() > last_supported_release) {
        result.SetText(std::string(kRefusal).append(web_address));
        return nullptr;
    }
    const conversion answer = convert_units(Val, InUnits.Narrow(), OutUnits.Narrow());
    // A listing without an answer is reported as an access violation.
    if (answer.outcome == conversion_outcome::unmarked)
        throw CXlStructuredException::OfFault(kFaultAccessViolation);
    fill_cells(result, answer);
    return nullptr;
}

// Both entries, each with the texts of its family. The scopes are outside of the guard, since a fault skips
// destructors: also if the host faults while it is asked for Escape, during which another calculator is in
// use.
template <class Char>
void ConvertForHost(CXlOper& result, double Val, const Char* InUnits, const Char* OutUnits) {
    const calculator_scope keeps(current_calculator());
    interruption stop;
    const interruption_scope obeys(stop, is_escape_pressed);
    CXlDualString in_units(InUnits);
    CXlDualString out_units(OutUnits);
    CallAppFunction(result, [&] { return convert_units_cell(result, Val, in_units, out_units); });
}

extern "C" {

XLOPER12* METRIFY_HOST_CALL Metrify_12(double Val, const XCHAR* InUnits, const XCHAR* OutUnits) {
    CXlOper xloResult;
    ConvertForHost(xloResult, Val, InUnits, OutUnits);
    return xloResult.ReturnValue12();
}

XLOPER* METRIFY_HOST_CALL Metrify_4(double Val, const char* InUnits, const char* OutUnits) {
    CXlOper xloResult;
    ConvertForHost(xloResult, Val, InUnits, OutUnits);
    return xloResult.ReturnValue4();
}
}

} // namespace metrify
