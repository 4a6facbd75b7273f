#include "integration/wizard/wizard_hook.h"

#include "integration/com/guarded.h"
#include "integration/com/system_libraries.h"
#include "xllrt/fault/exceptions.h"
#include "xllrt/gate/host_version.h"
#include "xllrt/platform/passed_pointer.h"
#include "xllrt/text/format_printf.h"

#include <commctrl.h>
#include <string_view>

namespace metrify {

namespace {

constexpr std::string_view kDialogClass = "bosa_sdm_XL9";

// Newer hosts draw in the user's theme.
constexpr int kLastUnthemedVersion = 10;

constinit std::unique_ptr<CWizardHook> installed;

bool IsDialog(HWND window) {
    std::array<char, 50> class_name{};
    GetClassNameA(window, class_name.data(), static_cast<int>(class_name.size()));
    return kDialogClass == class_name.data();
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
    GetSystemFunctions().init_common_controls(&controls);
}

} // namespace

CWizardHook* CWizardHook::Instance() {
    return installed.get();
}

void CWizardHook::Install(IXlWizExUIFunctionRegistry& registry) {
    if (installed)
        throw CXlRuntimeException(std::string("An instance of CWizardHook is already installed"));
    // The constructor is private, so std::make_unique cannot be used.
    installed.reset(new CWizardHook(registry));
}

void CWizardHook::Remove() {
    installed.reset();
}

void CWizardHook::Abandon() {
    // The system frees the resources of the process.
    static_cast<void>(installed.release());
}

CWizardHook::CWizardHook(IXlWizExUIFunctionRegistry& registry)
    : registry_(registry), editor_(dialog_, overlays_) {
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
    editor_.LoadPointer();
    overlays_.LoadFont();
}

CWizardHook::~CWizardHook() {
    UnhookWindowsHookEx(keyboard_hook_);
    UnhookWindowsHookEx(message_hook_);
    TearDown();
}

LRESULT CALLBACK CWizardHook::MessageProcedure(int code, WPARAM first, LPARAM second) {
    if (code == HC_ACTION && installed) {
        const auto& message = *PassedPointer<const CWPRETSTRUCT*>(second);
        Guarded([&message] { installed->HandleMessage(message); });
    }
    return CallNextHookEx(nullptr, code, first, second);
}

LRESULT CALLBACK CWizardHook::KeyboardProcedure(int code, WPARAM key, LPARAM flags) {
    constexpr LPARAM kReleased = 0x80000000;
    CWizardHook* const hook = Instance();
    const bool is_pressed = code == HC_ACTION && (flags & kReleased) == 0;
    if (hook && is_pressed &&
        Guarded([hook, key] { return hook->editor_.HandleKey(static_cast<WORD>(key)); }))
        return 1; // swallowed
    return CallNextHookEx(nullptr, code, key, flags);
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
    if (!FindWizardControls(window, dialog_.controls)) {
        TearDown();
        function_name_.clear();
        return;
    }
    dialog_.window = window;
    state_ = State::active;
    FindFunction();
    Rebuild();
}

void CWizardHook::HandleActiveMessage(const CWPRETSTRUCT& message) {
    const bool is_to_dialog = message.hwnd == dialog_.window;
    switch (message.message) {
    case WM_DESTROY:
        if (is_to_dialog) {
            TearDown();
            dialog_.controls = {};
            dialog_.function = nullptr;
            function_name_.clear();
            state_ = State::idle;
        }
        break;
    case WM_SIZE:
        if (overlays_.AreMade() && rebuilds_on_size_ && message.hwnd == dialog_.controls.boxes.back())
            Rebuild();
        break;
    case WM_SETFOCUS:
        if (const int box = dialog_.controls.IndexOf(message.hwnd); box >= 0)
            editor_.SetFocusedBox(box);
        break;
    case WM_DRAWITEM:
        if (overlays_.AreMade() && is_to_dialog)
            HandleDrawing(*PassedPointer<const DRAWITEMSTRUCT*>(message.lParam));
        break;
    case SBM_SETSCROLLINFO:
        if (message.hwnd == dialog_.controls.scroll_bar)
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
    if (const int box = overlays_.IndexOf(item.hwndItem); box >= 0)
        theme_.Draw(dialog_.KindOf(box), item, overlays_.Font());
}

void CWizardHook::HandleScroll(const SCROLLINFO& info) {
    if ((info.fMask & SIF_POS) != 0 && info.nPos != dialog_.first_visible)
        Rebuild();
}

void CWizardHook::HandleCommand(int notification, HWND control) {
    if (const int box = overlays_.IndexOf(control); box >= 0) {
        if (notification == BN_CLICKED)
            editor_.Open(box);
    } else if (control && control == overlays_.List()) {
        if (notification == CBN_CLOSEUP)
            editor_.CloseList();
        else if (notification == CBN_SELENDOK)
            editor_.TakeSelection();
    } else if (editor_.OpenIndex() >= 0 && dialog_.controls.IndexOf(control) == editor_.OpenIndex() &&
               notification == EN_CHANGE) {
        editor_.PlaceList();
    }
}

void CWizardHook::FindFunction() {
    dialog_.function = function_name_.empty() ? nullptr : registry_.FindFunction(function_name_);
    if (const auto shown = name_reader_.Read(dialog_.window); shown && *shown != function_name_)
        dialog_.function = nullptr;
}

void CWizardHook::Rebuild() {
    TearDown();
    dialog_.first_visible = dialog_.controls.FirstVisible();
    if (!dialog_.function || dialog_.function->KindCount() == 0)
        return;
    if (registry_.UsesThemes() && HostVersion() > kLastUnthemedVersion)
        theme_.Open(dialog_.window);
    overlays_.Create(dialog_, theme_.IsOpen());
}

void CWizardHook::TearDown() {
    editor_.ForgetList();
    overlays_.Destroy();
}

} // namespace metrify
