#include "tests/xllrt/app/add_in_fixture.h"
#include "xllrt/gate/host_alert.h"
#include "xllrt/gate/host_letters.h"
#include "xllrt/gate/host_paths.h"
#include "xllrt/gate/host_window.h"
#include "xllrt/gate/workspace_items.h"

#include <gmock/gmock.h>

namespace {

using namespace metrify;
using testing::ElementsAre;

class HostServices : public AddInTest {
  protected:
    HostServices() { SetHostVersion(14); }

    static std::string Item(std::int32_t index) {
        CXlOper item;
        item.SetText("before");
        const std::string success = GetWorkspaceItem(index, item) ? "true " : "false ";
        return success + Rendered(*item.Record12());
    }

    static std::string Letters() {
        ReadHostLetters();
        const HostLetters& letters = SharedLetters();
        EXPECT_EQ(static_cast<char>(letters.wideRow), letters.narrowRow);
        EXPECT_EQ(static_cast<char>(letters.wideColumn), letters.narrowColumn);
        return {letters.narrowRow, letters.narrowColumn};
    }

    RecordingApp app{host};
};

// ---- Items of the workspace

TEST_F(HostServices, items_are_counted_from_0) {
    EXPECT_EQ(Item(0), "true 1");
    EXPECT_EQ(Item(4), "true \";\"");
    EXPECT_THAT(host.TakeCalls(), ElementsAre("12 xlfGetWorkspace(37)", "12 xlfGetWorkspace(37)"));
}

TEST_F(HostServices, there_is_no_item_minus_1_and_none_after_the_last) {
    host.international = {1.0, 2.0, 3.0};
    EXPECT_EQ(Item(-1), "false \"before\"");
    EXPECT_EQ(Item(3), "false \"before\"");
    EXPECT_EQ(Item(2), "true 3");
}

TEST_F(HostServices, a_host_that_refuses_has_no_items) {
    host.On(xlfGetWorkspace, Reply::Refused());
    EXPECT_EQ(Item(0), "false \"before\"");
}

TEST_F(HostServices, an_answer_that_is_not_a_vector_has_no_items) {
    for (const Reply& answer : {Reply{0, Reply::Error{xlerrNA}}, Reply{0, Reply::FullReference{}},
                                Reply{0, Reply::SingleReference{}}}) {
        host.On(xlfGetWorkspace, answer);
        EXPECT_EQ(Item(0), "false \"before\"");
    }
}

TEST_F(HostServices, a_scalar_answer_is_a_vector_of_one) {
    host.On(xlfGetWorkspace, Reply{0, 49.0});
    EXPECT_EQ(Item(0), "true 49");
    EXPECT_EQ(Item(1), "false \"before\"");
}

// ---- Letters

TEST_F(HostServices, the_shared_letters_are_the_hosts) {
    EXPECT_EQ(Letters(), "ZS");
}

TEST_F(HostServices, an_empty_row_letter_leaves_both_at_their_defaults) {
    host.international[5] = u"";
    EXPECT_EQ(Letters(), "RC");
}

TEST_F(HostServices, an_empty_column_letter_leaves_the_default_c) {
    host.international[6] = u"";
    EXPECT_EQ(Letters(), "ZC");
}

TEST_F(HostServices, a_letter_that_is_not_a_text_is_ignored) {
    host.international[6] = 7.0;
    EXPECT_EQ(Letters(), "ZC");
}

TEST_F(HostServices, a_later_failure_restores_r_and_c) {
    EXPECT_EQ(Letters(), "ZS");
    host.On(xlfGetWorkspace, Reply::Refused());
    EXPECT_EQ(Letters(), "RC");
}

TEST_F(HostServices, the_narrow_letter_is_the_wide_one_in_the_code_page) {
    host.international[5] = u"Ä";
    ReadHostLetters();
    EXPECT_EQ(SharedLetters().wideRow, u'Ä');
    EXPECT_EQ(SharedLetters().narrowRow, '\xC4');
}

TEST_F(HostServices, a_letter_beyond_latin_1_is_converted_with_the_code_page_too) {
    host.international[5] = u"€";
    host.international[6] = u"Š";
    ReadHostLetters();
    EXPECT_EQ(SharedLetters().wideRow, u'€');
    EXPECT_EQ(SharedLetters().wideColumn, u'Š');
    EXPECT_EQ(SharedLetters().narrowRow, '\x80');
    EXPECT_EQ(SharedLetters().narrowColumn, '\x8A');
}

TEST_F(HostServices, a_letter_is_the_first_character_of_its_item) {
    host.international[5] = u"Line";
    host.international[6] = u"Spalte";
    EXPECT_EQ(Letters(), "LS");
}

TEST_F(HostServices, separators_are_bytes_of_the_code_page) {
    host.international[4] = u"€";
    host.international[5] = u"Ä";
    host.international[6] = u"Š";
    EXPECT_TRUE(ReadHostSeparators(app.listSeparator, app.rowLetter, app.columnLetter));
    EXPECT_EQ(app.listSeparator, '\x80');
    EXPECT_EQ(app.rowLetter, '\xC4');
    EXPECT_EQ(app.columnLetter, '\x8A');
}

TEST_F(HostServices, the_separators_are_first_bytes) {
    host.international[4] = u";;";
    EXPECT_TRUE(ReadHostSeparators(app.listSeparator, app.rowLetter, app.columnLetter));
    EXPECT_EQ(app.listSeparator, ';');
    EXPECT_EQ(app.rowLetter, 'Z');
    EXPECT_EQ(app.columnLetter, 'S');
}

TEST_F(HostServices, one_missing_separator_leaves_all_unchanged) {
    app.listSeparator = 'a';
    app.rowLetter = 'b';
    app.columnLetter = 'c';
    const Reply::Items whole = host.international;
    for (const std::size_t missing : {4U, 5U, 6U}) {
        host.international = whole;
        host.international[missing] = u"";
        EXPECT_FALSE(ReadHostSeparators(app.listSeparator, app.rowLetter, app.columnLetter));
        host.international[missing] = 1.0;
        EXPECT_FALSE(ReadHostSeparators(app.listSeparator, app.rowLetter, app.columnLetter));
        EXPECT_EQ(app.listSeparator, 'a');
        EXPECT_EQ(app.rowLetter, 'b');
        EXPECT_EQ(app.columnLetter, 'c');
    }
}

// ---- Alerts

TEST_F(HostServices, an_alert_is_shown_with_its_kind_as_a_number) {
    EXPECT_TRUE(Alert("Look out", 3));
    EXPECT_THAT(host.TakeCalls(), ElementsAre("12 xlcAlert(\"Look out\", 3)"));
}

TEST_F(HostServices, the_answer_is_the_hosts_boolean) {
    host.On(xlcAlert, Reply{0, false});
    EXPECT_FALSE(Alert("Sure?", 1));
    host.On(xlcAlert, Reply{0, 1.0});
    EXPECT_TRUE(Alert(u"Sure?", 1));
    host.On(xlcAlert, Reply{0, Reply::Error{xlerrNA}});
    EXPECT_FALSE(Alert("Sure?", 1));
}

TEST_F(HostServices, an_alert_that_is_not_shown_is_answered_with_false) {
    host.On(xlcAlert, Reply::Refused());
    EXPECT_FALSE(Alert("Sure?", 1));
}

// ---- The window

TEST_F(HostServices, the_hosts_window_is_found_by_class_and_low_half_of_its_handle) {
    host.On(xlGetHwnd, Reply{0, std::int32_t{-2}});
    EXPECT_EQ(GetHostWindow(), &host);
    EXPECT_THAT(host.TakeCalls(), ElementsAre("4 xlGetHwnd()", "find window XLMAIN 65534"));
}

TEST_F(HostServices, without_an_answer_there_is_no_window) {
    host.On(xlGetHwnd, Reply::Refused());
    EXPECT_EQ(GetHostWindow(), nullptr);
    EXPECT_THAT(host.TakeCalls(), ElementsAre("4 xlGetHwnd()"));
}

// ---- Paths

TEST_F(HostServices, the_host_path_is_the_hosts_name_or_empty) {
    EXPECT_EQ(GetHostPathText(), "C:\\Addins\\Metrify.xll");
    host.On(xlGetName, Reply::Refused());
    EXPECT_EQ(GetHostPathText(), "");
}

TEST_F(HostServices, the_file_name_is_after_the_last_backslash) {
    EXPECT_EQ(GetAddInFileName("C:\\Addins\\Metrify.xll"), "Metrify.xll");
    EXPECT_EQ(GetAddInFileName("Metrify.xll"), "Metrify.xll");
    EXPECT_EQ(GetAddInFileName("C:\\Addins\\"), "");
}

TEST_F(HostServices, the_base_name_ends_at_the_first_dot) {
    EXPECT_EQ(GetAddInBaseName("C:\\Addins\\Metrify.1.xll"), "Metrify");
    EXPECT_EQ(GetAddInBaseName("C:\\Addins.d\\Metrify"), "Metrify");
}

TEST_F(HostServices, the_directory_is_before_the_last_backslash) {
    EXPECT_EQ(GetAddInDirectory("C:\\Addins\\Metrify.xll"), "C:\\Addins");
}

} // namespace
