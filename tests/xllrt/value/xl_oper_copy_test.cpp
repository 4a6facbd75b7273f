// Copies of values.

#include "oper_fixture.h"

#include <array>

namespace {

using namespace metrify;

class OperCopy : public OperTest {};

TEST_F(OperCopy, of_a_wrapped_text_is_owned) {
    XCHAR text[] = u"\3abc";
    const auto record = TextRecord<XLOPER12>(text);
    const CXlOper source = CXlOper::Wrap12(&record);
    const CXlOper copy(source);
    EXPECT_EQ(copy.State(), 80);
    EXPECT_EQ(Rendered(*copy.Record12()), "\"abc\"");
    EXPECT_NE(copy.Record12()->val.str, text);
}

TEST_F(OperCopy, of_a_narrow_text_stays_narrow) {
    char text[] = "\3abc";
    const auto record = TextRecord<XLOPER>(text);
    CXlOper copy;
    copy.CopyFrom(CXlOper::Wrap4(&record));
    EXPECT_EQ(copy.State(), 5);
    EXPECT_EQ(Rendered(*copy.Record4()), "\"abc\"");
}

TEST_F(OperCopy, of_a_number_is_valid_and_not_owned) {
    const CXlOper source(2.5);
    const CXlOper copy(source);
    EXPECT_EQ(copy.State(), 64);
    EXPECT_EQ(copy.ToNumber(), 2.5);
}

TEST_F(OperCopy, of_what_the_host_filled_is_not_owned_by_the_host) {
    const ReleaseNotes host;
    XCHAR text[] = u"\3abc";
    CXlOper source;
    source.TakeFromHost(TextRecord<XLOPER12>(text));
    const CXlOper copy(source);
    EXPECT_EQ(copy.State(), 80);
    EXPECT_EQ(source.State(), 96);
}

TEST_F(OperCopy, of_two_valid_records_has_both) {
    CXlOper source;
    source.SetText("wide");
    char text[] = "\6narrow";
    const auto record = TextRecord<XLOPER>(text);
    source.CopyFrom(CXlOper::Wrap4(&record));
    ASSERT_EQ(source.State(), 80 + 5);
    CXlOper copy;
    copy.CopyFrom(source);
    EXPECT_EQ(copy.State(), 80 + 5);
    EXPECT_EQ(TextOf(*copy.Record12()), u"wide");
    EXPECT_EQ(TextOf(*copy.Record4()), "narrow");
}

TEST_F(OperCopy, that_fails_leaves_no_value) {
    const auto flow = PlainRecord<XLOPER12>(xltypeFlow);
    CXlOper copy;
    copy.CopyFrom(CXlOper::Wrap12(&flow));
    EXPECT_EQ(copy.State(), 0);
}

TEST_F(OperCopy, of_an_array_that_fails_at_its_last_cell_leaves_no_value) {
    XCHAR text[] = u"\3abc";
    std::array cells{TextRecord<XLOPER12>(text), PlainRecord<XLOPER12>(xltypeFlow)};
    const auto record = ArrayRecord(cells.data(), 1, 2);
    CXlOper copy;
    copy.CopyFrom(CXlOper::Wrap12(&record));
    EXPECT_EQ(copy.State(), 0);
    EXPECT_EQ(copy.Record12()->xltype, 0u);
}

TEST_F(OperCopy, onto_itself_does_nothing) {
    CXlOper value;
    value.SetText("abc");
    const XCHAR* text = value.Record12()->val.str;
    const CXlOper& same = value;
    value.CopyFrom(same);
    value = same;
    EXPECT_EQ(value.State(), 80);
    EXPECT_EQ(value.Record12()->val.str, text);
}

TEST_F(OperCopy, by_assignment_releases_the_old_content) {
    const ReleaseNotes host;
    XCHAR text[] = u"\3abc";
    CXlOper value;
    value.TakeFromHost(TextRecord<XLOPER12>(text));
    const CXlOper source(2.5);
    value = source;
    EXPECT_EQ(ReleaseNotes::lines, std::vector<std::string>{"12 xlFree \"abc\""});
    EXPECT_EQ(value.State(), 64);
    EXPECT_EQ(value.ToNumber(), 2.5);
}

TEST_F(OperCopy, by_assignment_of_no_value_leaves_none) {
    CXlOper value(2.5);
    value = CXlOper();
    EXPECT_EQ(value.State(), 0);
    EXPECT_EQ(value.Record12()->xltype, 0u);
}

} // namespace
