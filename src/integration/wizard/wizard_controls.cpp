#include "integration/wizard/wizard_controls.h"

#include "xllrt/platform/passed_pointer.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace metrify {

namespace {

BOOL CALLBACK CollectChild(HWND child, LPARAM context) {
    PassedPointer<std::vector<HWND>*>(context)->push_back(child);
    return TRUE;
}

bool IsOfClass(HWND window, std::string_view name) {
    std::array<char, 50> class_name{};
    GetClassNameA(window, class_name.data(), static_cast<int>(class_name.size()));
    return name == class_name.data();
}

LONG LeftOf(HWND window) {
    RECT place{};
    GetWindowRect(window, &place);
    return place.left;
}

} // namespace

int IndexOfWindow(std::span<const HWND> windows, HWND window) {
    const auto found = std::find(windows.begin(), windows.end(), window);
    return window && found != windows.end() ? static_cast<int>(found - windows.begin()) : -1;
}

int WizardControls::FirstVisible() const {
    return GetScrollPos(scroll_bar, SB_CTL);
}

bool IsBoxVisible(HWND box) {
    return (GetWindowLongA(box, GWL_STYLE) & WS_VISIBLE) != 0;
}

bool FindWizardControls(HWND dialog, WizardControls& controls) {
    controls = {};
    std::vector<HWND> children;
    EnumChildWindows(dialog, CollectChild, reinterpret_cast<LPARAM>(&children));
    if (children.size() <= kWizardBoxes || !IsOfClass(children[kWizardBoxes], "ScrollBar"))
        return false;
    const LONG left = LeftOf(children[0]);
    for (std::size_t i = 0; i < kWizardBoxes; ++i) {
        if (!IsOfClass(children[i], "EDTBX") || LeftOf(children[i]) != left) {
            controls = {};
            return false;
        }
        controls.boxes[i] = children[i];
        if (IsBoxVisible(children[i]))
            controls.count = static_cast<int>(i) + 1;
    }
    controls.scroll_bar = children[kWizardBoxes];
    return true;
}

} // namespace metrify
