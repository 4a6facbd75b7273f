#pragma once

// The host's formula dialog while it is shown.

#include "integration/wizard/wizard_controls.h"
#include "integration/wizard/wizard_registry.h"

namespace metrify {

struct WizardDialog {
    HWND window = nullptr;
    WizardControls controls;
    IXlWizExFunction* function = nullptr; ///< null if the shown function adds nothing to the dialog
    int first_visible = 0;                ///< the index of the argument in the first box

    HWND Box(int box) const { return controls.boxes.at(static_cast<std::size_t>(box)); }

    ArgumentUi KindOf(int box) const {
        return function ? function->KindOf(first_visible + box) : ArgumentUi::none;
    }
};

} // namespace metrify
