#include "xllrt/gate/host_alert.h"

#include "xllrt/gate/host_gate.h"

namespace metrify {

namespace {

template <class Text>
bool ShowAlert(Text text, int kind) {
    CXlOper shown;
    shown.SetText(text);
    CXlOper answer;
    return Call(answer, xlcAlert, shown, CXlOper(static_cast<double>(kind))) == xlretSuccess &&
           answer.ToBool();
}

} // namespace

bool Alert(std::string_view text, int kind) {
    return ShowAlert(text, kind);
}

bool Alert(std::u16string_view text, int kind) {
    return ShowAlert(text, kind);
}

} // namespace metrify
