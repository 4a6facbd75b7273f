// Values: how they are built, and who owns the memory that they point at.

#include "oper_fixture.h"

#include <gmock/gmock.h>

namespace {

using namespace metrify;
using testing::ElementsAre;
using testing::IsEmpty;

class Oper : public OperTest {};

// ---- Construction

TEST_F(Oper, starts_without_value) {
    const CXlOper value;
    EXPECT_EQ(value.State(), 0);
    ASSERT_NE(value.Record4(), nullptr);
    ASSERT_NE(value.Record12(), nullptr);
    EXPECT_EQ(value.Record4()->xltype, 0u);
    EXPECT_EQ(value.Record12()->xltype, 0u);
    EXPECT_EQ(value.Record4()->val.num, 0.0);
    EXPECT_EQ(value.Record12()->val.num, 0.0);
}

TEST_F(Oper, a_number_is_wide_for_a_wide_host) {
    const CXlOper value(2.5);
    EXPECT_EQ(value.State(), 64);
    EXPECT_EQ(value.Record12()->xltype, 1u);
    EXPECT_EQ(value.Record12()->val.num, 2.5);
    EXPECT_EQ(value.Record4()->xltype, 0u);
}

TEST_F(Oper, a_number_is_narrow_for_a_narrow_host) {
    HostIsNarrow();
    const CXlOper value(2.5);
    EXPECT_EQ(value.State(), 4);
    EXPECT_EQ(value.Record4()->xltype, 1u);
    EXPECT_EQ(value.Record4()->val.num, 2.5);
    EXPECT_EQ(value.Record12()->xltype, 0u);
}

TEST_F(Oper, a_boolean_is_wide_for_a_wide_host) {
    const CXlOper yes(true);
    const CXlOper no(false);
    EXPECT_EQ(yes.State(), 64);
    EXPECT_EQ(yes.Record12()->xltype, 4u);
    EXPECT_EQ(yes.Record12()->val.xbool, 1);
    EXPECT_EQ(no.Record12()->xltype, 4u);
    EXPECT_EQ(no.Record12()->val.xbool, 0);
}

TEST_F(Oper, a_boolean_is_narrow_for_a_narrow_host) {
    HostIsNarrow();
    const CXlOper value(true);
    EXPECT_EQ(value.State(), 4);
    EXPECT_EQ(value.Record4()->xltype, 4u);
    EXPECT_EQ(value.Record4()->val.xbool, 1);
}

TEST_F(Oper, version_12_is_the_first_wide_one) {
    SetHostVersion(12);
    EXPECT_EQ(CXlOper(1.0).State(), 64);
    SetHostVersion(11);
    EXPECT_EQ(CXlOper(1.0).State(), 4);
}

TEST_F(Oper, is_narrow_if_built_before_the_host_is_known) {
    ConnectHost({});
    EXPECT_EQ(CXlOper(2.5).State(), 4);
}

// ---- Wrapping

TEST_F(Oper, a_wrapped_wide_record_is_copied_bitwise_and_not_owned) {
    XCHAR text[] = u"\3abc";
    const auto record = TextRecord<XLOPER12>(text);
    const CXlOper value = CXlOper::Wrap12(&record);
    EXPECT_EQ(value.State(), 64);
    EXPECT_EQ(value.Record12()->xltype, 2u);
    EXPECT_EQ(value.Record12()->val.str, text);
}

TEST_F(Oper, a_wrapped_narrow_record_is_copied_bitwise_and_not_owned) {
    char text[] = "\3abc";
    const auto record = TextRecord<XLOPER>(text);
    const CXlOper value = CXlOper::Wrap4(&record);
    EXPECT_EQ(value.State(), 4) << "for any host";
    EXPECT_EQ(value.Record4()->xltype, 2u);
    EXPECT_EQ(value.Record4()->val.str, text);
}

TEST_F(Oper, a_null_pointer_wrapped_is_no_value) {
    EXPECT_EQ(CXlOper::Wrap12(nullptr).State(), 0);
    EXPECT_EQ(CXlOper::Wrap4(nullptr).State(), 0);
}

// ---- Setters

TEST_F(Oper, setters_make_the_wide_record_valid_for_a_wide_host) {
    CXlOper value;
    value.SetBool(1);
    EXPECT_EQ(value.State(), 64);
    EXPECT_EQ(Rendered(*value.Record12()), "TRUE");
    value.SetNumber(3.5);
    EXPECT_EQ(value.State(), 64);
    EXPECT_EQ(Rendered(*value.Record12()), "3.5");
    value.SetInt(-70000);
    EXPECT_EQ(value.State(), 64);
    EXPECT_EQ(Rendered(*value.Record12()), "-70000i");
    value.SetError(xlerrNA);
    EXPECT_EQ(value.State(), 64);
    EXPECT_EQ(Rendered(*value.Record12()), "#42");
    value.SetMissing();
    EXPECT_EQ(value.State(), 64);
    EXPECT_EQ(value.Record12()->xltype, 128u);
}

TEST_F(Oper, setters_make_the_narrow_record_valid_for_a_narrow_host) {
    HostIsNarrow();
    CXlOper value;
    value.SetBool(1);
    EXPECT_EQ(value.State(), 4);
    EXPECT_EQ(Rendered(*value.Record4()), "TRUE");
    value.SetNumber(3.5);
    EXPECT_EQ(value.State(), 4);
    EXPECT_EQ(Rendered(*value.Record4()), "3.5");
    value.SetInt(-7);
    EXPECT_EQ(value.State(), 4);
    EXPECT_EQ(Rendered(*value.Record4()), "-7i");
    value.SetError(xlerrNA);
    EXPECT_EQ(value.State(), 4);
    EXPECT_EQ(Rendered(*value.Record4()), "#42");
    value.SetMissing();
    EXPECT_EQ(value.State(), 4);
    EXPECT_EQ(value.Record4()->xltype, 128u);
}

TEST_F(Oper, a_narrow_integer_keeps_the_low_16_bits) {
    HostIsNarrow();
    CXlOper value;
    value.SetInt(65536 + 5);
    EXPECT_EQ(value.Record4()->val.w, 5);
}

TEST_F(Oper, a_setter_empties_the_other_record) {
    HostIsNarrow();
    CXlOper value(2.5);
    HostIsWide();
    value.SetNumber(3.5, false);
    EXPECT_EQ(value.State(), 64);
    EXPECT_EQ(value.Record4()->xltype, 0u);
    EXPECT_EQ(value.Record4()->val.num, 0.0);
}

TEST_F(Oper, a_setter_that_frees_first_releases_the_old_content) {
    const ReleaseNotes host;
    XCHAR text[] = u"\3abc";
    CXlOper value;
    value.TakeFromHost(TextRecord<XLOPER12>(text));
    value.SetNumber(3.5, true);
    EXPECT_THAT(ReleaseNotes::lines, ElementsAre("12 xlFree \"abc\""));
    EXPECT_EQ(value.State(), 64);
}

TEST_F(Oper, a_setter_that_does_not_free_overwrites_the_old_content) {
    const ReleaseNotes host;
    XCHAR text[] = u"\3abc";
    CXlOper value;
    value.TakeFromHost(TextRecord<XLOPER12>(text));
    value.SetNumber(3.5, false);
    EXPECT_THAT(ReleaseNotes::lines, IsEmpty());
    EXPECT_EQ(value.State(), 64);
}

// ---- Texts

TEST_F(Oper, a_text_is_owned) {
    CXlOper value;
    value.SetText("abc");
    EXPECT_EQ(value.State(), 80);
    EXPECT_EQ(value.Record12()->xltype, 2u);
    HostIsNarrow();
    value.SetText("abc");
    EXPECT_EQ(value.State(), 5);
    EXPECT_EQ(value.Record4()->xltype, 2u);
}

TEST_F(Oper, a_text_begins_with_its_length) {
    CXlOper value;
    value.SetText(u"abc");
    EXPECT_EQ(value.Record12()->val.str[0], 3);
    EXPECT_EQ(value.Record12()->val.str[1], u'a');
    HostIsNarrow();
    value.SetText("abc");
    EXPECT_EQ(value.Record4()->val.str[0], 3);
    EXPECT_EQ(value.Record4()->val.str[1], 'a');
}

TEST_F(Oper, a_narrow_text_is_cut_at_255_bytes_in_a_narrow_record) {
    HostIsNarrow();
    CXlOper value;
    value.SetText(std::string(255, 'x') + "y");
    EXPECT_EQ(TextOf(*value.Record4()), std::string(255, 'x'));
}

TEST_F(Oper, a_wide_text_is_cut_at_255_units_in_a_narrow_record) {
    HostIsNarrow();
    CXlOper value;
    value.SetText(std::u16string(255, u'x') + u"y");
    EXPECT_EQ(TextOf(*value.Record4()), std::string(255, 'x'));
}

TEST_F(Oper, a_wide_text_is_converted_to_the_code_page_in_a_narrow_record) {
    HostIsNarrow();
    CXlOper value;
    value.SetText(u"Länge");
    EXPECT_EQ(TextOf(*value.Record4()), "L\xE4nge");
}

TEST_F(Oper, a_narrow_text_is_converted_in_full_in_a_wide_record) {
    CXlOper value;
    value.SetText("\xE4" + std::string(299, 'x'));
    EXPECT_EQ(TextOf(*value.Record12()), u"ä" + std::u16string(299, u'x'));
}

TEST_F(Oper, a_wide_text_is_copied_in_full_into_a_wide_record) {
    CXlOper value;
    value.SetText(std::u16string(40000, u'x'));
    EXPECT_EQ(TextOf(*value.Record12()), std::u16string(40000, u'x')) << "also beyond 32767";
}

TEST_F(Oper, a_text_beyond_65535_units_wraps_its_count) {
    CXlOper value;
    value.SetText(std::u16string(65536, u'x') + u"abc");
    EXPECT_EQ(value.Record12()->val.str[0], 3);
    EXPECT_EQ(value.Record12()->val.str[65536 + 3], u'c') << "the text itself is complete";
}

TEST_F(Oper, the_empty_text_has_length_0) {
    CXlOper value;
    value.SetText("");
    EXPECT_EQ(value.State(), 80);
    EXPECT_TRUE(value.IsString());
    EXPECT_EQ(value.Record12()->val.str[0], 0);
    HostIsNarrow();
    value.SetText(u"");
    EXPECT_EQ(value.State(), 5);
    EXPECT_TRUE(value.IsString());
    EXPECT_EQ(value.Record4()->val.str[0], 0);
}

TEST_F(Oper, a_null_text_has_length_0) {
    CXlOper value;
    value.SetText(static_cast<const char*>(nullptr));
    EXPECT_EQ(value.State(), 80);
    EXPECT_EQ(value.Record12()->val.str[0], 0);
    HostIsNarrow();
    value.SetText(static_cast<const XCHAR*>(nullptr));
    EXPECT_EQ(value.State(), 5);
    EXPECT_EQ(value.Record4()->val.str[0], 0);
}

// ---- Release

TEST_F(Oper, has_no_value_after_free) {
    CXlOper value;
    value.SetText("abc");
    value.Free();
    EXPECT_EQ(value.State(), 0);
    EXPECT_EQ(value.Record12()->xltype, 0u);
    EXPECT_EQ(value.Record12()->val.str, nullptr);
}

TEST_F(Oper, what_the_host_filled_is_owned_by_the_host) {
    const ReleaseNotes host;
    XCHAR wide[] = u"\3abc";
    char narrow[] = "\3abc";
    CXlOper value;
    value.TakeFromHost(TextRecord<XLOPER12>(wide));
    EXPECT_EQ(value.State(), 96);
    value.TakeFromHost(TextRecord<XLOPER>(narrow));
    EXPECT_EQ(value.State(), 6);
}

TEST_F(Oper, what_the_host_filled_is_returned_through_the_primitive_of_its_family) {
    const ReleaseNotes host;
    XCHAR wide[] = u"\3abc";
    char narrow[] = "\3def";
    CXlOper value;
    value.TakeFromHost(TextRecord<XLOPER12>(wide));
    value.Free();
    EXPECT_EQ(value.State(), 0);
    EXPECT_EQ(value.Record12()->xltype, 0u);
    value.TakeFromHost(TextRecord<XLOPER>(narrow));
    value.Free();
    EXPECT_EQ(value.State(), 0);
    EXPECT_EQ(value.Record4()->xltype, 0u);
    EXPECT_THAT(ReleaseNotes::lines, ElementsAre("12 xlFree \"abc\"", "4 xlFree \"def\""));
}

TEST_F(Oper, what_the_host_filled_is_returned_by_the_destructor) {
    const ReleaseNotes host;
    XCHAR text[] = u"\3abc";
    {
        CXlOper value;
        value.TakeFromHost(TextRecord<XLOPER12>(text));
    }
    EXPECT_THAT(ReleaseNotes::lines, ElementsAre("12 xlFree \"abc\""));
}

TEST_F(Oper, neither_its_own_memory_nor_a_wrapped_record_is_returned_to_the_host) {
    const ReleaseNotes host;
    XCHAR text[] = u"\3abc";
    const auto record = TextRecord<XLOPER12>(text);
    {
        CXlOper own;
        own.SetText("abc");
        const CXlOper wrapped = CXlOper::Wrap12(&record);
    }
    EXPECT_THAT(ReleaseNotes::lines, IsEmpty());
    EXPECT_EQ(TextOf(record), u"abc");
}

TEST_F(Oper, each_record_is_released_by_its_owner) {
    const ReleaseNotes host;
    char narrow[] = "\3abc";
    CXlOper value;
    value.TakeFromHost(TextRecord<XLOPER>(narrow));
    CXlOper wide;
    wide.SetText("def");
    value.CopyFrom(wide);
    ASSERT_EQ(value.State(), 6 + 80);
    value.Free();
    EXPECT_THAT(ReleaseNotes::lines, ElementsAre("4 xlFree \"abc\""));
    EXPECT_EQ(value.State(), 0);
    EXPECT_EQ(value.Record4()->xltype, 0u);
    EXPECT_EQ(value.Record12()->xltype, 0u);
}

} // namespace
