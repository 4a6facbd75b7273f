// The drawing of arrows and buttons, in the user's theme and without one.

#include "tests/integration/recorded_theme.h"
#include "tests/integration/wizard/wizard_fixture.h"

#include <uxtheme.h>

namespace metrify::host {
namespace {

using Lines = std::vector<std::string>;

const Lines kOpened = {"OpenThemeData COMBOBOX", "OpenThemeData BUTTON"};
const Lines kClosed = {"CloseThemeData COMBOBOX", "CloseThemeData BUTTON"};
const Lines kThemedArrow = {"DrawThemeBackground COMBOBOX 1 1 (3,4,20,24)"};
const Lines kClassicArrow = {"DrawFrameControl 3 5 (3,4,20,24)"};
const Lines kClassicButton = {"DrawFrameControl 4 16 (3,4,20,24)",
                              "DrawTextA ... -1 37 (3,4,20,24) of height 12"};

struct Recording {
    RecordedTheme theme;
};

// The recording must begin before the hook is installed.
class wizard_theme : protected Recording, public WizardHookTest {
  protected:
    explicit wizard_theme(int version = 16) : WizardHookTest(version) {}

    // The lines that the drawing of a control records.
    Lines Drawn(HWND control, UINT state = 0) {
        theme.Lines();
        const HDC canvas = CreateCompatibleDC(nullptr);
        DRAWITEMSTRUCT item{};
        item.CtlType = ODT_BUTTON;
        item.itemAction = ODA_DRAWENTIRE;
        item.itemState = state;
        item.hwndItem = control;
        item.hDC = canvas;
        item.rcItem = {3, 4, 20, 24};
        SendMessageA(dialog->window(), WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&item));
        DeleteDC(canvas);
        return theme.Lines();
    }

    // Position relative to the upper right corner of the box, and size.
    std::array<LONG, 4> PlaceBeside(int box) {
        const RECT inside = PlaceOf(Hook().Overlay(box));
        const RECT outside = PlaceOf(dialog->box(box));
        return {inside.left - outside.right, inside.top - outside.top, inside.right - inside.left,
                inside.bottom - inside.top};
    }

    void ExpectClassic() {
        EXPECT_EQ(Drawn(Hook().Overlay(0)), kClassicArrow);
        EXPECT_EQ(Drawn(Hook().Overlay(1)), kClassicButton);
        EXPECT_EQ(PlaceBeside(0), (std::array<LONG, 4>{-17 + 3 - 1, -4 + 1, 17, 20 - 2}));
        EXPECT_EQ(PlaceBeside(1), (std::array<LONG, 4>{-17 + 3 - 1, -2 + 1, 17, 16 - 2}));
    }

    void ChangeTheme() { SendMessageA(dialog->window(), WM_THEMECHANGED, 0, 0); }
};

// ---- The device context

TEST_F(wizard_theme, leaves_the_surface_as_it_was) {
    theme.missing = {"DrawThemeText"};
    Open();
    const auto font = static_cast<HFONT>(GetStockObject(SYSTEM_FONT));
    for (const int background : {OPAQUE, TRANSPARENT}) {
        const HDC canvas = CreateCompatibleDC(nullptr);
        SelectObject(canvas, font);
        SetBkMode(canvas, background);
        for (const int box : {0, 1}) {
            DRAWITEMSTRUCT item{};
            item.hwndItem = Hook().Overlay(box);
            item.hDC = canvas;
            item.rcItem = {3, 4, 20, 24};
            SendMessageA(dialog->window(), WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&item));
        }
        EXPECT_EQ(GetBkMode(canvas), background);
        EXPECT_EQ(GetCurrentObject(canvas, OBJ_FONT), font);
        DeleteDC(canvas);
    }
}

// ---- Opening and closing

TEST_F(wizard_theme, is_opened_for_the_dialog_in_both_classes) {
    Open();
    EXPECT_EQ(theme.Openings(), kOpened);
    EXPECT_EQ(theme.Windows(), std::set<HWND>{dialog->window()});
}

TEST_F(wizard_theme, is_opened_once_however_often_the_dialog_is_built) {
    Open();
    dialog->ScrollTo(1);
    dialog->Close();
    Open();
    EXPECT_EQ(theme.Openings(), kOpened);
}

TEST_F(wizard_theme, is_closed_once_with_the_hook) {
    Open();
    theme.Lines();
    CWizardHook::Remove();
    EXPECT_EQ(theme.Openings(), kClosed);
}

TEST_F(wizard_theme, is_closed_once_when_the_user_takes_another) {
    Open();
    theme.Lines();
    ChangeTheme();
    EXPECT_EQ(theme.Openings(), kClosed);
    ChangeTheme();
    CWizardHook::Remove();
    EXPECT_EQ(theme.Openings(), Lines{});
}

TEST_F(wizard_theme, is_opened_again_when_overlays_are_built_after_a_change) {
    Open();
    ChangeTheme();
    EXPECT_EQ(Drawn(Hook().Overlay(0)), kClassicArrow);
    dialog->ScrollTo(1);
    EXPECT_EQ(theme.Openings(), kOpened);
    dialog->ScrollTo(0);
    EXPECT_EQ(Drawn(Hook().Overlay(0)), kThemedArrow);
}

TEST_F(wizard_theme, is_closed_by_a_change_also_without_the_dialog) {
    Open();
    dialog->Close();
    theme.Lines();
    SendMessageA(host.automation.windows().main(), WM_THEMECHANGED, 0, 0);
    EXPECT_EQ(theme.Openings(), kClosed);
}

// ---- Without a theme

TEST_F(wizard_theme, is_not_opened_for_a_function_that_requests_nothing) {
    function.kinds.clear();
    Open();
    EXPECT_EQ(theme.Openings(), Lines{});
}

TEST_F(wizard_theme, is_not_opened_for_a_registry_that_requests_none) {
    registry.usesThemes = false;
    Open();
    EXPECT_EQ(theme.Openings(), Lines{});
    ExpectClassic();
}

class wizard_theme_of_version_10 : public wizard_theme {
  protected:
    wizard_theme_of_version_10() : wizard_theme(10) {}
};

TEST_F(wizard_theme_of_version_10, is_not_opened) {
    Open();
    EXPECT_EQ(theme.Openings(), Lines{});
    ExpectClassic();
}

class wizard_theme_of_version_11 : public wizard_theme {
  protected:
    wizard_theme_of_version_11() : wizard_theme(11) {}
};

TEST_F(wizard_theme_of_version_11, is_opened) {
    Open();
    EXPECT_EQ(theme.Openings(), kOpened);
}

class wizard_theme_without : public wizard_theme, public testing::WithParamInterface<const char*> {};

TEST_P(wizard_theme_without, one_of_its_functions_is_not_opened) {
    theme.missing = {GetParam()};
    Open();
    EXPECT_EQ(theme.Openings(), Lines{});
    ExpectClassic();
    CWizardHook::Remove();
    EXPECT_EQ(theme.Openings(), Lines{});
}

INSTANTIATE_TEST_SUITE_P(all, wizard_theme_without,
                         testing::Values("OpenThemeData", "DrawThemeBackground",
                                         "GetThemeBackgroundContentRect", "DrawThemeText", "CloseThemeData",
                                         "GetThemePartSize"));

struct WithoutLibrary : Recording {
    WithoutLibrary() { theme.hasLibrary = false; }
};

TEST(wizard_theme_of_a_system, without_the_library_is_none) {
    WithoutLibrary recording;
    WizardTheme none;
    none.Open(GetDesktopWindow());
    EXPECT_FALSE(none.IsOpen());
    EXPECT_EQ(recording.theme.Lines(), Lines{});
}

TEST(wizard_theme_of_a_system, is_loaded_from_the_folder_of_the_system) {
    const Recording recording;
    const WizardTheme theme;
    std::array<char, MAX_PATH> folder{};
    ASSERT_NE(GetSystemDirectoryA(folder.data(), MAX_PATH), 0U);
    EXPECT_EQ(recording.theme.libraryPath, std::string(folder.data()) + "\\UxTheme.dll");
}

class wizard_theme_refused : public wizard_theme, public testing::WithParamInterface<const char*> {};

TEST_P(wizard_theme_refused, in_one_class_is_none) {
    const std::string refused = std::string("OpenThemeData ") + GetParam();
    theme.refused = {refused};
    Open();
    EXPECT_EQ(theme.Openings(), kOpened);
    ExpectClassic();
    dialog->ScrollTo(1);
    EXPECT_EQ(theme.Openings(), Lines{}); // was requested before
    CWizardHook::Remove();
    const std::string other = std::string_view(GetParam()) == "BUTTON" ? "COMBOBOX" : "BUTTON";
    EXPECT_EQ(theme.Openings(), Lines{"CloseThemeData " + other});
}

INSTANTIATE_TEST_SUITE_P(classes, wizard_theme_refused, testing::Values("COMBOBOX", "BUTTON"));

TEST_F(wizard_theme, that_is_refused_is_none) {
    theme.refused = {"OpenThemeData"};
    Open();
    ExpectClassic();
    CWizardHook::Remove();
    EXPECT_EQ(theme.Openings(), Lines{});
}

// ---- Drawing

TEST_F(wizard_theme, has_an_arrow_for_a_list) {
    Open();
    EXPECT_EQ(Drawn(Hook().Overlay(0)), kThemedArrow);
    EXPECT_EQ(Drawn(Hook().Overlay(0), ODS_SELECTED), Lines{"DrawThemeBackground COMBOBOX 1 3 (3,4,20,24)"});
}

TEST_F(wizard_theme, has_a_button_with_three_dots_in_its_content) {
    Open();
    EXPECT_EQ(Drawn(Hook().Overlay(1)),
              (Lines{"DrawThemeBackground BUTTON 1 1 (3,4,20,24)",
                     "GetThemeBackgroundContentRect BUTTON 1 1 (3,4,20,24)",
                     "DrawThemeText BUTTON 1 1 ... -1 37 0 (5,6,18,22) of height 12"}));
    EXPECT_EQ(Drawn(Hook().Overlay(1), ODS_SELECTED),
              (Lines{"DrawThemeBackground BUTTON 1 3 (3,4,20,24)",
                     "GetThemeBackgroundContentRect BUTTON 1 3 (3,4,20,24)",
                     "DrawThemeText BUTTON 1 3 ... -1 37 0 (5,6,18,22) of height 12"}));
}

TEST_F(wizard_theme, places_arrow_and_button_at_the_edge_of_their_boxes) {
    Open();
    EXPECT_EQ(PlaceBeside(0), (std::array<LONG, 4>{-17 + 3, -4, 17, 20}));
    EXPECT_EQ(PlaceBeside(1), (std::array<LONG, 4>{-17 + 3, -2, 17, 16}));
}

TEST_F(wizard_theme, is_left_where_its_background_fails) {
    theme.refused = {"DrawThemeBackground"};
    Open();
    EXPECT_EQ(Drawn(Hook().Overlay(0)), (Lines{kThemedArrow[0], kClassicArrow[0]}));
    EXPECT_EQ(Drawn(Hook().Overlay(1)),
              (Lines{"DrawThemeBackground BUTTON 1 1 (3,4,20,24)", kClassicButton[0], kClassicButton[1]}));
}

TEST_F(wizard_theme, is_left_where_its_text_fails) {
    theme.refused = {"DrawThemeText"};
    Open();
    const Lines drawn = Drawn(Hook().Overlay(1));
    EXPECT_EQ(Lines(drawn.end() - 2, drawn.end()), kClassicButton);
}

TEST_F(wizard_theme, is_drawn_where_a_control_is_painted) {
    Open();
    UpdateWindow(dialog->window());
    theme.Lines();
    RedrawWindow(Hook().Overlay(0), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    EXPECT_EQ(theme.Lines(), Lines{"DrawThemeBackground COMBOBOX 1 1 (0,0,17,20)"});
}

TEST_F(wizard_theme, draws_nothing_for_controls_of_the_dialog) {
    Open();
    EXPECT_EQ(Drawn(dialog->box(0)), Lines{});
    EXPECT_EQ(Drawn(nullptr), Lines{});
}

class wizard_classic : public wizard_theme {
  protected:
    wizard_classic() { registry.usesThemes = false; }
};

TEST_F(wizard_classic, has_an_arrow_for_a_list) {
    Open();
    EXPECT_EQ(Drawn(Hook().Overlay(0)), kClassicArrow);
    EXPECT_EQ(Drawn(Hook().Overlay(0), ODS_SELECTED), Lines{"DrawFrameControl 3 517 (3,4,20,24)"});
}

TEST_F(wizard_classic, has_a_button_with_three_dots) {
    Open();
    EXPECT_EQ(Drawn(Hook().Overlay(1)), kClassicButton);
    EXPECT_EQ(Drawn(Hook().Overlay(1), ODS_SELECTED),
              (Lines{"DrawFrameControl 4 528 (3,4,20,24)", kClassicButton[1]}));
}

} // namespace
} // namespace metrify::host
