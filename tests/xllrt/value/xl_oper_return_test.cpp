// Values returned to the host, and the release of their records.

#include "oper_fixture.h"
#include "xllrt/app/xll_exports.h"

namespace {

using namespace metrify;

class OperReturn : public OperTest {
  protected:
    // The records that hosts of the two families get.
    static std::string Returned12(CXlOper& value) { return Rendered(*value.ReturnValue12()); }
    static std::string Returned4(CXlOper& value) { return Rendered(*value.ReturnValue4()); }
};

TEST_F(OperReturn, returns_the_record_of_the_thread) {
    CXlOper value(2.5);
    XLOPER12* wide = value.ReturnValue12();
    EXPECT_EQ(wide, &ThisThreadState().return12);
    EXPECT_EQ(wide->xltype, 1u) << "unmarked, since there is nothing to release";
    EXPECT_EQ(wide->val.num, 2.5);
    EXPECT_EQ(value.ReturnValue4(), &ThisThreadState().return4);
}

TEST_F(OperReturn, an_owned_wide_text_moves) {
    CXlOper value;
    value.SetText("abc");
    const XCHAR* text = value.Record12()->val.str;
    const XLOPER12* record = value.ReturnValue12();
    EXPECT_EQ(record->val.str, text) << "moved, not copied";
    EXPECT_EQ(record->xltype, 0x4002u) << "marked for release by the host";
    EXPECT_EQ(value.State(), 64) << "the value releases nothing any longer";
}

TEST_F(OperReturn, an_owned_narrow_text_moves) {
    HostIsNarrow();
    CXlOper value;
    value.SetText("abc");
    const char* text = value.Record4()->val.str;
    const XLOPER* record = value.ReturnValue4();
    EXPECT_EQ(record->val.str, text);
    EXPECT_EQ(record->xltype, 0x4002u);
    EXPECT_EQ(value.State(), 4);
}

TEST_F(OperReturn, an_owned_array_moves) {
    CXlOper value;
    const CXlOper fill(1.0);
    value.MakeArray(1, 2, &fill);
    const XLOPER12* cells = value.Record12()->val.array.lparray;
    const XLOPER12* record = value.ReturnValue12();
    EXPECT_EQ(record->xltype, 0x4040u);
    EXPECT_EQ(record->val.array.lparray, cells);
    EXPECT_EQ(Rendered(*record), "{1,1}");
}

TEST_F(OperReturn, a_returned_text_outlives_its_value) {
    const XLOPER12* record = nullptr;
    {
        CXlOper value;
        value.SetText("abc");
        record = value.ReturnValue12();
    }
    EXPECT_EQ(TextOf(*record), u"abc");
}

TEST_F(OperReturn, the_next_one_replaces_a_text_that_was_never_released) {
    CXlOper first;
    first.SetText("abc");
    const XLOPER12* record = first.ReturnValue12();
    CXlOper second(2.5);
    EXPECT_EQ(second.ReturnValue12(), record);
    EXPECT_EQ(record->xltype, 1u);
    EXPECT_EQ(record->val.num, 2.5);
}

TEST_F(OperReturn, a_wrapped_text_is_returned_unchanged) {
    XCHAR text[] = u"\3abc";
    const auto source = TextRecord<XLOPER12>(text);
    CXlOper value = CXlOper::Wrap12(&source);
    const XLOPER12* record = value.ReturnValue12();
    EXPECT_EQ(record->val.str, text);
    EXPECT_EQ(record->xltype, 2u) << "unmarked, since it is not owned";
}

TEST_F(OperReturn, of_the_marks_of_a_wrapped_record_only_that_of_ownership_is_removed) {
    XLOPER12 source{};
    source.xltype = 0x5001;
    source.val.num = 2.5;
    CXlOper value = CXlOper::Wrap12(&source);
    EXPECT_EQ(value.ReturnValue12()->xltype, 0x1001u)
        << "otherwise memory of the host would be released here";
}

TEST_F(OperReturn, what_the_host_filled_is_copied) {
    const ReleaseNotes host;
    XCHAR text[] = u"\3abc";
    CXlOper value;
    value.TakeFromHost(TextRecord<XLOPER12>(text));
    const XLOPER12* record = value.ReturnValue12();
    EXPECT_EQ(record->xltype, 0x4002u);
    EXPECT_NE(record->val.str, text);
    EXPECT_EQ(TextOf(*record), u"abc");
    EXPECT_EQ(value.State(), 96) << "it is still returned to the host";
}

TEST_F(OperReturn, what_a_narrow_host_filled_is_copied) {
    const ReleaseNotes host;
    char text[] = "\3abc";
    CXlOper value;
    value.TakeFromHost(TextRecord<XLOPER>(text));
    const XLOPER* record = value.ReturnValue4();
    EXPECT_EQ(record->xltype, 0x4002u);
    EXPECT_NE(record->val.str, text);
    EXPECT_EQ(TextOf(*record), "abc");
    EXPECT_EQ(value.State(), 6);
}

TEST_F(OperReturn, no_value_is_the_error_value) {
    CXlOper value;
    const XLOPER12* wide = value.ReturnValue12();
    EXPECT_EQ(wide->xltype, 16u);
    EXPECT_EQ(wide->val.err, 15);
    const XLOPER* narrow = value.ReturnValue4();
    EXPECT_EQ(narrow->xltype, 16u);
    EXPECT_EQ(narrow->val.err, 15);
}

TEST_F(OperReturn, what_was_built_before_the_host_was_known_is_converted) {
    ConnectHost({});
    CXlOper value;
    value.SetText("abc");
    ASSERT_EQ(value.State(), 5);
    HostIsWide();
    const XLOPER12* record = value.ReturnValue12();
    EXPECT_EQ(record->xltype, 0x4002u);
    EXPECT_EQ(TextOf(*record), u"abc");
    EXPECT_EQ(value.State(), 5) << "the value keeps its record";
}

TEST_F(OperReturn, a_wide_value_is_converted_for_a_narrow_host) {
    CXlOper value;
    value.SetText(u"abc");
    const XLOPER* record = value.ReturnValue4();
    EXPECT_EQ(record->xltype, 0x4002u);
    EXPECT_EQ(TextOf(*record), "abc");
    EXPECT_EQ(value.State(), 80);
}

TEST_F(OperReturn, a_text_of_255_units_reaches_a_narrow_host) {
    CXlOper value;
    value.SetText(std::u16string(255, u'x'));
    EXPECT_EQ(TextOf(*value.ReturnValue4()), std::string(255, 'x'));
}

TEST_F(OperReturn, a_text_of_256_units_is_the_error_value_for_a_narrow_host) {
    CXlOper value;
    value.SetText(std::u16string(256, u'x'));
    EXPECT_EQ(Returned4(value), "#15");
}

TEST_F(OperReturn, a_text_of_300_characters_is_the_error_value_for_a_narrow_host) {
    CXlOper value;
    value.SetText(std::u16string(300, u'x'));
    const XLOPER* record = value.ReturnValue4();
    EXPECT_EQ(record->xltype, 16u) << "not truncated, and nothing to release";
    EXPECT_EQ(record->val.err, 15);
}

TEST_F(OperReturn, an_array_too_high_is_the_error_value_for_a_narrow_host) {
    CXlOper value;
    value.MakeArray(65537, 1);
    EXPECT_EQ(Returned4(value), "#15");
}

TEST_F(OperReturn, a_value_that_cannot_be_converted_is_the_error_value) {
    const auto narrow = PlainRecord<XLOPER>(xltypeFlow);
    const auto wide = PlainRecord<XLOPER12>(xltypeFlow);
    CXlOper from_narrow = CXlOper::Wrap4(&narrow);
    CXlOper from_wide = CXlOper::Wrap12(&wide);
    EXPECT_EQ(Returned12(from_narrow), "#15");
    EXPECT_EQ(Returned4(from_wide), "#15");
}

TEST_F(OperReturn, a_narrow_minus_1_is_minus_1_for_a_wide_host) {
    HostIsNarrow();
    CXlOper value;
    value.SetInt(-1);
    EXPECT_EQ(Returned12(value), "-1i");
}

TEST_F(OperReturn, of_two_records_that_of_the_hosts_family_is_returned) {
    CXlOper value(2.5);
    const auto narrow = NumberRecord<XLOPER>(1.5);
    value.CopyFrom(CXlOper::Wrap4(&narrow));
    EXPECT_EQ(Returned12(value), "2.5");
    EXPECT_EQ(Returned4(value), "1.5");
}

// ---- Released by the host

TEST_F(OperReturn, a_released_text_leaves_an_empty_record) {
    CXlOper value;
    value.SetText("abc");
    XLOPER12* record = value.ReturnValue12();
    xlAutoFree12(record);
    EXPECT_EQ(record->xltype, 0u);
    EXPECT_EQ(record->val.str, nullptr);
}

TEST_F(OperReturn, a_record_may_be_released_twice) {
    CXlOper value;
    value.SetText("abc");
    XLOPER12* record = value.ReturnValue12();
    xlAutoFree12(record);
    xlAutoFree12(record);
    EXPECT_EQ(record->xltype, 0u);
}

TEST_F(OperReturn, a_narrow_record_may_be_released_twice) {
    HostIsNarrow();
    CXlOper value;
    value.SetText("abc");
    XLOPER* record = value.ReturnValue4();
    xlAutoFree(record);
    EXPECT_EQ(record->xltype, 0u);
    xlAutoFree(record);
    EXPECT_EQ(record->xltype, 0u);
}

TEST_F(OperReturn, a_released_array_with_texts_leaves_an_empty_record) {
    CXlOper value;
    CXlOper fill;
    fill.SetText("abc");
    value.MakeArray(2, 2, &fill);
    XLOPER12* record = value.ReturnValue12();
    xlAutoFree12(record);
    EXPECT_EQ(record->xltype, 0u);
    EXPECT_EQ(record->val.array.lparray, nullptr);
}

TEST_F(OperReturn, a_released_reference_leaves_an_empty_record) {
    XLMREF12 list{1, {{0, 0, 0, 0}}};
    const auto source = ReferenceRecord<XLOPER12>(list);
    const CXlOper wrapped = CXlOper::Wrap12(&source);
    CXlOper value(wrapped);
    XLOPER12* record = value.ReturnValue12();
    ASSERT_EQ(record->xltype, 0x4008u);
    xlAutoFree12(record);
    EXPECT_EQ(record->xltype, 0u);
    EXPECT_EQ(record->val.mref.lpmref, nullptr);
}

TEST_F(OperReturn, the_release_of_a_null_record_is_ignored) {
    CXlOper value(2.5);
    const XLOPER12* record = value.ReturnValue12();
    xlAutoFree12(nullptr);
    xlAutoFree(nullptr);
    EXPECT_EQ(Rendered(*record), "2.5");
}

TEST_F(OperReturn, a_record_without_memory_is_unchanged_by_its_release) {
    CXlOper value(2.5);
    XLOPER12* record = value.ReturnValue12();
    xlAutoFree12(record);
    EXPECT_EQ(Rendered(*record), "2.5");
}

TEST_F(OperReturn, after_a_text_was_released_the_next_one_finds_nothing_to_release) {
    CXlOper first;
    first.SetText("abc");
    xlAutoFree12(first.ReturnValue12());
    CXlOper second;
    second.SetText("def");
    EXPECT_EQ(Returned12(second), "\"def\"");
}

} // namespace
