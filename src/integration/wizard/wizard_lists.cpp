// What the wizard hook does with the lists, buttons and keys of the boxes.

#include "integration/com/guarded.h"
#include "integration/wizard/wizard_content.h"
#include "integration/wizard/wizard_hook.h"

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

// Takes no input as long as this lives.
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
    const HGDIOBJ before = SelectObject(canvas, font);
    GetTextMetricsA(canvas, &metrics);
    SelectObject(canvas, before);
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

void CWizardHook::OpenUi(int box) {
    switch (KindOf(box)) {
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

void CWizardHook::OpenList(int box) {
    IXlWizExList* const items = function_->ListOf(first_visible_ + box);
    if (!items || !list_)
        return;
    SendMessageA(list_, CB_RESETCONTENT, 0, 0);
    for (int i = 0; i < items->ItemCount(); ++i)
        SendMessageA(list_, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(items->ItemText(i).c_str()));
    open_index_ = box;
    ShowWindow(overlays_[static_cast<std::size_t>(box)], SW_HIDE);
    PlaceList();
    SetFocus(list_);
    SetCursor(cursor_);
    SendMessageA(list_, CB_SHOWDROPDOWN, TRUE, 0);
}

void CWizardHook::PlaceList() {
    constexpr int kBeyondBox = 3;
    constexpr int kShownItems = 8;
    RECT box{};
    GetWindowRect(controls_.boxes[static_cast<std::size_t>(open_index_)], &box);
    MapWindowPoints(nullptr, dialog_, reinterpret_cast<POINT*>(&box), 2);
    SetWindowPos(list_, HWND_TOP, box.left, box.bottom, box.right + kBeyondBox - box.left,
                 LineHeight(list_, font_) * (kShownItems + 2), SWP_SHOWWINDOW | SWP_NOACTIVATE);
}

void CWizardHook::TakeSelection() {
    const auto item = static_cast<int>(SendMessageA(list_, CB_GETCURSEL, 0, 0));
    if (open_index_ < 0 || item == CB_ERR)
        return;
    if (const IXlWizExList* const items = function_->ListOf(first_visible_ + open_index_)) {
        SetWindowTextA(controls_.boxes[static_cast<std::size_t>(open_index_)],
                       items->ValueText(item).c_str());
    }
}

void CWizardHook::CloseList() {
    const int box = std::exchange(open_index_, -1);
    if (box < 0)
        return;
    ShowWindow(list_, SW_HIDE);
    ShowWindow(overlays_[static_cast<std::size_t>(box)], SW_SHOWNA);
    SetFocus(controls_.boxes[static_cast<std::size_t>(box)]);
}

void CWizardHook::OpenButton(int box) {
    IXlWizExButton* const button = function_->ButtonOf(first_visible_ + box);
    if (!button)
        return;
    const HWND window = controls_.boxes[static_cast<std::size_t>(box)];
    std::string text = TextIn(window);
    {
        const DisabledWindow disabled(dialog_);
        if (button->Run(text, disabled.Get()))
            SetWindowTextA(window, text.c_str());
    }
    SetFocus(window);
}

LRESULT CALLBACK CWizardHook::KeyboardProcedure(int code, WPARAM key, LPARAM flags) {
    constexpr LPARAM kReleased = 0x80000000;
    CWizardHook* const hook = Instance();
    const bool is_pressed = code == HC_ACTION && (flags & kReleased) == 0;
    if (hook && is_pressed && Guarded([hook, key] { return hook->HandleKey(static_cast<WORD>(key)); }))
        return 1; // swallowed
    return CallNextHookEx(nullptr, code, key, flags);
}

bool CWizardHook::HandleKey(WORD key) {
    const HWND focus = GetFocus();
    if (open_index_ >= 0 && (focus == list_ || IsChild(list_, focus)))
        return HandleListKey(key);
    const int box = controls_.IndexOf(focus);
    if (!are_controls_made_ || box < 0 || box != focused_index_ || !IsBound(key))
        return false;
    OpenUi(box);
    return true;
}

bool CWizardHook::HandleListKey(WORD key) {
    if (key == VK_TAB) {
        // Boxes may have come since they were counted.
        const int count = std::max(controls_.count, open_index_ + 1);
        const int next = (open_index_ + (IsDown(VK_SHIFT) ? count - 1 : 1)) % count;
        TakeSelection();
        SendMessageA(list_, CB_SHOWDROPDOWN, FALSE, 0);
        CloseList();
        SetFocus(controls_.boxes[static_cast<std::size_t>(next)]);
        return true;
    }
    if (key != VK_UP && key != VK_DOWN)
        return false;
    const auto count = static_cast<int>(SendMessageA(list_, CB_GETCOUNT, 0, 0));
    const auto item = static_cast<int>(SendMessageA(list_, CB_GETCURSEL, 0, 0));
    const int wanted = key == VK_UP ? item - 1 : item + 1;
    SendMessageA(list_, CB_SETCURSEL, static_cast<WPARAM>(std::clamp(wanted, 0, std::max(count - 1, 0))), 0);
    return true;
}

bool CWizardHook::IsBound(WORD key) const {
    const XlWizExKey binding = function_->KeyOf(first_visible_ + focused_index_);
    return binding.key == key && IsModifierDown(binding.modifier) &&
           AllowsContent(binding.content_mode,
                         TextIn(controls_.boxes[static_cast<std::size_t>(focused_index_)]));
}

} // namespace metrify
