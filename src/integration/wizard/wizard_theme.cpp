#include "integration/wizard/wizard_theme.h"

#include "integration/com/system_libraries.h"

#include <algorithm>
#include <array>
#include <utility>
#include <uxtheme.h>

namespace metrify {

namespace {

constexpr UINT kCentred = 37;
static_assert(kCentred == (DT_CENTER | DT_VCENTER | DT_SINGLELINE));

// The arrow and the push button are both part 1 of their theme class, with the same states.
constexpr int kPart = 1;
constexpr int kStateNormal = 1;
constexpr int kStatePressed = 3;

// All functions are needed: a system without one of them has no such themes.
constexpr std::array<const char*, 6> kFunctionNames = {
    "OpenThemeData", "DrawThemeBackground", "GetThemeBackgroundContentRect",
    "DrawThemeText", "CloseThemeData",      "GetThemePartSize"};

bool IsPressed(const DRAWITEMSTRUCT& item) {
    return (item.itemState & ODS_SELECTED) != 0;
}

void DrawClassic(ArgumentUi kind, const DRAWITEMSTRUCT& item) {
    RECT place = item.rcItem;
    const UINT pressed = IsPressed(item) ? DFCS_PUSHED : 0;
    if (kind == ArgumentUi::list) {
        DrawFrameControl(item.hDC, &place, DFC_SCROLL, DFCS_SCROLLCOMBOBOX | pressed);
        return;
    }
    DrawFrameControl(item.hDC, &place, DFC_BUTTON, DFCS_BUTTONPUSH | pressed);
    const int background = SetBkMode(item.hDC, TRANSPARENT);
    DrawTextA(item.hDC, "...", -1, &place, kCentred);
    SetBkMode(item.hDC, background);
}

static_assert(DFC_SCROLL == 3 && DFCS_SCROLLCOMBOBOX == 5 && (DFCS_SCROLLCOMBOBOX | DFCS_PUSHED) == 517);
static_assert(DFC_BUTTON == 4 && DFCS_BUTTONPUSH == 16 && (DFCS_BUTTONPUSH | DFCS_PUSHED) == 528);

} // namespace

WizardTheme::WizardTheme() : library_(LoadFromSystemFolder("UxTheme.dll")) {}

WizardTheme::~WizardTheme() {
    Close();
    if (library_)
        FreeLibrary(library_);
}

bool WizardTheme::HasFunctions() const {
    return library_ && std::all_of(
                           kFunctionNames.begin(), kFunctionNames.end(),
                           [this](const char* name) { return GetProcAddress(library_, name) != nullptr; });
}

void WizardTheme::Open(HWND window) {
    if (std::exchange(is_asked_for_, true) || !HasFunctions())
        return;
    auto* const open = FindFunction<decltype(OpenThemeData)>(library_, "OpenThemeData");
    combo_box_ = open(window, L"COMBOBOX");
    button_ = open(window, L"BUTTON");
}

void WizardTheme::Close() {
    is_asked_for_ = false;
    for (HANDLE* const theme : {&combo_box_, &button_}) {
        if (*theme) {
            FindFunction<decltype(CloseThemeData)>(library_, "CloseThemeData")(*theme);
            *theme = nullptr;
        }
    }
}

void WizardTheme::Draw(ArgumentUi kind, const DRAWITEMSTRUCT& item, HFONT font) const {
    const HGDIOBJ before = SelectObject(item.hDC, font);
    if (!IsOpen() || !DrawThemed(kind, item))
        DrawClassic(kind, item);
    SelectObject(item.hDC, before);
}

bool WizardTheme::DrawThemed(ArgumentUi kind, const DRAWITEMSTRUCT& item) const {
    const HANDLE theme = kind == ArgumentUi::list ? combo_box_ : button_;
    const int state = IsPressed(item) ? kStatePressed : kStateNormal;
    const auto draw = FindFunction<decltype(DrawThemeBackground)>(library_, "DrawThemeBackground");
    if (FAILED(draw(theme, item.hDC, kPart, state, &item.rcItem, nullptr)))
        return false;
    if (kind == ArgumentUi::list)
        return true;
    RECT inside = item.rcItem;
    const auto content =
        FindFunction<decltype(GetThemeBackgroundContentRect)>(library_, "GetThemeBackgroundContentRect");
    content(theme, item.hDC, kPart, state, &item.rcItem, &inside);
    const auto text = FindFunction<decltype(DrawThemeText)>(library_, "DrawThemeText");
    return SUCCEEDED(text(theme, item.hDC, kPart, state, L"...", -1, kCentred, 0, &inside));
}

} // namespace metrify
