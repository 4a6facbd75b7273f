// The menus of the host, without a host.

#include "host/state/menu_bar.h"

#include <gtest/gtest.h>

namespace metrify::host {
namespace {

const CellValue missing = MissingArgument{};

std::vector<std::u16string> NamesOf(const std::vector<MenuItem>& items) {
    std::vector<std::u16string> names;
    for (const MenuItem& item : items)
        names.push_back(item.name);
    return names;
}

using Names = std::vector<std::u16string>;

// A menu with three items.
CellArray Colours() {
    return ArrayOf({{u"&Colours"}, {u"&Red"}, {u"G&reen"}, {u"&Blue"}});
}

TEST(menu_bar, has_the_menus_of_a_worksheet_at_first) {
    EXPECT_EQ(NamesOf(MenuBar().menus()), (Names{u"&File", u"&Edit", u"&View", u"&Insert", u"F&ormat",
                                                 u"&Tools", u"&Data", u"&Window", u"&Help"}));
}

TEST(menu_bar, a_row_is_name_macro_shortcut_status_and_help) {
    MenuBar bar;
    ASSERT_TRUE(bar.AddMenu(
        ArrayOf({{u"Menu", u"", u"", u"", u""}, {u"Item", u"Macro", u"k", u"Says", u"h!1"}}), missing));
    const MenuItem& item = bar.menus().back().items.front();
    EXPECT_EQ(item.name, u"Item");
    EXPECT_EQ(item.macro, u"Macro");
    EXPECT_EQ(item.shortcut, u"k");
    EXPECT_EQ(item.status, u"Says");
    EXPECT_EQ(item.help, u"h!1");
    EXPECT_TRUE(item.items.empty());
}

TEST(menu_bar, columns_that_a_table_does_not_have_are_empty) {
    MenuBar bar;
    ASSERT_TRUE(bar.AddMenu(ArrayOf({{u"Menu", u"Macro"}}), missing));
    EXPECT_EQ(bar.menus().back().macro, u"Macro");
    EXPECT_EQ(bar.menus().back().shortcut, u"");
    EXPECT_EQ(bar.menus().back().help, u"");
}

TEST(menu_bar, cells_that_are_not_converted_to_text_are_empty) {
    MenuBar bar;
    ASSERT_TRUE(bar.AddMenu(ArrayOf({{u"Menu", CellError{15}}}), missing));
    EXPECT_EQ(bar.menus().back().macro, u"");
}

TEST(menu_bar, a_table_has_one_to_five_columns_and_a_row) {
    MenuBar bar;
    EXPECT_TRUE(bar.AddMenu(RowOf({u"a", u"", u"", u"", u""}), missing));
    EXPECT_FALSE(bar.AddMenu(RowOf({u"a", u"", u"", u"", u"", u""}), missing));
    EXPECT_FALSE(bar.AddMenu(CellArray{}, missing));
    EXPECT_FALSE(bar.AddMenu(CellArray{1, 0, {}}, missing));
    EXPECT_FALSE(bar.AddMenu(CellArray{0, 1, {}}, missing));
    EXPECT_FALSE(bar.AddMenu(u"a", missing));
    EXPECT_EQ(bar.menus().size(), 10U);
}

TEST(menu_bar, a_number_from_1_selects_the_menu_to_insert_before) {
    MenuBar bar;
    EXPECT_EQ(bar.AddMenu(RowOf({u"first"}), 1.0), 1);
    EXPECT_EQ(bar.AddMenu(RowOf({u"before last"}), 10.0), 10);
    EXPECT_EQ(bar.menus().front().name, u"first");
    EXPECT_EQ(bar.menus()[9].name, u"before last");
    EXPECT_EQ(bar.menus().back().name, u"&Help");
}

TEST(menu_bar, a_number_beyond_the_last_means_the_end) {
    MenuBar bar;
    EXPECT_EQ(bar.AddMenu(RowOf({u"a"}), 10.0), 10);
    EXPECT_EQ(bar.AddMenu(RowOf({u"b"}), 0.0), 11);
    EXPECT_EQ(bar.AddMenu(RowOf({u"c"}), missing), 12);
}

TEST(menu_bar, names_are_found_without_case_and_ampersands) {
    MenuBar bar;
    EXPECT_EQ(bar.AddMenu(RowOf({u"a"}), u"FORMAT"), 5);
    EXPECT_EQ(bar.AddMenu(RowOf({u"b"}), u"f&ile"), 1);
    EXPECT_FALSE(bar.AddMenu(RowOf({u"c"}), u"Fil"));
}

TEST(menu_bar, a_submenu_is_added_to_its_menu) {
    MenuBar bar;
    EXPECT_EQ(bar.AddSubmenu(Colours(), u"Tools", missing), 1);
    EXPECT_EQ(bar.AddSubmenu(RowOf({u"Shapes"}), 6.0, u"colours"), 1);
    EXPECT_EQ(NamesOf(bar.menus()[5].items), (Names{u"Shapes", u"&Colours"}));
    EXPECT_EQ(NamesOf(bar.menus()[5].items[1].items), (Names{u"&Red", u"G&reen", u"&Blue"}));
    EXPECT_FALSE(bar.AddSubmenu(Colours(), u"Colours", missing));
    EXPECT_EQ(bar.menus().size(), 9U);
}

TEST(menu_bar, commands_are_inserted_before_the_named_item) {
    MenuBar bar;
    bar.AddMenu(Colours(), missing);
    EXPECT_EQ(bar.AddCommands(u"Colours", ArrayOf({{u"Black"}, {u"White"}}), missing, u"green"), 2);
    EXPECT_EQ(bar.AddCommands(10.0, RowOf({u"Grey"}), missing, missing), 6);
    EXPECT_EQ(NamesOf(bar.menus().back().items),
              (Names{u"&Red", u"Black", u"White", u"G&reen", u"&Blue", u"Grey"}));
}

TEST(menu_bar, commands_are_added_to_a_submenu) {
    MenuBar bar;
    bar.AddSubmenu(Colours(), u"Tools", missing);
    EXPECT_EQ(bar.AddCommands(u"Tools", RowOf({u"Black"}), u"Colours", 1.0), 1);
    EXPECT_EQ(NamesOf(bar.menus()[5].items[0].items), (Names{u"Black", u"&Red", u"G&reen", u"&Blue"}));
}

TEST(menu_bar, commands_without_their_menu_position_or_table_are_refused) {
    MenuBar bar;
    bar.AddMenu(Colours(), missing);
    EXPECT_FALSE(bar.AddCommands(u"Shapes", RowOf({u"a"}), missing, missing));
    EXPECT_FALSE(bar.AddCommands(u"Colours", u"a", missing, missing));
    EXPECT_FALSE(bar.AddCommands(u"Colours", RowOf({u"a"}), u"Shapes", missing));
    EXPECT_FALSE(bar.AddCommands(u"Colours", RowOf({u"a"}), missing, u"yellow"));
    EXPECT_EQ(bar.menus().back().items.size(), 3U);
}

TEST(menu_bar, a_menu_or_an_item_is_deleted) {
    MenuBar bar;
    bar.AddMenu(Colours(), missing);
    EXPECT_TRUE(bar.Delete(u"colours", u"RED"));
    EXPECT_EQ(NamesOf(bar.menus().back().items), (Names{u"G&reen", u"&Blue"}));
    EXPECT_TRUE(bar.Delete(u"colours", 2.0));
    EXPECT_EQ(NamesOf(bar.menus().back().items), (Names{u"G&reen"}));
    EXPECT_FALSE(bar.Delete(u"colours", u"red"));
    EXPECT_TRUE(bar.Delete(1.0, missing));
    EXPECT_EQ(bar.menus().front().name, u"&Edit");
    EXPECT_FALSE(bar.Delete(u"File", missing));
    EXPECT_FALSE(bar.Delete(u"File", u"Open"));
}

} // namespace
} // namespace metrify::host
