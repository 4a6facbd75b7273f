#include "integration/wizard/wizard_editor.h"

#include "integration/wizard/wizard_content.h"

#include <algorithm>
#include <utility>

namespace metrify {

namespace {

constexpr int kTextBuffer = 256;

std::string TextIn(HWND window) {
    std::array<char, kTextBuffer> text{};
    GetWindowTextA(window, text.data(), kTextBuffer);
    return text.data();
}

// Disables a window for the lifetime of this object.
class DisabledWindow {
  public:
    explicit DisabledWindow(HWND window) : window_(window) { EnableWindow(window_, FALSE); }
    ~DisabledWindow() { EnableWindow(window_, TRUE); }
    DisabledWindow(const DisabledWindow&) = delete;
    DisabledWindow& operator=(const DisabledWindow&) = delete;

    HWND Get() const { return window_; }

  private:
    HWND window_;
};

int LineHeight(HWND window, HFONT font) {
    TEXTMETRICA metrics{};
    const HDC canvas = GetDC(window);
    const HGDIOBJ former = SelectObject(canvas, font);
    GetTextMetricsA(canvas, &metrics);
    SelectObject(canvas, former);
    ReleaseDC(window, canvas);
    return metrics.tmHeight;
}

bool IsDown(int key) {
    return GetAsyncKeyState(key) < 0;
}

bool IsModifierDown(std::uint16_t modifier) {
    const bool is_one = modifier == VK_SHIFT || modifier == VK_CONTROL || modifier == VK_MENU;
    return !is_one || IsDown(modifier);
}

} // namespace

WizardEditor::WizardEditor(const WizardDialog& dialog, const WizardOverlays& overlays)
    : dialog_(dialog), overlays_(overlays) {}

void WizardEditor::LoadPointer() {
    cursor_ = LoadCursorA(nullptr, IDC_ARROW);
}

void WizardEditor::Open(int box) {
    switch (dialog_.KindOf(box)) {
    case ArgumentUi::list:
        OpenList(box);
        break;
    case ArgumentUi::button:
        OpenButton(box);
        break;
    default:
        break;
    }
}

void WizardEditor::OpenList(int box) {
    IXlWizExList* const items = dialog_.function->ListOf(dialog_.first_visible + box);
    if (!items || !overlays_.List())
        return;
    SendMessageA(overlays_.List(), CB_RESETCONTENT, 0, 0);
    for (int i = 0; i < items->ItemCount(); ++i)
        SendMessageA(overlays_.List(), CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(items->ItemText(i).c_str()));
    open_index_ = box;
    ShowWindow(overlays_.Overlay(box), SW_HIDE);
    PlaceList();
    SetFocus(overlays_.List());
    SetCursor(cursor_);
    SendMessageA(overlays_.List(), CB_SHOWDROPDOWN, TRUE, 0);
}

void WizardEditor::PlaceList() {
    constexpr int kBeyondBox = 3;
    constexpr int kShownItems = 8;
    RECT box{};
    GetWindowRect(dialog_.Box(open_index_), &box);
    MapWindowPoints(nullptr, dialog_.window, reinterpret_cast<POINT*>(&box), 2);
    SetWindowPos(overlays_.List(), HWND_TOP, box.left, box.bottom, box.right + kBeyondBox - box.left,
                 LineHeight(overlays_.List(), overlays_.Font()) * (kShownItems + 2),
                 SWP_SHOWWINDOW | SWP_NOACTIVATE);
}

void WizardEditor::TakeSelection() {
    const auto item = static_cast<int>(SendMessageA(overlays_.List(), CB_GETCURSEL, 0, 0));
    if (open_index_ < 0 || item == CB_ERR)
        return;
    if (const IXlWizExList* const items = dialog_.function->ListOf(dialog_.first_visible + open_index_))
        SetWindowTextA(dialog_.Box(open_index_), items->ValueText(item).c_str());
}

void WizardEditor::CloseList() {
    const int box = std::exchange(open_index_, -1);
    if (box < 0)
        return;
    ShowWindow(overlays_.List(), SW_HIDE);
    ShowWindow(overlays_.Overlay(box), SW_SHOWNA);
    SetFocus(dialog_.Box(box));
}

void WizardEditor::OpenButton(int box) {
    IXlWizExButton* const button = dialog_.function->ButtonOf(dialog_.first_visible + box);
    if (!button)
        return;
    const HWND window = dialog_.Box(box);
    std::string text = TextIn(window);
    {
        const DisabledWindow disabled(dialog_.window);
        if (button->Run(text, disabled.Get()))
            SetWindowTextA(window, text.c_str());
    }
    SetFocus(window);
}

bool WizardEditor::HandleKey(WORD key) {
    const HWND focus = GetFocus();
    if (open_index_ >= 0 && (focus == overlays_.List() || IsChild(overlays_.List(), focus)))
        return HandleListKey(key);
    const int box = dialog_.controls.IndexOf(focus);
    if (!overlays_.AreMade() || box < 0 || box != focused_index_ || !IsBound(key))
        return false;
    Open(box);
    return true;
}

bool WizardEditor::HandleListKey(WORD key) {
    if (key == VK_TAB) {
        // Boxes may have become visible since they were counted.
        const int count = std::max(dialog_.controls.count, open_index_ + 1);
        const int next = (open_index_ + (IsDown(VK_SHIFT) ? count - 1 : 1)) % count;
        TakeSelection();
        SendMessageA(overlays_.List(), CB_SHOWDROPDOWN, FALSE, 0);
        CloseList();
        SetFocus(dialog_.Box(next));
        return true;
    }
    if (key != VK_UP && key != VK_DOWN)
        return false;
    const auto count = static_cast<int>(SendMessageA(overlays_.List(), CB_GETCOUNT, 0, 0));
    const auto item = static_cast<int>(SendMessageA(overlays_.List(), CB_GETCURSEL, 0, 0));
    const int wanted = key == VK_UP ? item - 1 : item + 1;
    SendMessageA(overlays_.List(), CB_SETCURSEL,
                 static_cast<WPARAM>(std::clamp(wanted, 0, std::max(count - 1, 0))), 0);
    return true;
}

bool WizardEditor::IsBound(WORD key) const {
    const XlWizExKey binding = dialog_.function->KeyOf(dialog_.first_visible + focused_index_);
    return binding.key == key && IsModifierDown(binding.modifier) &&
           AllowsContent(binding.content_mode, TextIn(dialog_.Box(focused_index_)));
}

} // namespace metrify
