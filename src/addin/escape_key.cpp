#include "addin/escape_key.h"

#include "machine/calculator.h"
#include "xllrt/gate/host_gate.h"

namespace metrify {

bool is_escape_pressed() noexcept {
    try {
        // The host may yield to others, which may call the function on this thread.
        calculator unused;
        const calculator_scope scope(unused);
        CXlOper answer;
        return CallNoArgs(answer, xlAbort) == xlretSuccess && answer.IsType(xltypeBool) && answer.ToBool();
    } catch (...) {
        return false;
    }
}

} // namespace metrify
