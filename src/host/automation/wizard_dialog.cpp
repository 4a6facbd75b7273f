#include "host/automation/wizard_dialog.h"

#include "host/automation/accessible_dialog.h"
#include "xllrt/platform/passed_pointer.h"

namespace metrify::host {

namespace {

constexpr const char* kBoxClass = "EDTBX";

HINSTANCE Program() {
    return GetModuleHandleA(nullptr);
}

void RegisterDialogClass(const char* name, WNDPROC procedure) {
    WNDCLASSA description{};
    description.lpfnWndProc = procedure;
    description.hInstance = Program();
    description.lpszClassName = name;
    description.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    RegisterClassA(&description); // no effect after the first call
}

// Boxes are edit controls of the system, under the host's class name.
void RegisterBoxClass() {
    WNDCLASSA description{};
    GetClassInfoA(nullptr, "EDIT", &description);
    description.hInstance = Program();
    description.lpszClassName = kBoxClass;
    RegisterClassA(&description);
}

} // namespace

WizardDialog::WizardDialog(const std::shared_ptr<ObjectContext>& context,
                           const WizardDialogOptions& options) {
    ComPtr<IDispatch> group;
    if (options.is_name_nested)
        group = AccessibleDialog::MakeGroup(context, options.function, options.name_role);
    accessible_ = AccessibleDialog::MakeDialog(context, options.function, options.name_role, group);
    RegisterDialogClass(options.class_name.c_str(), Procedure);
    RegisterBoxClass();
    window_ = CreateWindowExA(0, options.class_name.c_str(), options.title.c_str(),
                              WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN, 60, 60, 460, 300,
                              options.owner, nullptr, Program(), nullptr);
    SetWindowLongPtrA(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    MakeControls(options);
}

WizardDialog::~WizardDialog() {
    Close();
}

void WizardDialog::MakeControls(const WizardDialogOptions& options) {
    constexpr int kLeft = 110;
    constexpr int kTop = 24;
    constexpr int kStep = 30;
    for (int i = 0; i < kDialogBoxes; ++i) {
        const DWORD visible = i < options.arguments ? WS_VISIBLE : 0;
        const int left = i == options.misplaced_box ? kLeft + 5 : kLeft;
        boxes_[static_cast<std::size_t>(i)] =
            CreateWindowExA(0, i == options.foreign_box ? "EDIT" : kBoxClass, "",
                            WS_CHILD | WS_BORDER | WS_CLIPSIBLINGS | ES_AUTOHSCROLL | visible, left,
                            kTop + i * kStep, 240, 22, window_, nullptr, Program(), nullptr);
    }
    if (options.has_scroll_bar)
        MakeScrollBar(kLeft + 260, kTop, kDialogBoxes * kStep);
    for (int i = 0; i < options.arguments; ++i) {
        const std::string label = "Argument " + std::to_string(i + 1);
        CreateWindowExA(0, "STATIC", label.c_str(), WS_CHILD | WS_VISIBLE | SS_RIGHT, 10,
                        kTop + i * kStep + 3, kLeft - 20, 18, window_, nullptr, Program(), nullptr);
    }
}

void WizardDialog::MakeScrollBar(int left, int top, int height) {
    scroll_bar_ = CreateWindowExA(0, "SCROLLBAR", "", WS_CHILD | WS_VISIBLE | SBS_VERT, left, top, 18, height,
                                  window_, nullptr, Program(), nullptr);
    SCROLLINFO range{sizeof(SCROLLINFO), SIF_RANGE | SIF_PAGE, 0, 20, 1, 0, 0};
    SetScrollInfo(scroll_bar_, SB_CTL, &range, FALSE);
}

void WizardDialog::Show() {
    ShowWindow(window_, SW_SHOW);
    SetActiveWindow(window_);
    UpdateWindow(window_);
}

void WizardDialog::Close() {
    if (window_)
        DestroyWindow(window_);
    window_ = nullptr;
}

void WizardDialog::ScrollTo(int argument) {
    SCROLLINFO position{sizeof(SCROLLINFO), SIF_POS, 0, 0, 0, argument, 0};
    SendMessageA(scroll_bar_, SBM_SETSCROLLINFO, TRUE, reinterpret_cast<LPARAM>(&position));
}

void WizardDialog::SetText(int box_index, const std::string& text) {
    SetWindowTextA(box(box_index), text.c_str());
}

std::string WizardDialog::Text(int box_index) const {
    std::array<char, 256> text{};
    GetWindowTextA(box(box_index), text.data(), static_cast<int>(text.size()));
    return text.data();
}

LRESULT CALLBACK WizardDialog::Procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
    const auto* const dialog = PassedPointer<WizardDialog*>(GetWindowLongPtrA(window, GWLP_USERDATA));
    if (message == WM_GETOBJECT && static_cast<LONG>(second) == OBJID_CLIENT && dialog)
        return LresultFromObject(IID_IAccessible, first, dialog->accessible_.Get());
    return DefWindowProcA(window, message, first, second);
}

} // namespace metrify::host
