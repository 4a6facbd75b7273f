#include "tests/host/calling.h"

#include <chrono>
#include <gtest/gtest.h>

namespace metrify::host {
namespace {

Answer CoerceTo(Host& host, const CellValue& value, int type) {
    return Ask12(host, xlCoerce, {value, static_cast<double>(type)});
}

const CellValue value_error = CellError{xlerrValue};

TEST(xlAbort, is_whether_escape_is_pressed) {
    Host host(15);
    EXPECT_EQ(Ask12(host, xlAbort), Success(false));
    host.state().escape.PressAfter(std::chrono::hours(1));
    EXPECT_EQ(Ask12(host, xlAbort), Success(false));
    host.state().escape.Press();
    EXPECT_EQ(Ask12(host, xlAbort), Success(true));
    EXPECT_EQ(Ask4(host, xlAbort), Success(true));
}

TEST(xlAbort, clears_the_break_for_false_only) {
    Host host(15);
    host.state().escape.Press();
    for (const std::vector<CellValue>& retained : {std::vector<CellValue>{}, std::vector<CellValue>{true},
                                                   std::vector<CellValue>{MissingArgument{}}}) {
        EXPECT_EQ(Ask12(host, xlAbort, retained), Success(true));
        EXPECT_EQ(Ask12(host, xlAbort), Success(true));
    }
    EXPECT_EQ(Ask12(host, xlAbort, {false}), Success(true));
    EXPECT_EQ(Ask12(host, xlAbort), Success(false));
}

TEST(xlAbort, may_not_clear_the_break_on_a_calculation_thread) {
    Host host(15);
    host.state().escape.Press();
    const ContextScope scope(CallContext::calculation_thread);
    EXPECT_EQ(Ask12(host, xlAbort, {false}), Refusal(kRetNotThreadSafe));
    EXPECT_EQ(Ask12(host, xlAbort, {true}), Success(true));
    EXPECT_EQ(Ask12(host, xlAbort), Success(true));
}

TEST(xlAbort, of_another_value_is_an_error) {
    Host host(15);
    EXPECT_EQ(Ask12(host, xlAbort, {u"no boolean"}), Success(CellError{xlerrValue}));
}

TEST(xlCoerce, a_text_becomes_its_number) {
    Host host(15);
    EXPECT_EQ(CoerceTo(host, u" 12.5 ", xltypeNum), Success(12.5));
}

TEST(xlCoerce, a_version_text_becomes_its_integer_part) {
    Host host(15);
    EXPECT_EQ(CoerceTo(host, u"15.0", xltypeInt), Success(15));
}

TEST(xlCoerce, a_text_that_is_no_number_becomes_an_error) {
    Host host(15);
    EXPECT_EQ(CoerceTo(host, u"abc", xltypeNum), Success(value_error));
}

TEST(xlCoerce, an_error_is_not_converted) {
    Host host(15);
    EXPECT_EQ(CoerceTo(host, CellError{xlerrDiv0}, xltypeNum), Success(CellError{xlerrDiv0}));
}

TEST(xlCoerce, a_value_of_a_wanted_type_is_not_converted) {
    Host host(15);
    EXPECT_EQ(CoerceTo(host, true, xltypeNum | xltypeBool), Success(true));
}

TEST(xlCoerce, numbers_texts_and_booleans_are_converted_into_each_other) {
    Host host(15);
    EXPECT_EQ(CoerceTo(host, 2.0, xltypeBool), Success(true));
    EXPECT_EQ(CoerceTo(host, 0.0, xltypeBool), Success(false));
    EXPECT_EQ(CoerceTo(host, true, xltypeNum), Success(1.0));
    EXPECT_EQ(CoerceTo(host, true, xltypeStr), Success(u"TRUE"));
    EXPECT_EQ(CoerceTo(host, 0.1, xltypeStr), Success(u"0.1"));
    EXPECT_EQ(CoerceTo(host, u"false", xltypeBool), Success(false));
    EXPECT_EQ(CoerceTo(host, u"no", xltypeBool), Success(value_error));
}

TEST(xlCoerce, an_empty_cell_is_0_and_the_empty_text) {
    Host host(15);
    EXPECT_EQ(CoerceTo(host, CellValue(), xltypeNum), Success(0.0));
    EXPECT_EQ(CoerceTo(host, CellValue(), xltypeStr), Success(u""));
}

TEST(xlCoerce, an_integer_of_the_narrow_family_has_16_bits) {
    Host host(15);
    EXPECT_EQ(Ask4(host, xlCoerce, {u"32767", double{xltypeInt}}), Success(32767));
    EXPECT_EQ(Ask4(host, xlCoerce, {u"32768", double{xltypeInt}}), Success(value_error));
    EXPECT_EQ(CoerceTo(host, u"32768", xltypeInt), Success(32768));
}

TEST(xlCoerce, a_reference_gives_the_value_of_its_cell) {
    Host host(15);
    host.Enter(u"B2", u"3.5");
    EXPECT_EQ(CoerceTo(host, CellOf(host, 1, 1), xltypeNum), Success(3.5));
    EXPECT_EQ(Ask12(host, xlCoerce, {CellOf(host, 1, 1)}), Success(3.5));
}

TEST(xlCoerce, a_rectangle_gives_an_array) {
    Host host(15);
    host.Enter(u"A1", u"1");
    host.Enter(u"B1", u"two");
    const Reference row{host.state().books.Active()->id(), {{0, 0, 0, 1}}, true};
    EXPECT_EQ(CoerceTo(host, row, xltypeMulti), Success(RowOf({1.0, u"two"})));
}

TEST(xlCoerce, a_single_value_becomes_an_array_of_one_cell) {
    Host host(15);
    EXPECT_EQ(CoerceTo(host, 3.5, xltypeMulti), Success(RowOf({3.5})));
}

TEST(xlCoerce, a_simple_reference_becomes_a_full_one_with_its_sheet) {
    Host host(15);
    const Reference simple = CellOf(host, 4, 2);
    const Reference full{simple.sheet, simple.areas, false};
    EXPECT_EQ(CoerceTo(host, simple, xltypeRef), Success(full));
    EXPECT_EQ(CoerceTo(host, full, xltypeSRef), Success(simple));
}

TEST(xlCoerce, several_areas_are_not_a_simple_reference) {
    Host host(15);
    const Reference two{host.state().books.Active()->id(), {{0, 0, 0, 0}, {2, 2, 2, 2}}, false};
    EXPECT_EQ(CoerceTo(host, two, xltypeSRef), Success(CellError{xlerrRef}));
}

TEST(xlCoerce, a_number_is_not_converted_to_a_reference) {
    Host host(15);
    EXPECT_EQ(CoerceTo(host, 1.0, xltypeRef), Success(value_error));
}

TEST(xlGetName, is_the_path_of_the_add_in) {
    Host host(15);
    Adopt(host, {});
    EXPECT_EQ(Ask12(host, xlGetName), Success(u"C:\\AddIns\\Test.xll"));
}

TEST(xlGetName, fails_without_an_add_in) {
    Host host(15);
    EXPECT_EQ(Ask12(host, xlGetName), Refusal(xlretFailed));
}

TEST(xlGetHwnd, the_narrow_family_gets_the_low_half_of_the_handle) {
    Host host(15);
    host.state().window_handle = 0x00128ABC;
    EXPECT_EQ(Ask4(host, xlGetHwnd), Success(static_cast<std::int16_t>(0x8ABC)));
    EXPECT_EQ(Ask12(host, xlGetHwnd), Success(0x00128ABC));
}

TEST(xlfInfo, the_release_is_the_version_as_text) {
    for (const auto& [version, text] :
         {std::pair{4, u"4.0"}, std::pair{11, u"11.0"}, std::pair{16, u"16.0"}}) {
        Host host(version);
        EXPECT_EQ(Ask4(host, xlfInfo, {u"Release"}), Success(text));
    }
}

TEST(xlfInfo, an_unknown_item_is_an_error) {
    Host host(15);
    EXPECT_EQ(Ask12(host, xlfInfo, {u"nothing"}), Success(value_error));
}

TEST(xlfGetWorkspace, item_2_is_the_version_as_text) {
    Host host(4);
    EXPECT_EQ(Ask4(host, xlfGetWorkspace, {2}), Success(u"4.0"));
}

TEST(xlfGetWorkspace, item_37_is_a_row_of_45_settings) {
    Host host(15);
    const Answer answer = Ask12(host, xlfGetWorkspace, {37.0});
    const auto* settings = answer.value.As<CellArray>();
    ASSERT_TRUE(settings);
    EXPECT_EQ(settings->rows, 1);
    EXPECT_EQ(settings->columns, 45);
    EXPECT_EQ(settings->At(0, 0), CellValue(1.0));
    EXPECT_EQ(settings->At(0, 4), CellValue(u","));
    EXPECT_EQ(settings->At(0, 5), CellValue(u"R"));
    EXPECT_EQ(settings->At(0, 6), CellValue(u"C"));
}

TEST(xlfGetWorkspace, item_40_is_whether_the_screen_is_updated) {
    Host host(15);
    Ask12(host, xlcEcho, {false});
    EXPECT_EQ(Ask12(host, xlfGetWorkspace, {40.0}), Success(false));
}

TEST(xlfGetWorkspace, an_unknown_item_is_an_error) {
    Host host(15);
    EXPECT_EQ(Ask12(host, xlfGetWorkspace, {1000.0}), Success(value_error));
    EXPECT_EQ(Ask12(host, xlfGetWorkspace, {u"version"}), Success(value_error));
}

} // namespace
} // namespace metrify::host
