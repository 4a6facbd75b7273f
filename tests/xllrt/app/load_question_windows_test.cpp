// The question at load: the test finds the real message box, inspects it and answers it.

#include "add_in_fixture.h"
#include "tests/xllrt/text/fake_resources.h"

#include <gmock/gmock.h>
#include <string>
#include <vector>
#include <windows.h>

namespace {

using namespace metrify;
using testing::UnorderedElementsAre;

// A message box, as it was when it became the active window.
struct SeenBox {
    std::wstring title;
    std::wstring text;
    std::vector<int> buttons;
    HICON icon = nullptr;
    HWND owner = nullptr;
};

std::wstring WindowText(HWND window) {
    std::wstring text(1024, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

std::wstring ClassName(HWND window) {
    std::wstring name(64, L'\0');
    name.resize(static_cast<std::size_t>(GetClassNameW(window, name.data(), static_cast<int>(name.size()))));
    return name;
}

/// Answers the message boxes of this thread during its lifetime.
class BoxAnswerer {
  public:
    explicit BoxAnswerer(int button) : button_(button) {
        current_ = this;
        hook_ = SetWindowsHookExW(WH_CBT, OnHook, nullptr, GetCurrentThreadId());
    }
    ~BoxAnswerer() {
        UnhookWindowsHookEx(hook_);
        current_ = nullptr;
    }
    BoxAnswerer(const BoxAnswerer&) = delete;
    BoxAnswerer& operator=(const BoxAnswerer&) = delete;

    std::vector<SeenBox> boxes;

  private:
    static LRESULT CALLBACK OnHook(int code, WPARAM window, LPARAM details) {
        const HWND activated = reinterpret_cast<HWND>(window);
        if (code == HCBT_ACTIVATE && ClassName(activated) == L"#32770")
            current_->Answer(activated);
        return CallNextHookEx(nullptr, code, window, details);
    }

    static BOOL CALLBACK LookAtChild(HWND child, LPARAM) {
        SeenBox& box = current_->boxes.back();
        const bool is_icon = (GetWindowLongW(child, GWL_STYLE) & SS_TYPEMASK) == SS_ICON;
        if (ClassName(child) == L"Button" && (GetWindowLongW(child, GWL_STYLE) & WS_VISIBLE) != 0)
            box.buttons.push_back(GetDlgCtrlID(child));
        else if (ClassName(child) == L"Static" && is_icon)
            box.icon = reinterpret_cast<HICON>(SendMessageW(child, STM_GETICON, 0, 0));
        else if (ClassName(child) == L"Static")
            box.text += WindowText(child);
        return TRUE;
    }

    void Answer(HWND window) {
        SeenBox& box = boxes.emplace_back();
        box.title = WindowText(window);
        box.owner = GetWindow(window, GW_OWNER);
        EnumChildWindows(window, LookAtChild, 0);
        PostMessageW(window, WM_COMMAND, static_cast<WPARAM>(button_), 0);
    }

    inline static BoxAnswerer* current_ = nullptr;
    int button_;
    HHOOK hook_;
};

/// A top-level window of a window class registered for it.
class ClassWindow {
  public:
    explicit ClassWindow(const wchar_t* class_name) : class_name_(class_name) {
        WNDCLASSW window_class{};
        window_class.lpfnWndProc = DefWindowProcW;
        window_class.lpszClassName = class_name;
        RegisterClassW(&window_class);
        handle =
            CreateWindowW(class_name, L"", WS_OVERLAPPED, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
    }
    ~ClassWindow() {
        DestroyWindow(handle);
        UnregisterClassW(class_name_, nullptr);
    }
    ClassWindow(const ClassWindow&) = delete;
    ClassWindow& operator=(const ClassWindow&) = delete;

    std::uint16_t LowBits() const {
        return static_cast<std::uint16_t>(reinterpret_cast<std::uintptr_t>(handle));
    }

    HWND handle;

  private:
    const wchar_t* class_name_;
};

class LoadQuestion : public AddInTest {
  protected:
    LoadQuestion() {
        SetHostVersion(14);
        ReplaceWindows(nullptr);
        host.On(xlGetHwnd, Reply{0, std::int32_t{host_window.LowBits()}});
        app.functions.Add(SimpleFunction(u"One"));
        app.functions.Add(SimpleFunction(u"Fine")).registered = 1;
        app.functions.Add(SimpleFunction(u"\u0416\u00E9"));
    }

    FakeResources built_in_texts_only;
    ClassWindow host_window{L"XLMAIN"};
    RecordingApp app{host};
};

TEST_F(LoadQuestion, is_a_message_box_of_the_hosts_window_with_a_warning_sign) {
    BoxAnswerer user(IDYES);
    app.ConfirmRegistrationFailure();
    ASSERT_EQ(user.boxes.size(), 1U);
    const SeenBox& box = user.boxes[0];
    EXPECT_EQ(box.title, L"Add-in Load Failure");
    EXPECT_EQ(box.text, L"The following functions in Recording failed to register:\n\nOne\n\u0416\u00E9\n\n"
                        L"Do you wish to continue loading the add-in?");
    EXPECT_THAT(box.buttons, UnorderedElementsAre(6, 7)) << "Yes and No";
    EXPECT_EQ(box.icon, LoadIconW(nullptr, MAKEINTRESOURCEW(32515)));
    EXPECT_EQ(box.owner, host_window.handle);
}

TEST_F(LoadQuestion, continues_the_load_only_after_yes) {
    {
        BoxAnswerer user(IDYES);
        EXPECT_TRUE(app.ConfirmRegistrationFailure());
    }
    BoxAnswerer user(IDNO);
    EXPECT_FALSE(app.ConfirmRegistrationFailure());
}

TEST_F(LoadQuestion, is_not_asked_if_nothing_failed) {
    BoxAnswerer user(IDNO);
    for (CXlFunctionDescriptor* descriptor : app.functions.All())
        descriptor->registered = 1;
    EXPECT_TRUE(app.ConfirmRegistrationFailure());
    EXPECT_TRUE(user.boxes.empty());
}

TEST_F(LoadQuestion, belongs_to_the_window_that_has_both_class_and_low_bits) {
    const ClassWindow other(L"Other");
    EXPECT_EQ(SystemWindows().FindWindowOfClass("XLMAIN", host_window.LowBits()), host_window.handle);
    EXPECT_EQ(SystemWindows().FindWindowOfClass("XLMAIN", other.LowBits()), nullptr);
    EXPECT_EQ(SystemWindows().FindWindowOfClass("Other", other.LowBits()), other.handle);
    EXPECT_EQ(SystemWindows().FindWindowOfClass("XLMAI", host_window.LowBits()), nullptr);
}

} // namespace
