// What the wizard hook puts beside the boxes of the dialog.

#include "integration/wizard/wizard_hook.h"
#include "integration/wizard/wizard_layout.h"
#include "xllrt/gate/host_version.h"

#include <algorithm>
#include <utility>

namespace metrify {

namespace {

// Hosts above this version draw in the user's theme.
constexpr int kLastUnthemedVersion = 10;

RECT PlaceIn(HWND dialog, HWND control) {
    RECT place{};
    GetWindowRect(control, &place);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
    return place;
}

LayoutMetrics MetricsOf(HWND window, unsigned system_major, bool is_themed) {
    const HDC screen = GetDC(window);
    const LayoutMetrics metrics{system_major, GetDeviceCaps(screen, LOGPIXELSX),
                                GetDeviceCaps(screen, LOGPIXELSY), is_themed};
    ReleaseDC(window, screen);
    return metrics;
}

} // namespace

int CWizardHook::OverlayIndex(HWND window) const {
    const auto found = std::find(overlays_.begin(), overlays_.end(), window);
    return window && found != overlays_.end() ? static_cast<int>(found - overlays_.begin()) : -1;
}

ArgumentUi CWizardHook::KindOf(int box) const {
    return function_ ? function_->KindOf(first_visible_ + box) : ArgumentUi::none;
}

void CWizardHook::FindFunction() {
    function_ = function_name_.empty() ? nullptr : registry_.FindFunction(function_name_);
    if (const auto shown = name_reader_.Read(dialog_); shown && *shown != function_name_)
        function_ = nullptr;
}

void CWizardHook::TearDown() {
    are_controls_made_ = false;
    open_index_ = -1;
    for (HWND* const window :
         {&overlays_[0], &overlays_[1], &overlays_[2], &overlays_[3], &overlays_[4], &list_}) {
        if (const HWND standing = std::exchange(*window, nullptr)) {
            ShowWindow(standing, SW_HIDE);
            DestroyWindow(standing);
        }
    }
}

void CWizardHook::Rebuild() {
    TearDown();
    first_visible_ = controls_.FirstVisible();
    if (!function_ || function_->KindCount() == 0)
        return;
    if (registry_.UsesThemes() && HostVersion() > kLastUnthemedVersion)
        theme_.Open(dialog_);
    for (int box = 0; box < kWizardBoxes; ++box) {
        const ArgumentUi kind = KindOf(box);
        if (kind != ArgumentUi::none && IsBoxVisible(controls_.boxes[static_cast<std::size_t>(box)]))
            MakeOverlay(box, kind);
    }
    if (are_controls_made_)
        MakeList();
}

void CWizardHook::MakeOverlay(int box, ArgumentUi kind) {
    const auto index = static_cast<std::size_t>(box);
    const OverlayPlace place = PlaceOverlay(kind, PlaceIn(dialog_, controls_.boxes[index]),
                                            MetricsOf(dialog_, system_major_, theme_.IsOpen()));
    HWND& overlay = overlays_[index];
    overlay = CreateWindowExA(0, "BUTTON", "", WS_CHILD | BS_OWNERDRAW, place.left, place.top, place.width,
                              place.height, dialog_, nullptr, nullptr, nullptr);
    if (!overlay)
        return;
    are_controls_made_ = true;
    SetWindowPos(overlay, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_SHOWWINDOW);
}

void CWizardHook::MakeList() {
    constexpr int kDropHeight = 120;
    list_ = CreateWindowExA(0, "ComboBox", "", WS_CHILD | WS_VSCROLL | CBS_DROPDOWNLIST, 0, 0, 0, kDropHeight,
                            dialog_, nullptr, nullptr, nullptr);
    SendMessageA(list_, WM_SETFONT, reinterpret_cast<WPARAM>(font_), FALSE);
}

} // namespace metrify
