// Values that are set to a part of themselves: the old content is released after the new one was copied.

#include "oper_fixture.h"
#include "tests/allocations.h"
#include "xllrt/value/return_record.h"

#include <array>
#include <functional>

namespace {

using namespace metrify;

class OperSelfReference : public OperTest {
  protected:
    OperSelfReference() { ThisThreadState(); }

    // An array of one row: "abc", 2.5.
    static void MakeRow(CXlOper& array) {
        array.MakeArray(1, 2);
        array.Cell(0, 0)->SetText("abc");
        array.Cell(0, 1)->SetNumber(2.5);
    }

    // Returns an array, wraps and returns what was returned, and the same with its first cell.
    template <class Return, class Wrap, class Release>
    static void ReturnAgain(Return return_value, Wrap wrap, Release release) {
        const std::ptrdiff_t before = test::live_blocks();
        CXlOper value;
        MakeRow(value);
        CXlOper whole = wrap(return_value(value));
        auto* record = return_value(whole);
        EXPECT_EQ(record->xltype, 0x4040u);
        EXPECT_EQ(Rendered(*record), "{\"abc\",2.5}");
        CXlOper part = wrap(record->val.array.lparray);
        record = return_value(part);
        EXPECT_EQ(record->xltype, 0x4002u);
        EXPECT_EQ(Rendered(*record), "\"abc\"");
        release(record);
        EXPECT_EQ(test::live_blocks(), before);
    }
};

TEST_F(OperSelfReference, an_array_may_be_assigned_one_of_its_cells) {
    const std::ptrdiff_t before = test::live_blocks();
    {
        CXlOper array;
        MakeRow(array);
        array = *array.Cell(0, 0);
        EXPECT_EQ(array.State(), 80);
        EXPECT_EQ(Rendered(*array.Record12()), "\"abc\"");
        MakeRow(array);
        array = *array.Cell(0, 1);
        EXPECT_EQ(Rendered(*array.Record12()), "2.5");
    }
    EXPECT_EQ(test::live_blocks(), before);
}

TEST_F(OperSelfReference, a_narrow_array_may_be_assigned_one_of_its_cells) {
    HostIsNarrow();
    CXlOper array;
    MakeRow(array);
    array = *array.Cell(0, 0);
    EXPECT_EQ(array.State(), 5);
    EXPECT_EQ(Rendered(*array.Record4()), "\"abc\"");
}

TEST_F(OperSelfReference, an_array_may_be_copied_from_one_of_its_cells) {
    const std::ptrdiff_t before = test::live_blocks();
    {
        CXlOper array;
        MakeRow(array);
        array.CopyFrom(*array.Cell(0, 0));
        EXPECT_EQ(array.State(), 80);
        EXPECT_EQ(Rendered(*array.Record12()), "\"abc\"");
    }
    EXPECT_EQ(test::live_blocks(), before);
}

TEST_F(OperSelfReference, a_cell_may_be_assigned_the_array_that_it_is_in) {
    const std::ptrdiff_t before = test::live_blocks();
    {
        CXlOper array;
        MakeRow(array);
        *array.Cell(0, 1) = array;
        EXPECT_EQ(Rendered(*array.Record12()), "{\"abc\",{\"abc\",2.5}}");
    }
    EXPECT_EQ(test::live_blocks(), before);
}

TEST_F(OperSelfReference, a_cell_may_be_assigned_itself_and_another_cell) {
    const std::ptrdiff_t before = test::live_blocks();
    {
        CXlOper array;
        MakeRow(array);
        *array.Cell(0, 0) = *array.Cell(0, 0);
        *array.Cell(0, 1) = *array.Cell(0, 0);
        EXPECT_EQ(Rendered(*array.Record12()), "{\"abc\",\"abc\"}");
    }
    EXPECT_EQ(test::live_blocks(), before);
}

TEST_F(OperSelfReference, a_value_may_be_assigned_a_wrapper_of_its_own_record) {
    CXlOper value;
    value.SetText("abc");
    const CXlOper wrapped = CXlOper::Wrap12(value.Record12());
    value = wrapped;
    EXPECT_EQ(value.State(), 80);
    EXPECT_EQ(Rendered(*value.Record12()), "\"abc\"");
}

TEST_F(OperSelfReference, what_the_host_filled_may_be_assigned_one_of_its_cells) {
    const ReleaseNotes host;
    XCHAR text[] = u"\3abc";
    std::array cells{TextRecord<XLOPER12>(text)};
    CXlOper array;
    array.TakeFromHost(ArrayRecord(cells.data(), 1, 1));
    array = *array.Cell(0, 0);
    EXPECT_EQ(ReleaseNotes::lines, std::vector<std::string>{"12 xlFree {\"abc\"}"});
    EXPECT_EQ(array.State(), 80);
    EXPECT_EQ(Rendered(*array.Record12()), "\"abc\"");
    EXPECT_NE(array.Record12()->val.str, text);
}

TEST_F(OperSelfReference, an_array_may_be_made_of_copies_of_one_of_its_cells) {
    const std::ptrdiff_t before = test::live_blocks();
    {
        CXlOper array;
        MakeRow(array);
        EXPECT_TRUE(array.MakeArray(1, 3, &*array.Cell(0, 0)));
        EXPECT_EQ(Rendered(*array.Record12()), "{\"abc\",\"abc\",\"abc\"}");
    }
    EXPECT_EQ(test::live_blocks(), before);
}

TEST_F(OperSelfReference, a_scalar_may_become_an_array_of_itself) {
    CXlOper value;
    value.SetText("abc");
    EXPECT_TRUE(value.MakeArray(1, 2, &value));
    EXPECT_EQ(Rendered(*value.Record12()), "{\"abc\",\"abc\"}");
}

TEST_F(OperSelfReference, an_array_does_not_become_an_array_of_itself) {
    CXlOper array;
    MakeRow(array);
    EXPECT_EQ(MessageOf<CXlIllegalArgumentException>([&] { array.MakeArray(1, 2, &array); }),
              expected_texts[41]);
}

TEST_F(OperSelfReference, a_narrow_array_may_be_made_of_copies_of_one_of_its_cells) {
    HostIsNarrow();
    const std::ptrdiff_t before = test::live_blocks();
    {
        CXlOper array;
        MakeRow(array);
        EXPECT_TRUE(array.MakeArray(1, 3, &*array.Cell(0, 0)));
        EXPECT_EQ(Rendered(*array.Record4()), "{\"abc\",\"abc\",\"abc\"}");
    }
    EXPECT_EQ(test::live_blocks(), before);
}

TEST_F(OperSelfReference, an_array_may_be_filled_with_one_of_its_cells) {
    const std::ptrdiff_t before = test::live_blocks();
    {
        CXlOper array;
        MakeRow(array);
        array.Fill(&*array.Cell(0, 0));
        EXPECT_EQ(Rendered(*array.Record12()), "{\"abc\",\"abc\"}");
    }
    EXPECT_EQ(test::live_blocks(), before);
}

TEST_F(OperSelfReference, a_text_may_be_set_to_a_part_of_itself) {
    CXlOper value;
    value.SetText(u"abcdef");
    value.SetText(TextOf(*value.Record12()).substr(2, 3));
    EXPECT_EQ(Rendered(*value.Record12()), "\"cde\"");
    HostIsNarrow();
    value.SetText("abcdef");
    value.SetText(TextOf(*value.Record4()).substr(2, 3));
    EXPECT_EQ(Rendered(*value.Record4()), "\"cde\"");
}

TEST_F(OperSelfReference, an_array_may_be_set_to_the_text_of_one_of_its_cells) {
    CXlOper array;
    MakeRow(array);
    array.SetText(TextOf(*array.Cell(0, 0)->Record12()));
    EXPECT_EQ(Rendered(*array.Record12()), "\"abc\"");
}

// ---- Views of scalars

TEST_F(OperSelfReference, a_set_through_the_view_of_a_scalar_sets_the_scalar_itself) {
    const std::ptrdiff_t before = test::live_blocks();
    {
        CXlOper value(2.5);
        value.Cell(0, 0)->SetText("abc");
        EXPECT_EQ(value.State(), 80);
        EXPECT_EQ(Rendered(*value.Record12()), "\"abc\"");
        value.VectorCell(0)->SetNumber(1.5);
        EXPECT_EQ(value.State(), 64);
        EXPECT_EQ(Rendered(*value.Record12()), "1.5");
    }
    EXPECT_EQ(test::live_blocks(), before);
}

TEST_F(OperSelfReference, a_set_through_the_view_of_a_wrapped_scalar_does_not_release_memory_of_the_host) {
    XCHAR text[] = u"\3abc";
    const auto record = TextRecord<XLOPER12>(text);
    CXlOper value = CXlOper::Wrap12(&record);
    value.Cell(0, 0)->SetNumber(1.5);
    EXPECT_EQ(Rendered(*value.Record12()), "1.5");
    EXPECT_EQ(TextOf(record), u"abc");
}

TEST_F(OperSelfReference, a_set_through_the_view_of_a_scalar_of_the_host_returns_it_to_the_host) {
    const ReleaseNotes host;
    XCHAR text[] = u"\3abc";
    CXlOper value;
    value.TakeFromHost(TextRecord<XLOPER12>(text));
    value.Cell(0, 0)->SetNumber(1.5);
    EXPECT_EQ(ReleaseNotes::lines, std::vector<std::string>{"12 xlFree \"abc\""});
    EXPECT_EQ(value.State(), 64);
}

TEST_F(OperSelfReference, a_scalar_may_be_assigned_its_own_view) {
    CXlOper value;
    value.SetText("abc");
    value = *value.Cell(0, 0);
    value.CopyFrom(*value.Cell(0, 0));
    EXPECT_EQ(value.State(), 80);
    EXPECT_EQ(Rendered(*value.Record12()), "\"abc\"");
}

TEST_F(OperSelfReference, a_cell_is_its_own_cell_as_a_part_of_its_array) {
    CXlOper array;
    MakeRow(array);
    CXlCellView outer = array.Cell(0, 0);
    CXlCellView inner = outer->Cell(0, 0);
    EXPECT_EQ(inner->Record12(), array.Record12()->val.array.lparray);
    EXPECT_EQ(inner->State(), 80);
    EXPECT_NE(&*inner, &*outer) << "it does not depend on the view that it was made from";
}

// ---- A second return

TEST_F(OperSelfReference, a_value_whose_memory_was_returned_is_then_the_error_value) {
    CXlOper value;
    value.SetText("abc");
    AutoFree12(value.ReturnValue12());
    EXPECT_EQ(value.State(), 64);
    EXPECT_EQ(value.ToText(), "") << "nor is it read";
    EXPECT_EQ(Rendered(*value.ReturnValue12()), "#15");
    EXPECT_EQ(Rendered(*value.ReturnValue4()), "#15") << "nor converted";
    HostIsNarrow();
    value.MakeArray(1, 1);
    AutoFree4(value.ReturnValue4());
    EXPECT_EQ(value.State(), 4);
    EXPECT_EQ(Rendered(*value.ReturnValue4()), "#15");
}

TEST_F(OperSelfReference, a_second_return_before_the_release_of_the_first_releases_it_once) {
    const std::ptrdiff_t before = test::live_blocks();
    CXlOper value;
    value.SetText("abc");
    value.ReturnValue12();
    EXPECT_EQ(Rendered(*value.ReturnValue12()), "#15");
    EXPECT_EQ(test::live_blocks(), before);
}

TEST_F(OperSelfReference, a_value_without_memory_can_be_returned_again) {
    CXlOper number(2.5);
    number.ReturnValue12();
    EXPECT_EQ(Rendered(*number.ReturnValue12()), "2.5");
    XCHAR text[] = u"\3abc";
    const auto record = TextRecord<XLOPER12>(text);
    CXlOper wrapped = CXlOper::Wrap12(&record);
    wrapped.ReturnValue12();
    EXPECT_EQ(wrapped.ReturnValue12()->val.str, text);
    const ReleaseNotes host;
    CXlOper filled;
    filled.TakeFromHost(record);
    filled.ReturnValue12();
    EXPECT_EQ(Rendered(*filled.ReturnValue12()), "\"abc\"");
}

TEST_F(OperSelfReference, a_cell_that_is_returned_leaves_the_error_value_in_its_array) {
    const std::ptrdiff_t before = test::live_blocks();
    {
        CXlOper array;
        MakeRow(array);
        XLOPER12* record = array.Cell(0, 0)->ReturnValue12();
        EXPECT_EQ(TextOf(*record), u"abc");
        AutoFree12(record);
        EXPECT_EQ(Rendered(*array.Record12()), "{#15,2.5}");
    }
    EXPECT_EQ(test::live_blocks(), before);
}

TEST_F(OperSelfReference, what_was_returned_may_be_wrapped_and_returned) {
    ReturnAgain(std::mem_fn(&CXlOper::ReturnValue12), CXlOper::Wrap12, AutoFree12);
}

TEST_F(OperSelfReference, what_was_returned_to_a_narrow_host_may_be_wrapped_and_returned) {
    HostIsNarrow();
    ReturnAgain(std::mem_fn(&CXlOper::ReturnValue4), CXlOper::Wrap4, AutoFree4);
}

} // namespace
