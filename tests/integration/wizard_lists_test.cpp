// Lists and buttons beside the dialog's boxes, in use.

#include "tests/integration/wizard_fixture.h"

namespace metrify::host {
namespace {

using wizard_lists = WizardHookTest;

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

TEST_F(wizard_lists, shows_the_arrow_again_and_goes_to_the_box_when_the_list_closes) {
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

// ---- Buttons

TEST_F(wizard_lists, runs_the_dialog_of_a_button_with_the_text) {
    Open();
    dialog->SetText(1, "before");
    Click(Hook().Overlay(1));
    EXPECT_EQ(function.button.seen, "before");
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

} // namespace
} // namespace metrify::host
