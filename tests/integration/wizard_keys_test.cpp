// The keys that open lists and buttons, and those of an open list.

#include "tests/integration/wizard_fixture.h"

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

TEST_F(wizard_keys, leaves_a_formula_alone_that_the_content_mode_protects) {
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

TEST_F(wizard_keys, moves_the_selection_by_the_arrows_and_takes_it_by_the_tabulator) {
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

TEST_F(wizard_keys, goes_from_the_last_box_to_the_first_by_the_tabulator) {
    function.kinds = std::vector<ArgumentUi>(5, ArgumentUi::list);
    OpenInFront({.arguments = 3});
    Click(Hook().Overlay(2));
    Press(VK_TAB);
    EXPECT_EQ(GetFocus(), dialog->box(0));
}

TEST_F(wizard_keys, goes_to_the_former_box_by_the_tabulator_with_shift) {
    function.kinds = std::vector<ArgumentUi>(5, ArgumentUi::list);
    OpenInFront({.arguments = 3});
    Click(Hook().Overlay(1));
    PressWith(VK_SHIFT, VK_TAB);
    EXPECT_EQ(GetFocus(), dialog->box(0));
    Click(Hook().Overlay(0));
    PressWith(VK_SHIFT, VK_TAB);
    EXPECT_EQ(GetFocus(), dialog->box(2));
}

} // namespace
} // namespace metrify::host
