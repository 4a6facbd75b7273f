#include "integration/wizard/wizard_overlays.h"

#include "integration/wizard/wizard_layout.h"

#include <utility>

namespace metrify {

namespace {

unsigned SystemMajor() {
    constexpr unsigned kUnknown = 5;
    OSVERSIONINFOA version{};
    version.dwOSVersionInfoSize = sizeof(version);
    return GetVersionExA(&version) ? version.dwMajorVersion : kUnknown;
}

HFONT MakeFont() {
    constexpr int kHeight = 12;
    return CreateFontA(kHeight, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                       CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH, "MS Shell Dlg");
}

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

WizardOverlays::WizardOverlays() : system_major_(SystemMajor()) {}

void WizardOverlays::LoadFont() {
    font_ = MakeFont();
}

WizardOverlays::~WizardOverlays() {
    Destroy();
    if (font_)
        DeleteObject(font_);
}

void WizardOverlays::Destroy() {
    are_made_ = false;
    for (HWND* const window :
         {&overlays_[0], &overlays_[1], &overlays_[2], &overlays_[3], &overlays_[4], &list_}) {
        if (const HWND created = std::exchange(*window, nullptr)) {
            ShowWindow(created, SW_HIDE);
            DestroyWindow(created);
        }
    }
}

void WizardOverlays::Create(const WizardDialog& dialog, bool is_themed) {
    for (int box = 0; box < kWizardBoxes; ++box)
        if (dialog.KindOf(box) != ArgumentUi::none && IsBoxVisible(dialog.Box(box)))
            CreateOverlay(dialog, box, is_themed);
    if (are_made_)
        CreateList(dialog.window);
}

void WizardOverlays::CreateOverlay(const WizardDialog& dialog, int box, bool is_themed) {
    const OverlayPlace place = PlaceOverlay(dialog.KindOf(box), PlaceIn(dialog.window, dialog.Box(box)),
                                            MetricsOf(dialog.window, system_major_, is_themed));
    HWND& overlay = overlays_[static_cast<std::size_t>(box)];
    overlay = CreateWindowExA(0, "BUTTON", "", WS_CHILD | BS_OWNERDRAW, place.left, place.top, place.width,
                              place.height, dialog.window, nullptr, nullptr, nullptr);
    if (!overlay)
        return;
    are_made_ = true;
    SetWindowPos(overlay, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_SHOWWINDOW);
}

void WizardOverlays::CreateList(HWND dialog) {
    constexpr int kDropHeight = 120;
    list_ = CreateWindowExA(0, "ComboBox", "", WS_CHILD | WS_VSCROLL | CBS_DROPDOWNLIST, 0, 0, 0, kDropHeight,
                            dialog, nullptr, nullptr, nullptr);
    SendMessageA(list_, WM_SETFONT, reinterpret_cast<WPARAM>(font_), FALSE);
}

} // namespace metrify
