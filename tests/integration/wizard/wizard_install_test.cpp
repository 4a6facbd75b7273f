// The system calls of the installation of the hook, and the reaction to their results.

#include "tests/integration/replaced_call.h"
#include "tests/integration/wizard/wizard_fixture.h"

#include <commctrl.h>

namespace metrify::host {
namespace {

using Lines = std::vector<std::string>;

// ---- The calls in their order

struct Asked {
    static inline Lines lines;
    static inline int refused_hook = 0;

    static void Note(const char* what, std::uint64_t value) {
        lines.push_back(std::string(what) + " " + std::to_string(value));
    }

    static BOOL WINAPI InitControls(const INITCOMMONCONTROLSEX* controls) {
        Note("controls", controls->dwICC);
        return TRUE;
    }

    // A hook's handle is the number of its kind; the hooks have no effect.
    static HHOOK WINAPI SetHook(int kind, HOOKPROC procedure, HINSTANCE, DWORD thread) {
        Note(thread == GetCurrentThreadId() && procedure ? "hook on this thread" : "hook elsewhere",
             static_cast<std::uint64_t>(kind));
        return kind != refused_hook ? reinterpret_cast<HHOOK>(static_cast<std::uintptr_t>(kind)) : nullptr;
    }

    static BOOL WINAPI Unhook(HHOOK hook) {
        Note("unhook", reinterpret_cast<std::uintptr_t>(hook));
        return TRUE;
    }

    static HCURSOR WINAPI FindCursor(HINSTANCE module, LPCSTR name) {
        Note(module ? "cursor of a module" : "cursor", reinterpret_cast<std::uintptr_t>(name));
        return nullptr;
    }

    static HFONT WINAPI MakeFont(int height, int, int, int, int weight, DWORD, DWORD, DWORD, DWORD, DWORD,
                                 DWORD, DWORD, DWORD, LPCSTR) {
        Note("font of height", static_cast<std::uint64_t>(height));
        Note("font of weight", static_cast<std::uint64_t>(weight));
        return nullptr;
    }

    ReplacedPointer controls{LoadedFunction(&SystemFunctions::init_common_controls), AddressOf(InitControls)};
    ReplacedPointer hook{ImportedFunction("SetWindowsHookExA"), AddressOf(SetHook)};
    ReplacedPointer unhook{ImportedFunction("UnhookWindowsHookEx"), AddressOf(Unhook)};
    ReplacedPointer cursor{ImportedFunction("LoadCursorA"), AddressOf(FindCursor)};
    ReplacedPointer font{ImportedFunction("CreateFontA"), AddressOf(MakeFont)};
};

class wizard_install : public testing::Test {
  protected:
    wizard_install() {
        Asked::lines.clear();
        Asked::refused_hook = 0;
    }
    ~wizard_install() override { CWizardHook::Remove(); }

    Asked asked;
    CXlWizExUIFunctionRegistry registry;
};

TEST_F(wizard_install, asks_for_controls_first_then_for_both_hooks_of_this_thread) {
    CWizardHook::Install(registry);
    EXPECT_EQ(Asked::lines, (Lines{"controls 16896", "hook on this thread 12", "hook on this thread 2",
                                   "cursor 32512", "font of height 12", "font of weight 400"}));
}

TEST_F(wizard_install, removes_both_hooks_at_the_end) {
    CWizardHook::Install(registry);
    Asked::lines.clear();
    CWizardHook::Remove();
    std::sort(Asked::lines.begin(), Asked::lines.end());
    EXPECT_EQ(Asked::lines, (Lines{"unhook 12", "unhook 2"}));
}

TEST_F(wizard_install, undoes_the_first_hook_if_the_second_fails) {
    Asked::refused_hook = WH_KEYBOARD;
    EXPECT_THROW(CWizardHook::Install(registry), CXlRuntimeException);
    EXPECT_EQ(Asked::lines,
              (Lines{"controls 16896", "hook on this thread 12", "hook on this thread 2", "unhook 12"}));
}

TEST_F(wizard_install, stops_if_the_first_hook_fails) {
    Asked::refused_hook = WH_CALLWNDPROCRET;
    EXPECT_THROW(CWizardHook::Install(registry), CXlRuntimeException);
    EXPECT_EQ(Asked::lines, (Lines{"controls 16896", "hook on this thread 12"}));
}

// ---- The system's version and the screen's resolution

struct Answers {
    static inline unsigned system_major = 0; ///< 0 for none
    static inline int dpi_x = 96;
    static inline int dpi_y = 96;

    static BOOL WINAPI GetVersion(OSVERSIONINFOA* version) {
        version->dwMajorVersion = system_major;
        return system_major != 0;
    }

    static int WINAPI GetCaps(HDC, int index) {
        return index == LOGPIXELSX ? dpi_x : index == LOGPIXELSY ? dpi_y : 0;
    }

    explicit Answers(unsigned major) {
        system_major = major;
        dpi_x = 96;
        dpi_y = 96;
    }

    ReplacedPointer version{ImportedFunction("GetVersionExA"), AddressOf(GetVersion)};
    ReplacedPointer caps{ImportedFunction("GetDeviceCaps"), AddressOf(GetCaps)};
};

// Position of the arrow of the first box relative to the box's upper right corner, and its size.
using Place = std::array<LONG, 4>;

template <unsigned major>
class Installed : protected Answers, public WizardHookTest {
  protected:
    Installed() : Answers(major) { registry.usesThemes = false; }

    Place PlaceOfArrow() {
        Open();
        const RECT inside = PlaceOf(Hook().Overlay(0));
        const RECT outside = PlaceOf(dialog->box(0));
        return {inside.left - outside.right, inside.top - outside.top, inside.right - inside.left,
                inside.bottom - inside.top};
    }
};

using wizard_on_an_unknown_system = Installed<0>;
using wizard_on_system_5 = Installed<5>;
using wizard_on_system_6 = Installed<6>;

// Without a theme everything is one pixel further left, one lower, and two less high.

TEST_F(wizard_on_an_unknown_system, is_laid_out_as_on_system_5) {
    EXPECT_EQ(PlaceOfArrow(), (Place{-17 + 2 - 1, -3 + 1, 17, 18 - 2}));
}

TEST_F(wizard_on_system_5, is_laid_out_as_on_old_systems) {
    EXPECT_EQ(PlaceOfArrow(), (Place{-17 + 2 - 1, -3 + 1, 17, 18 - 2}));
}

TEST_F(wizard_on_system_6, is_laid_out_as_on_new_systems) {
    EXPECT_EQ(PlaceOfArrow(), (Place{-17 + 3 - 1, -4 + 1, 17, 20 - 2}));
}

TEST_F(wizard_on_system_6, is_scaled_by_the_screens_resolution_in_each_direction) {
    dpi_x = 192;
    dpi_y = 120;
    // 17 is 34 across and 20 is 25 down, less one and lower by one at 120.
    EXPECT_EQ(PlaceOfArrow(), (Place{-34 + 3 - 1, -4 + 1 + 1, 34, 25 - 1 - 2}));
}

} // namespace
} // namespace metrify::host
