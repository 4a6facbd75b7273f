// The host calls of each operation on a menu.

#include "addin/menu.h"
#include "tests/xllrt/app/add_in_fixture.h"
#include "tests/xllrt/text/fake_resources.h"

#include <gmock/gmock.h>

namespace metrify {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Functions 152 to add a menu, 153 to add a command, 158 to delete a menu.
class menu : public AddInTest {
  protected:
    menu() { SetHostVersion(14); }

    // A menu on the bar.
    menu_def& Standing() {
        menu_init(def, "&Tool", "Status");
        menu_add_to_bar(def, nullptr, "", 0);
        host.TakeCalls();
        return def;
    }

    menu_def def;
    menu_def parent;
};

const char* const kEmptyMenu = "{\"&Tool\",\"\",\"\",\"Status\",\"\"}";

// ---- Before the menu is on the bar

TEST_F(menu, init_sets_name_caption_and_status_text_without_calling_the_host) {
    menu_init(def, "&Tool", "Status");
    EXPECT_EQ(def.name, "&Tool");
    EXPECT_EQ(def.caption, "&Tool");
    EXPECT_EQ(def.status_text, "Status");
    EXPECT_FALSE(def.present);
    EXPECT_EQ(def.parent, nullptr);
    EXPECT_THAT(host.TakeCalls(), IsEmpty());
}

TEST_F(menu, items_are_added_when_the_menu_is_added_to_the_bar) {
    menu_init(def, "&Tool", "Status");
    menu_add_command(def, "&Item", "Macro", "Hint");
    ASSERT_EQ(def.items.size(), 1U);
    EXPECT_EQ(def.items[0].text, "&Item");
    EXPECT_EQ(def.items[0].macro, "Macro");
    EXPECT_EQ(def.items[0].status_text, "Hint");
    EXPECT_THAT(host.TakeCalls(), IsEmpty());
}

TEST_F(menu, texts_are_looked_up_in_the_users_language_and_the_name_and_macro_are_not) {
    FakeResources resources;
    resources.Add(101, kUsEnglish, u"&Werkzeug");
    resources.Add(102, kUsEnglish, u"Zustand");
    resources.Add(103, kUsEnglish, u"Eintrag");
    resources.Add(104, kUsEnglish, u"Hinweis");
    menu_init(def, "#101", "#102");
    EXPECT_EQ(def.name, "#101");
    EXPECT_EQ(def.caption, "&Werkzeug");
    EXPECT_EQ(def.status_text, "#102");
    menu_add_command(def, "#103", "#103", "#104");
    menu_add_to_bar(def, nullptr, "#103", 0);
    menu_add_command(def, "#103", "#103", "#104");
    EXPECT_THAT(host.TakeCalls(), ElementsAre("12 152(10i, {\"&Werkzeug\",\"\",\"\",\"Zustand\",\"\","
                                              "\"Eintrag\",\"#103\",\"\",\"Hinweis\",\"\"}, \"Eintrag\")",
                                              "12 153(10i, \"Werkzeug\", {\"Eintrag\",\"#103\"})"));
}

TEST_F(menu, init_resets_a_menu_that_is_on_the_bar) {
    menu_init(parent, "&File", "");
    menu_init(def, "&Tool", "Status");
    menu_add_command(def, "&Item", "Macro", "Hint");
    menu_add_to_bar(def, &parent, "", 0);
    host.TakeCalls();
    menu_init(def, "Other", "");
    EXPECT_EQ(def.caption, "Other");
    EXPECT_THAT(def.items, IsEmpty());
    EXPECT_FALSE(def.present);
    EXPECT_EQ(def.parent, nullptr);
    EXPECT_THAT(host.TakeCalls(), IsEmpty());
}

// ---- Adding to the bar

TEST_F(menu, the_table_has_a_row_of_five_for_the_menu_and_for_each_item) {
    menu_init(def, "&Tool", "Status");
    menu_add_command(def, "&Item", "Macro", "Hint");
    menu_add_command(def, "Other", "Macro2", "");
    EXPECT_TRUE(menu_add_to_bar(def, nullptr, "", 0));
    EXPECT_THAT(host.TakeCalls(), ElementsAre("12 152(10i, {\"&Tool\",\"\",\"\",\"Status\",\"\","
                                              "\"&Item\",\"Macro\",\"\",\"Hint\",\"\","
                                              "\"Other\",\"Macro2\",\"\",\"\",\"\"})"));
    EXPECT_TRUE(def.present);
}

TEST_F(menu, a_menu_without_items_has_one_row) {
    menu_init(def, "&Tool", "Status");
    EXPECT_TRUE(menu_add_to_bar(def, nullptr, "", 0));
    EXPECT_THAT(host.TakeCalls(), ElementsAre(std::string("12 152(10i, ") + kEmptyMenu + ")"));
}

TEST_F(menu, a_narrow_host_is_called_in_the_narrow_family) {
    SetHostVersion(11);
    menu_init(def, "&Tool", "Status");
    menu_add_to_bar(def, nullptr, "", 0);
    EXPECT_THAT(host.TakeCalls(), ElementsAre(std::string("4 152(10i, ") + kEmptyMenu + ")"));
}

TEST_F(menu, is_inserted_before_a_menu_given_by_its_text) {
    menu_init(def, "&Tool", "Status");
    EXPECT_TRUE(menu_add_to_bar(def, nullptr, "&Help", 3));
    EXPECT_THAT(host.TakeCalls(), ElementsAre(std::string("12 152(10i, ") + kEmptyMenu + ", \"&Help\")"));
}

TEST_F(menu, is_inserted_at_a_position_from_1) {
    menu_init(def, "&Tool", "Status");
    EXPECT_TRUE(menu_add_to_bar(def, nullptr, "", 1));
    EXPECT_THAT(host.TakeCalls(), ElementsAre(std::string("12 152(10i, ") + kEmptyMenu + ", 1i)"));
}

TEST_F(menu, a_position_below_1_is_not_passed) {
    menu_init(def, "&Tool", "Status");
    menu_add_to_bar(def, nullptr, "", -4);
    EXPECT_THAT(host.TakeCalls(), ElementsAre(std::string("12 152(10i, ") + kEmptyMenu + ")"));
}

TEST_F(menu, is_added_at_the_end_if_the_menu_before_it_is_refused) {
    host.On(xlfAddMenu, [](const std::vector<std::string>& arguments) {
        return arguments.size() == 3 ? Reply::Refused() : Reply{0, 10.0};
    });
    menu_init(def, "&Tool", "Status");
    EXPECT_TRUE(menu_add_to_bar(def, nullptr, "Tool", 0));
    EXPECT_THAT(host.TakeCalls(), ElementsAre(std::string("12 152(10i, ") + kEmptyMenu + ", \"Tool\")",
                                              std::string("12 152(10i, ") + kEmptyMenu + ")"));
    EXPECT_TRUE(def.present);
}

TEST_F(menu, is_added_at_the_end_if_the_position_is_refused) {
    host.On(xlfAddMenu, [](const std::vector<std::string>& arguments) {
        return arguments.size() == 3 ? Reply::Refused() : Reply{0, 10.0};
    });
    menu_init(def, "&Tool", "Status");
    EXPECT_TRUE(menu_add_to_bar(def, nullptr, "", 7));
    EXPECT_THAT(host.TakeCalls(), ElementsAre(std::string("12 152(10i, ") + kEmptyMenu + ", 7i)",
                                              std::string("12 152(10i, ") + kEmptyMenu + ")"));
    EXPECT_TRUE(def.present);
}

TEST_F(menu, is_not_present_if_every_attempt_is_refused) {
    host.On(xlfAddMenu, Reply::Refused());
    menu_init(def, "&Tool", "Status");
    EXPECT_FALSE(menu_add_to_bar(def, nullptr, "Tool", 0));
    EXPECT_FALSE(def.present);
    EXPECT_FALSE(menu_add_to_bar(def, nullptr, "", 0));
    EXPECT_FALSE(def.present);
}

// ---- Submenus

TEST_F(menu, a_submenu_is_added_to_its_parent_named_without_ampersands) {
    menu_init(parent, "&File && more", "");
    menu_init(def, "&Tool", "Status");
    EXPECT_TRUE(menu_add_to_bar(def, &parent, "&Save", 0));
    EXPECT_THAT(host.TakeCalls(),
                ElementsAre(std::string("12 152(10i, ") + kEmptyMenu + ", \"File  more\", \"&Save\")"));
    EXPECT_EQ(def.parent, &parent);
    EXPECT_TRUE(def.present);
}

TEST_F(menu, a_submenu_without_a_position_is_inserted_at_30) {
    menu_init(parent, "&File", "");
    menu_init(def, "&Tool", "Status");
    menu_add_to_bar(def, &parent, "", 0);
    menu_add_to_bar(def, &parent, "", 2);
    EXPECT_THAT(host.TakeCalls(), ElementsAre(std::string("12 152(10i, ") + kEmptyMenu + ", \"File\", 30i)",
                                              std::string("12 152(10i, ") + kEmptyMenu + ", \"File\", 2i)"));
}

TEST_F(menu, a_submenu_that_is_refused_is_not_tried_again_and_keeps_its_parent) {
    host.On(xlfAddMenu, Reply::Refused());
    menu_init(parent, "&File", "");
    menu_init(def, "&Tool", "Status");
    EXPECT_FALSE(menu_add_to_bar(def, &parent, "&Save", 0));
    EXPECT_EQ(host.TakeCalls().size(), 1U);
    EXPECT_FALSE(def.present);
    EXPECT_EQ(def.parent, &parent);
}

TEST_F(menu, a_submenu_contains_no_submenu) {
    menu_def grandparent;
    menu_init(grandparent, "&File", "");
    menu_init(parent, "&Send", "");
    parent.parent = &grandparent;
    menu_init(def, "&Tool", "Status");
    EXPECT_FALSE(menu_add_to_bar(def, &parent, "", 0));
    EXPECT_THAT(host.TakeCalls(), IsEmpty());
    EXPECT_EQ(def.parent, nullptr);
}

// ---- Commands for a menu that is on the bar

TEST_F(menu, a_command_is_added_at_once_to_a_menu_on_the_bar) {
    menu_add_command(Standing(), "&Item", "Macro", "Hint");
    EXPECT_THAT(host.TakeCalls(), ElementsAre("12 153(10i, \"Tool\", {\"&Item\",\"Macro\"})"));
    EXPECT_THAT(def.items, IsEmpty());
}

TEST_F(menu, a_command_of_a_submenu_names_the_parent_the_menu_and_0) {
    menu_init(parent, "&File", "");
    menu_init(def, "&Tool", "Status");
    menu_add_to_bar(def, &parent, "", 0);
    host.TakeCalls();
    menu_add_command(def, "&Item", "Macro", "Hint");
    EXPECT_THAT(host.TakeCalls(), ElementsAre("12 153(10i, \"File\", {\"&Item\",\"Macro\"}, \"Tool\", 0i)"));
}

TEST_F(menu, a_refused_command_is_not_reported) {
    host.On(xlfAddCommand, Reply::Refused());
    menu_add_command(Standing(), "&Item", "Macro", "Hint");
    EXPECT_TRUE(def.present);
}

// ---- Removing from the bar

TEST_F(menu, is_removed_by_its_caption_without_ampersands_and_stays_marked_as_present) {
    EXPECT_TRUE(menu_remove(Standing()));
    EXPECT_THAT(host.TakeCalls(), ElementsAre("12 158(10i, \"Tool\")"));
    EXPECT_TRUE(def.present);
}

TEST_F(menu, a_submenu_is_removed_from_its_parent) {
    menu_init(parent, "&File", "");
    menu_init(def, "&Tool", "Status");
    menu_add_to_bar(def, &parent, "", 0);
    host.TakeCalls();
    EXPECT_TRUE(menu_remove(def));
    EXPECT_THAT(host.TakeCalls(), ElementsAre("12 158(10i, \"File\", \"Tool\")"));
}

TEST_F(menu, that_the_host_does_not_remove_gives_false) {
    host.On(xlfDeleteMenu, Reply::Refused());
    EXPECT_FALSE(menu_remove(Standing()));
}

} // namespace
} // namespace metrify
