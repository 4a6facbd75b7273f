#include "tests/host/calling.h"

#include <gtest/gtest.h>

namespace metrify::host {
namespace {

CellArray MenuTable() {
    return ArrayOf({{u"&Metrify", u"", u"", u"Metrify add-in menu", u""},
                    {u"Metrify", u"Metrify_Macro", u"", u"Metrify Function", u""}});
}

const MenuItem& LastMenu(Host& host) {
    return host.state().menus.menus().back();
}

TEST(xlcAlert, is_recorded_and_answered_as_the_test_sets) {
    Host host(15);
    host.state().answers = {false, true};
    EXPECT_EQ(Ask12(host, xlcAlert, {u"Delete existing contents in cell?", 1.0}), Success(false));
    EXPECT_EQ(Ask12(host, xlcAlert, {u"Really?", 1.0}), Success(true));
    const std::vector<Alert> expected{{u"Delete existing contents in cell?", 1, false},
                                      {u"Really?", 1, true}};
    EXPECT_EQ(host.state().alerts, expected);
}

TEST(xlcAlert, without_a_set_answer_is_confirmed) {
    Host host(15);
    EXPECT_EQ(Ask12(host, xlcAlert, {u"Go on?", 1.0}), Success(true));
}

TEST(xlcAlert, a_message_can_only_be_confirmed) {
    Host host(15);
    host.state().answers = {false};
    EXPECT_EQ(Ask12(host, xlcAlert, {u"Done", 2.0}), Success(true));
    EXPECT_EQ(Ask12(host, xlcAlert, {u"Failed", 3.0}), Success(true));
    EXPECT_EQ(host.state().answers.size(), 1U);
}

TEST(xlcAlert, without_a_type_is_an_information) {
    Host host(15);
    Ask12(host, xlcAlert, {u"Done"});
    EXPECT_EQ(host.state().alerts.front().type, 2);
}

TEST(xlcAlert, an_unknown_type_fails) {
    Host host(15);
    EXPECT_EQ(Ask12(host, xlcAlert, {u"?", 4.0}), Refusal(xlretFailed));
    EXPECT_TRUE(host.state().alerts.empty());
}

TEST(xlcNew, opens_a_workbook_that_becomes_the_active_one) {
    Host host(15);
    EXPECT_EQ(Ask12(host, xlcNew), Success(true));
    EXPECT_EQ(host.state().books.count(), 2U);
    EXPECT_EQ(host.state().books.Active()->name(), u"Sheet2");
}

TEST(xlcClose, closes_the_active_workbook) {
    Host host(15);
    Ask12(host, xlcNew);
    EXPECT_EQ(Ask12(host, xlcClose), Success(true));
    EXPECT_EQ(host.state().books.Active()->name(), u"Sheet1");
}

TEST(xlcClose, fails_without_a_workbook) {
    Host host(15);
    Ask12(host, xlcClose);
    EXPECT_EQ(Ask12(host, xlcClose), Refusal(xlretFailed));
}

TEST(xlcEcho, switches_the_screen_off_and_on) {
    Host host(15);
    Ask12(host, xlcEcho, {false});
    EXPECT_FALSE(host.state().echo);
    Ask12(host, xlcEcho, {true});
    EXPECT_TRUE(host.state().echo);
    Ask12(host, xlcEcho);
    EXPECT_FALSE(host.state().echo);
}

TEST(xlcFunctionWizard, opens_on_the_formula_of_the_active_cell) {
    Host host(15);
    host.Enter(u"A1", u"=Metrify()");
    EXPECT_EQ(Ask12(host, xlcFunctionWizard), Success(true));
    EXPECT_EQ(host.state().wizard_openings, std::vector<std::u16string>{u"=Metrify()"});
}

TEST(xlcFunctionWizard, fails_without_an_active_cell) {
    Host host(15);
    host.state().books.SelectCell(std::nullopt);
    EXPECT_EQ(Ask12(host, xlcFunctionWizard), Refusal(xlretFailed));
}

TEST(xlfAddMenu, puts_a_menu_with_its_items_at_the_end) {
    Host host(15);
    const std::size_t before = host.state().menus.menus().size();
    EXPECT_EQ(Ask12(host, xlfAddMenu, {10, MenuTable()}), Success(static_cast<double>(before + 1)));
    EXPECT_EQ(LastMenu(host).name, u"&Metrify");
    EXPECT_EQ(LastMenu(host).status, u"Metrify add-in menu");
    ASSERT_EQ(LastMenu(host).items.size(), 1U);
    EXPECT_EQ(LastMenu(host).items.front().macro, u"Metrify_Macro");
}

TEST(xlfAddMenu, puts_a_menu_before_another_by_name_or_number) {
    Host host(15);
    EXPECT_EQ(Ask12(host, xlfAddMenu, {10, MenuTable(), u"help"}), Success(9.0));
    EXPECT_EQ(Ask12(host, xlfAddMenu, {10, MenuTable(), 2.0}), Success(2.0));
}

TEST(xlfAddMenu, fails_before_a_menu_that_does_not_exist) {
    Host host(15);
    const std::size_t before = host.state().menus.menus().size();
    EXPECT_EQ(Ask12(host, xlfAddMenu, {10, MenuTable(), u"Metrify"}), Refusal(xlretFailed));
    EXPECT_EQ(host.state().menus.menus().size(), before);
}

TEST(xlfAddMenu, fails_on_another_bar_and_without_a_table) {
    Host host(15);
    EXPECT_EQ(Ask12(host, xlfAddMenu, {11, MenuTable()}), Refusal(xlretFailed));
    EXPECT_EQ(Ask12(host, xlfAddMenu, {10, u"Metrify"}), Refusal(xlretFailed));
}

TEST(xlfAddMenu, with_a_parent_makes_a_submenu) {
    Host host(15);
    EXPECT_EQ(Ask12(host, xlfAddMenu, {10, MenuTable(), u"Tools", 0}), Success(1.0));
    EXPECT_EQ(Ask12(host, xlfAddCommand, {10, u"Tools", RowOf({u"More", u"More_Macro"}), u"Metrify", 0}),
              Success(2.0));
}

TEST(xlfAddCommand, adds_an_item_to_a_menu_named_without_its_ampersands) {
    Host host(15);
    Ask12(host, xlfAddMenu, {10, MenuTable()});
    EXPECT_EQ(Ask12(host, xlfAddCommand, {10, u"Metrify", RowOf({u"More", u"More_Macro"})}), Success(2.0));
    EXPECT_EQ(LastMenu(host).items.back().macro, u"More_Macro");
}

TEST(xlfAddCommand, puts_an_item_before_another) {
    Host host(15);
    Ask12(host, xlfAddMenu, {10, MenuTable()});
    EXPECT_EQ(Ask12(host, xlfAddCommand, {10, u"Metrify", RowOf({u"More", u"More_Macro"}), u"Metrify"}),
              Success(1.0));
}

TEST(xlfAddCommand, fails_on_a_menu_that_does_not_exist) {
    Host host(15);
    EXPECT_EQ(Ask12(host, xlfAddCommand, {10, u"Metrify", RowOf({u"More", u"More_Macro"})}),
              Refusal(xlretFailed));
}

TEST(xlfDeleteMenu, deletes_a_menu_once) {
    Host host(15);
    const std::size_t before = host.state().menus.menus().size();
    Ask12(host, xlfAddMenu, {10, MenuTable()});
    EXPECT_EQ(Ask12(host, xlfDeleteMenu, {10, u"Metrify"}), Success(true));
    EXPECT_EQ(host.state().menus.menus().size(), before);
    EXPECT_EQ(Ask12(host, xlfDeleteMenu, {10, u"Metrify"}), Refusal(xlretFailed));
}

TEST(xlfDeleteMenu, deletes_a_submenu) {
    Host host(15);
    Ask12(host, xlfAddMenu, {10, MenuTable(), u"Tools", 0});
    EXPECT_EQ(Ask12(host, xlfDeleteMenu, {10, u"Tools", u"Metrify"}), Success(true));
    EXPECT_EQ(Ask12(host, xlfDeleteMenu, {10, u"Tools", u"Metrify"}), Refusal(xlretFailed));
}

} // namespace
} // namespace metrify::host
