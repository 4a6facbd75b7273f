// Use of the lists and buttons on the dialog's boxes.

#include "tests/integration/replaced_call.h"
#include "tests/integration/wizard/wizard_fixture.h"

namespace metrify::host {
namespace {

class wizard_lists : public WizardHookTest {
  protected:
    static LONG DroppedHeight() {
        RECT dropped{};
        SendMessageA(Hook().List(), CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&dropped));
        return dropped.bottom - dropped.top;
    }
};

HGDIOBJ measured_font = nullptr;

template <LONG Height>
BOOL WINAPI MeasureLines(HDC canvas, TEXTMETRICA* metrics) {
    measured_font = GetCurrentObject(canvas, OBJ_FONT);
    metrics->tmHeight = Height;
    return TRUE;
}

// ---- Lists

TEST_F(wizard_lists, opens_the_list_of_an_argument_under_its_box) {
    Open();
    Click(Hook().Overlay(0));
    EXPECT_EQ(Hook().OpenIndex(), 0);
    EXPECT_EQ(SendMessageA(Hook().List(), CB_GETCOUNT, 0, 0), 4);
    EXPECT_TRUE(SendMessageA(Hook().List(), CB_GETDROPPEDSTATE, 0, 0));
    EXPECT_FALSE(IsWindowVisible(Hook().Overlay(0)));
    RECT list{};
    RECT box{};
    GetWindowRect(Hook().List(), &list);
    GetWindowRect(dialog->box(0), &box);
    EXPECT_EQ(list.left, box.left);
    EXPECT_EQ(list.top, box.bottom);
    EXPECT_EQ(list.right, box.right + 3);
}

TEST_F(wizard_lists, writes_the_value_of_the_selection_into_the_box) {
    Open();
    Click(Hook().Overlay(0));
    Select(1);
    EXPECT_EQ(dialog->Text(0), "\"ft\"");
}

TEST_F(wizard_lists, shows_the_arrow_again_and_focuses_the_box_when_the_list_closes) {
    Open();
    Click(Hook().Overlay(0));
    Notify(Hook().List(), CBN_CLOSEUP);
    EXPECT_EQ(Hook().OpenIndex(), -1);
    EXPECT_TRUE(IsWindowVisible(Hook().Overlay(0)));
    EXPECT_FALSE(IsWindowVisible(Hook().List()));
    EXPECT_EQ(GetFocus(), dialog->box(0));
    EXPECT_EQ(dialog->Text(0), "");
}

TEST_F(wizard_lists, moves_the_list_with_its_box_when_the_text_changes) {
    Open();
    Click(Hook().Overlay(0));
    SetWindowPos(dialog->box(0), nullptr, 130, 24, 220, 22, SWP_NOZORDER);
    SendMessageA(dialog->window(), WM_COMMAND, MAKEWPARAM(0, EN_CHANGE),
                 reinterpret_cast<LPARAM>(dialog->box(0)));
    RECT list{};
    RECT box{};
    GetWindowRect(Hook().List(), &list);
    GetWindowRect(dialog->box(0), &box);
    EXPECT_EQ(list.left, box.left);
}

TEST_F(wizard_lists, show_the_items_of_the_function) {
    Open();
    Click(Hook().Overlay(0));
    std::array<char, 50> text{};
    SendMessageA(Hook().List(), CB_GETLBTEXT, 2, reinterpret_cast<LPARAM>(text.data()));
    EXPECT_STREQ(text.data(), "inch");
    Notify(Hook().List(), CBN_CLOSEUP);
    Click(Hook().Overlay(0));
    EXPECT_EQ(SendMessageA(Hook().List(), CB_GETCOUNT, 0, 0), 4);
}

TEST_F(wizard_lists, have_the_height_that_their_font_requires) {
    Open();
    const auto font = reinterpret_cast<HFONT>(SendMessageA(Hook().List(), WM_GETFONT, 0, 0));
    LOGFONTA description{};
    ASSERT_NE(GetObjectA(font, sizeof(description), &description), 0);
    EXPECT_EQ(description.lfHeight, 12);
    EXPECT_EQ(description.lfWeight, 400);
    Click(Hook().Overlay(0));
    EXPECT_GE(DroppedHeight(), 4 * 10);
    Notify(Hook().List(), CBN_CLOSEUP);
    const ReplacedPointer of_20(ImportedFunction("GetTextMetricsA"), AddressOf(MeasureLines<20>));
    Click(Hook().Overlay(0));
    EXPECT_EQ(measured_font, font);
    const LONG height = DroppedHeight();
    Notify(Hook().List(), CBN_CLOSEUP);
    const ReplacedPointer of_30(ImportedFunction("GetTextMetricsA"), AddressOf(MeasureLines<30>));
    Click(Hook().Overlay(0));
    EXPECT_EQ(DroppedHeight() - height, 10 * (30 - 20));
}

TEST_F(wizard_lists, have_the_arrow_as_their_cursor) {
    Open();
    SetCursor(LoadCursorA(nullptr, IDC_WAIT));
    Click(Hook().Overlay(0));
    EXPECT_EQ(GetCursor(), LoadCursorA(nullptr, IDC_ARROW));
}

TEST_F(wizard_lists, that_are_missing_do_not_open) {
    function.hasParts = false;
    Open();
    Click(Hook().Overlay(0));
    EXPECT_EQ(Hook().OpenIndex(), -1);
    EXPECT_TRUE(IsWindowVisible(Hook().Overlay(0)));
}

TEST_F(wizard_lists, leave_the_text_if_nothing_is_selected) {
    Open();
    dialog->SetText(0, "before");
    Click(Hook().Overlay(0));
    Select(-1);
    EXPECT_EQ(dialog->Text(0), "before");
}

TEST_F(wizard_lists, open_and_close_by_their_own_notifications_alone) {
    Open();
    Notify(Hook().Overlay(0), BN_SETFOCUS);
    EXPECT_EQ(Hook().OpenIndex(), -1);
    Click(Hook().Overlay(0));
    SendMessageA(Hook().List(), CB_SETCURSEL, 1, 0);
    Notify(Hook().List(), CBN_SELCHANGE);
    EXPECT_EQ(Hook().OpenIndex(), 0);
    EXPECT_EQ(dialog->Text(0), "");
    Notify(dialog->box(0), CBN_CLOSEUP);
    EXPECT_EQ(Hook().OpenIndex(), 0);
    SendMessageA(host.automation.windows().main(), WM_COMMAND, MAKEWPARAM(0, CBN_CLOSEUP),
                 reinterpret_cast<LPARAM>(Hook().List()));
    EXPECT_EQ(Hook().OpenIndex(), 0);
}

TEST_F(wizard_lists, show_the_arguments_that_are_scrolled_to) {
    function.kinds = {ArgumentUi::button, ArgumentUi::list};
    Open();
    dialog->ScrollTo(1);
    Click(Hook().Overlay(0));
    Select(0);
    EXPECT_EQ(dialog->Text(0), "\"m\"");
    EXPECT_EQ(function.button.runs, 0);
}

TEST_F(wizard_lists, are_removed_with_the_overlays_when_arguments_are_scrolled) {
    Open();
    Click(Hook().Overlay(0));
    const HWND list = Hook().List();
    dialog->ScrollTo(5);
    EXPECT_FALSE(IsWindow(list));
    EXPECT_EQ(Hook().OpenIndex(), -1);
    EXPECT_EQ(Hook().List(), nullptr);
}

TEST_F(wizard_lists, stay_where_they_are_when_the_text_of_another_box_changes) {
    Open();
    Click(Hook().Overlay(0));
    const RECT before = PlaceOf(Hook().List());
    SetWindowPos(dialog->box(0), nullptr, 130, 24, 220, 22, SWP_NOZORDER);
    Notify(dialog->box(1), EN_CHANGE);
    Notify(dialog->box(0), EN_UPDATE);
    EXPECT_EQ(PlaceOf(Hook().List()).left, before.left);
}

TEST_F(wizard_lists, close_when_the_focus_leaves_them) {
    Open();
    Click(Hook().Overlay(0));
    SetFocus(dialog->box(2));
    EXPECT_EQ(Hook().OpenIndex(), -1);
    EXPECT_TRUE(IsWindowVisible(Hook().Overlay(0)));
    EXPECT_EQ(dialog->Text(0), "");
}

// ---- Buttons

TEST_F(wizard_lists, runs_the_dialog_of_a_button_with_the_text) {
    Open();
    dialog->SetText(1, "before");
    Click(Hook().Overlay(1));
    EXPECT_EQ(function.button.seen, "before");
    EXPECT_EQ(function.button.parent, dialog->window());
    EXPECT_FALSE(function.button.was_dialog_enabled);
    EXPECT_TRUE(IsWindowEnabled(dialog->window()));
    EXPECT_EQ(dialog->Text(1), "from the dialog");
    EXPECT_EQ(GetFocus(), dialog->box(1));
}

TEST_F(wizard_lists, leaves_the_text_if_the_dialog_of_a_button_did_not_change_it) {
    Open();
    function.button.changes = false;
    dialog->SetText(1, "before");
    Click(Hook().Overlay(1));
    EXPECT_EQ(dialog->Text(1), "before");
}

TEST_F(wizard_lists, gives_a_button_at_most_255_characters) {
    Open();
    function.button.changes = false;
    SetWindowTextA(dialog->box(1), std::string(300, 'x').c_str());
    Click(Hook().Overlay(1));
    EXPECT_EQ(function.button.seen, std::string(255, 'x'));
}

TEST_F(wizard_lists, restore_everything_if_the_dialog_of_a_button_throws) {
    function.button.throws = true;
    Open();
    dialog->SetText(1, "before");
    Click(Hook().Overlay(1));
    EXPECT_EQ(function.button.runs, 1);
    EXPECT_TRUE(IsWindowEnabled(dialog->window()));
    EXPECT_EQ(dialog->Text(1), "before");
}

TEST_F(wizard_lists, run_no_dialog_where_a_button_has_none) {
    function.hasParts = false;
    Open();
    dialog->SetText(1, "before");
    Click(Hook().Overlay(1));
    EXPECT_TRUE(IsWindowEnabled(dialog->window()));
    EXPECT_EQ(dialog->Text(1), "before");
}

} // namespace
} // namespace metrify::host
