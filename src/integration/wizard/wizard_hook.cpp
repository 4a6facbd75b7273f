// Installing the hook, and the messages it watches.

#include "integration/wizard/wizard_hook.h"

#include "integration/com/guarded.h"
#include "xllrt/fault/exceptions.h"
#include "xllrt/platform/passed_pointer.h"
#include "xllrt/text/format_printf.h"

#include <commctrl.h>
#include <string_view>

namespace metrify {

namespace {

constexpr std::string_view kDialogClass = "bosa_sdm_XL9";

constinit std::unique_ptr<CWizardHook> installed;

bool IsDialog(HWND window) {
    std::array<char, 50> class_name{};
    GetClassNameA(window, class_name.data(), static_cast<int>(class_name.size()));
    return kDialogClass == class_name.data();
}

unsigned SystemMajor() {
    constexpr unsigned kUnknown = 5;
    OSVERSIONINFOA version{};
    version.dwOSVersionInfoSize = sizeof(version);
    return GetVersionExA(&version) ? version.dwMajorVersion : kUnknown;
}

[[noreturn]] void ThrowFailure(const char* format) {
    std::string message;
    FormatPrintf(message, format, static_cast<std::uint32_t>(HRESULT_FROM_WIN32(GetLastError())));
    throw CXlRuntimeException(message);
}

void InitialiseControls() {
    constexpr DWORD kClasses = 16896;
    static_assert(kClasses == (ICC_USEREX_CLASSES | ICC_STANDARD_CLASSES));
    const INITCOMMONCONTROLSEX controls{sizeof(INITCOMMONCONTROLSEX), kClasses};
    InitCommonControlsEx(&controls);
}

HFONT MakeFont() {
    constexpr int kHeight = 12;
    return CreateFontA(kHeight, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                       CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH, "MS Shell Dlg");
}

} // namespace

CWizardHook* CWizardHook::Instance() {
    return installed.get();
}

void CWizardHook::Install(IXlWizExUIFunctionRegistry& registry) {
    if (installed)
        throw CXlRuntimeException(std::string("An instance of CWizardHook is already installed"));
    // The constructor is for this alone.
    installed.reset(new CWizardHook(registry));
}

void CWizardHook::Remove() {
    installed.reset();
}

void CWizardHook::Abandon() {
    // The system takes back what the process held.
    static_cast<void>(installed.release());
}

CWizardHook::CWizardHook(IXlWizExUIFunctionRegistry& registry)
    : registry_(registry), system_major_(SystemMajor()) {
    InitialiseControls();
    const DWORD thread = GetCurrentThreadId();
    message_hook_ = SetWindowsHookExA(WH_CALLWNDPROCRET, MessageProcedure, nullptr, thread);
    if (!message_hook_)
        ThrowFailure("SetWindowsHookEx failed for WH_CALLWNDPROCRET. hr=%lx");
    keyboard_hook_ = SetWindowsHookExA(WH_KEYBOARD, KeyboardProcedure, nullptr, thread);
    if (!keyboard_hook_) {
        const DWORD error = GetLastError();
        UnhookWindowsHookEx(message_hook_);
        SetLastError(error);
        ThrowFailure("SetWindowsHookEx failed for WH_KEYBOARD. hr=%lx");
    }
    cursor_ = LoadCursorA(nullptr, IDC_ARROW);
    font_ = MakeFont();
}

CWizardHook::~CWizardHook() {
    UnhookWindowsHookEx(keyboard_hook_);
    UnhookWindowsHookEx(message_hook_);
    TearDown();
    DeleteObject(font_);
}

LRESULT CALLBACK CWizardHook::MessageProcedure(int code, WPARAM first, LPARAM second) {
    if (code == HC_ACTION && installed) {
        const auto& message = *PassedPointer<const CWPRETSTRUCT*>(second);
        Guarded([&message] { installed->HandleMessage(message); });
    }
    return CallNextHookEx(nullptr, code, first, second);
}

void CWizardHook::HandleMessage(const CWPRETSTRUCT& message) {
    switch (message.message) {
    case WM_CREATE:
        HandleCreation(message);
        break;
    case WM_ACTIVATE:
        if (LOWORD(message.wParam) != WA_INACTIVE)
            HandleActivation(message.hwnd);
        break;
    case WM_THEMECHANGED:
        theme_.Close();
        break;
    default:
        if (state_ == State::active)
            HandleActiveMessage(message);
        break;
    }
}

void CWizardHook::HandleCreation(const CWPRETSTRUCT& message) {
    const auto& creation = *PassedPointer<const CREATESTRUCTA*>(message.lParam);
    if (state_ == State::active || IS_INTRESOURCE(creation.lpszClass) || !IsDialog(message.hwnd))
        return;
    state_ = State::created;
    function_name_.clear();
    rebuilds_on_size_ = true;
}

void CWizardHook::HandleActivation(HWND window) {
    if (state_ == State::active || !IsDialog(window))
        return;
    if (!FindWizardControls(window, controls_)) {
        TearDown();
        function_name_.clear();
        return;
    }
    dialog_ = window;
    state_ = State::active;
    FindFunction();
    Rebuild();
}

void CWizardHook::HandleActiveMessage(const CWPRETSTRUCT& message) {
    const bool is_to_dialog = message.hwnd == dialog_;
    switch (message.message) {
    case WM_DESTROY:
        if (is_to_dialog) {
            TearDown();
            controls_ = {};
            function_ = nullptr;
            function_name_.clear();
            state_ = State::idle;
        }
        break;
    case WM_SIZE:
        if (are_controls_made_ && rebuilds_on_size_ && message.hwnd == controls_.boxes.back())
            Rebuild();
        break;
    case WM_SETFOCUS:
        if (const int box = controls_.IndexOf(message.hwnd); box >= 0)
            focused_index_ = box;
        break;
    case WM_DRAWITEM:
        if (are_controls_made_ && is_to_dialog)
            HandleDrawing(*PassedPointer<const DRAWITEMSTRUCT*>(message.lParam));
        break;
    case SBM_SETSCROLLINFO:
        if (message.hwnd == controls_.scroll_bar)
            HandleScroll(*PassedPointer<const SCROLLINFO*>(message.lParam));
        break;
    case WM_COMMAND:
        if (is_to_dialog)
            HandleCommand(HIWORD(message.wParam), PassedPointer<HWND>(message.lParam));
        break;
    default:
        break;
    }
}

void CWizardHook::HandleDrawing(const DRAWITEMSTRUCT& item) {
    if (const int box = OverlayIndex(item.hwndItem); box >= 0)
        theme_.Draw(KindOf(box), item, font_);
}

void CWizardHook::HandleScroll(const SCROLLINFO& info) {
    if ((info.fMask & SIF_POS) != 0 && info.nPos != first_visible_)
        Rebuild();
}

void CWizardHook::HandleCommand(int notification, HWND control) {
    if (const int box = OverlayIndex(control); box >= 0) {
        if (notification == BN_CLICKED)
            OpenUi(box);
    } else if (control && control == list_) {
        if (notification == CBN_CLOSEUP)
            CloseList();
        else if (notification == CBN_SELENDOK)
            TakeSelection();
    } else if (open_index_ >= 0 && controls_.IndexOf(control) == open_index_ && notification == EN_CHANGE) {
        PlaceList();
    }
}

} // namespace metrify
