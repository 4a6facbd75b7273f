// The keys that open lists and dialogs, and the keys of an open list.

#include "tests/integration/wizard/wizard_fixture.h"

namespace metrify::host {
namespace {

using wizard_keys = WizardHookTest;

TEST_F(wizard_keys, opens_by_the_key_of_the_argument) {
    function.key = {.key = VK_F4, .modifier = 0, .content_mode = 2};
    OpenInFront();
    SetFocus(dialog->box(1));
    Press(VK_F5);
    EXPECT_EQ(function.button.seen, "");
    dialog->SetText(1, "5");
    Press(VK_F4);
    EXPECT_EQ(function.button.seen, "5");
}

TEST_F(wizard_keys, does_not_change_a_formula_that_the_content_mode_protects) {
    function.key = {.key = VK_F4, .modifier = 0, .content_mode = 2};
    OpenInFront();
    SetFocus(dialog->box(1));
    dialog->SetText(1, "A1*2");
    Press(VK_F4);
    EXPECT_EQ(function.button.seen, "");
    EXPECT_EQ(dialog->Text(1), "A1*2");
}

TEST_F(wizard_keys, asks_for_the_modifier_of_a_key) {
    function.key = {.key = VK_F4, .modifier = VK_SHIFT, .content_mode = 3};
    OpenInFront();
    SetFocus(dialog->box(1));
    dialog->SetText(1, "5");
    Press(VK_F4);
    EXPECT_EQ(function.button.seen, "");
    PressWith(VK_CONTROL, VK_F4);
    EXPECT_EQ(function.button.seen, "");
    PressWith(VK_SHIFT, VK_F4);
    EXPECT_EQ(function.button.seen, "5");
}

TEST_F(wizard_keys, moves_the_selection_by_the_arrows_and_takes_it_by_the_tab_key) {
    OpenInFront();
    Click(Hook().Overlay(0));
    ASSERT_EQ(GetFocus(), Hook().List());
    Press(VK_DOWN);
    EXPECT_EQ(SendMessageA(Hook().List(), CB_GETCURSEL, 0, 0), 0);
    Press(VK_DOWN);
    Press(VK_DOWN);
    Press(VK_UP);
    EXPECT_EQ(SendMessageA(Hook().List(), CB_GETCURSEL, 0, 0), 1);
    Press(VK_TAB);
    EXPECT_EQ(dialog->Text(0), "\"ft\"");
    EXPECT_EQ(Hook().OpenIndex(), -1);
    EXPECT_EQ(GetFocus(), dialog->box(1));
}

TEST_F(wizard_keys, moves_from_the_last_box_to_the_first_by_the_tab_key) {
    function.kinds = std::vector<ArgumentUi>(5, ArgumentUi::list);
    OpenInFront({.arguments = 3});
    Click(Hook().Overlay(2));
    Press(VK_TAB);
    EXPECT_EQ(GetFocus(), dialog->box(0));
}

TEST_F(wizard_keys, moves_to_the_previous_box_by_shift_and_the_tab_key) {
    function.kinds = std::vector<ArgumentUi>(5, ArgumentUi::list);
    OpenInFront({.arguments = 3});
    Click(Hook().Overlay(1));
    PressWith(VK_SHIFT, VK_TAB);
    EXPECT_EQ(GetFocus(), dialog->box(0));
    Click(Hook().Overlay(0));
    PressWith(VK_SHIFT, VK_TAB);
    EXPECT_EQ(GetFocus(), dialog->box(2));
}

TEST_F(wizard_keys, keep_the_selection_within_the_list) {
    OpenInFront();
    Click(Hook().Overlay(0));
    Press(VK_UP);
    EXPECT_EQ(Selection(), 0);
    Press(VK_UP);
    EXPECT_EQ(Selection(), 0);
    for (int i = 0; i < 5; ++i)
        Press(VK_DOWN);
    EXPECT_EQ(Selection(), 3);
}

TEST_F(wizard_keys, leave_the_text_if_nothing_was_selected_before_the_tab_key) {
    OpenInFront();
    dialog->SetText(0, "before");
    Click(Hook().Overlay(0));
    Press(VK_TAB);
    EXPECT_EQ(dialog->Text(0), "before");
    EXPECT_EQ(GetFocus(), dialog->box(1));
}

TEST_F(wizard_keys, that_open_are_swallowed_and_others_are_not) {
    function.key = {.key = 'A', .modifier = 0, .content_mode = 1};
    function.button.changes = false;
    OpenInFront();
    SetFocus(dialog->box(1));
    Press('A');
    EXPECT_EQ(dialog->Text(1), "");
    EXPECT_EQ(function.button.runs, 1);
    Press('B');
    EXPECT_EQ(dialog->Text(1), "b");
    Press('A'); // now the box is not empty
    EXPECT_EQ(dialog->Text(1), "ba");
    EXPECT_EQ(function.button.runs, 1);
}

TEST_F(wizard_keys, open_the_list_of_a_box) {
    function.key = {.key = VK_F4, .modifier = 0, .content_mode = 3};
    OpenInFront();
    SetFocus(dialog->box(0));
    Press(VK_F4);
    EXPECT_EQ(Hook().OpenIndex(), 0);
}

TEST_F(wizard_keys, need_no_modifier_if_theirs_is_none_of_the_three) {
    function.key = {.key = VK_F4, .modifier = 99, .content_mode = 3};
    OpenInFront();
    SetFocus(dialog->box(1));
    Press(VK_F4);
    EXPECT_EQ(function.button.runs, 1);
}

TEST_F(wizard_keys, move_the_focus_to_the_box_if_the_dialog_of_a_button_throws) {
    function.key = {.key = 'A', .modifier = 0, .content_mode = 3};
    function.button.throws = true;
    OpenInFront();
    SetFocus(dialog->box(1));
    Press('A');
    EXPECT_EQ(function.button.runs, 1);
    EXPECT_EQ(dialog->Text(1), "a");
}

TEST_F(wizard_keys, move_on_from_a_list_also_if_boxes_appeared_later) {
    OpenInFront({.arguments = 0});
    ShowWindow(dialog->box(0), SW_SHOWNA);
    function.kinds = {ArgumentUi::none, ArgumentUi::list};
    dialog->ScrollTo(1);
    ASSERT_EQ(Overlays(), (Standing{true, false, false, false, false}));
    Click(Hook().Overlay(0));
    Press(VK_TAB);
    EXPECT_EQ(Hook().OpenIndex(), -1);
    EXPECT_EQ(GetFocus(), dialog->box(0));
}

class wizard_modifier : public WizardHookTest, public testing::WithParamInterface<WORD> {};

TEST_P(wizard_modifier, is_asked_for) {
    function.key = {.key = VK_F7, .modifier = GetParam(), .content_mode = 3};
    OpenInFront();
    SetFocus(dialog->box(1));
    Press(VK_F7);
    EXPECT_EQ(function.button.runs, 0);
    PressWith(GetParam(), VK_F7);
    EXPECT_EQ(function.button.runs, 1);
}

INSTANTIATE_TEST_SUITE_P(all, wizard_modifier, testing::Values(WORD{16}, WORD{17}, WORD{18}));

TEST_F(wizard_keys, open_nothing_outside_of_the_boxes) {
    function.key = {.key = VK_F7, .modifier = 0, .content_mode = 3};
    OpenInFront();
    SetFocus(dialog->scroll_bar());
    Press(VK_F7);
    EXPECT_EQ(function.button.runs, 0);
}

TEST_F(wizard_keys, open_nothing_for_a_box_without_an_overlay) {
    function.key = {.key = VK_F7, .modifier = 0, .content_mode = 3};
    function.kinds = {ArgumentUi::none, ArgumentUi::none};
    OpenInFront();
    SetFocus(dialog->box(1));
    Press(VK_F7);
    EXPECT_EQ(function.button.runs, 0);
}

TEST_F(wizard_keys, are_those_of_the_argument_in_the_focused_box) {
    function.kinds = std::vector<ArgumentUi>(6, ArgumentUi::button);
    function.keys[3] = {.key = VK_F7, .modifier = 0, .content_mode = 3};
    OpenInFront();
    SetFocus(dialog->box(2));
    Press(VK_F7);
    EXPECT_EQ(function.button.runs, 0);
    SetFocus(dialog->box(3));
    Press(VK_F7);
    EXPECT_EQ(function.button.runs, 1);
    dialog->ScrollTo(1);
    SetFocus(dialog->box(3));
    Press(VK_F7);
    EXPECT_EQ(function.button.runs, 1);
    SetFocus(dialog->box(2));
    Press(VK_F7);
    EXPECT_EQ(function.button.runs, 2);
}

TEST_F(wizard_keys, require_the_focus_in_the_recorded_box) {
    function.kinds = std::vector<ArgumentUi>(5, ArgumentUi::button);
    function.key = {.key = VK_F7, .modifier = 0, .content_mode = 3};
    OpenInFront();
    SetFocus(dialog->box(1));
    SendMessageA(dialog->box(2), WM_SETFOCUS, 0, 0); // the focus stays
    ASSERT_EQ(GetFocus(), dialog->box(1));
    Press(VK_F7);
    EXPECT_EQ(function.button.runs, 0);
    SendMessageA(dialog->box(1), WM_SETFOCUS, 0, 0);
    Press(VK_F7);
    EXPECT_EQ(function.button.runs, 1);
}

TEST_F(wizard_keys, open_the_argument_that_is_scrolled_to) {
    function.key = {.key = VK_F7, .modifier = 0, .content_mode = 3};
    OpenInFront();
    dialog->ScrollTo(1);
    SetFocus(dialog->box(0));
    Press(VK_F7);
    EXPECT_EQ(function.button.runs, 1);
    EXPECT_EQ(dialog->Text(0), "from the dialog");
}

} // namespace
} // namespace metrify::host
