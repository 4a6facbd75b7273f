#include "readable_records.h"
#include "xllrt/fault/exceptions.h"
#include "xllrt/value/xl_oper.h"

#include <gtest/gtest.h>
#include <string>

namespace {

using namespace metrify;

template <class Record>
class ValueReading : public testing::Test {
  protected:
    static CXlOper Value(const XLOPER& record) { return CXlOper::Wrap4(&record); }
    static CXlOper Value(const XLOPER12& record) { return CXlOper::Wrap12(&record); }

    CXlOper Str(std::string_view text) {
        DeepFree(text_.record);
        MakeText(text_.record, text);
        return Value(text_.record);
    }
    CXlOper Number(double number) { return Value(NumberRecord<Record>(number)); }
    CXlOper Bool(bool value) { return Value(BoolRecord<Record>(value)); }
    CXlOper Error(int code) { return Value(ErrorRecord<Record>(code)); }
    CXlOper Missing() { return Value(BareRecord<Record>(xltypeMissing)); }

  private:
    RecordOwner<Record> text_;
};

TYPED_TEST_SUITE(ValueReading, Families);

// The message of a strict read that fails; it is the same in both widths.
template <class Read>
std::string Complaint(Read read) {
    try {
        read();
    } catch (const CXlConversionException& exception) {
        const std::u16string& wide = exception.WideMessage();
        EXPECT_EQ(std::string(wide.begin(), wide.end()), exception.what());
        return exception.what();
    }
    return "nothing";
}

std::string NumberComplaint(const CXlOper& value) {
    return Complaint([&] { value.ToNumber(true); });
}

std::string BoolComplaint(const CXlOper& value) {
    return Complaint([&] { value.ToBool(true); });
}

std::string TextComplaint(const CXlOper& value) {
    return Complaint([&] { value.ToText(true); });
}

std::string WideTextComplaint(const CXlOper& value) {
    return Complaint([&] { value.ToWideText(true); });
}

TYPED_TEST(ValueReading, a_strict_read_returns_what_can_be_read) {
    EXPECT_EQ(this->Number(2.5).ToNumber(true), 2.5);
    EXPECT_TRUE(this->Number(2.5).ToBool(true));
    EXPECT_EQ(this->Str("12").ToNumber(true), 12.0);
}

TYPED_TEST(ValueReading, a_lenient_read_that_fails_is_0_false_and_the_empty_text) {
    EXPECT_EQ(this->Missing().ToNumber(), 0.0);
    EXPECT_FALSE(this->Missing().ToBool());
    EXPECT_EQ(this->Missing().ToText(), "");
    EXPECT_EQ(this->Missing().ToWideText(), u"");
}

TYPED_TEST(ValueReading, a_number_too_large_for_a_double_is_0_or_an_exception) {
    const CXlOper value = this->Str("1e400");
    EXPECT_EQ(value.ToNumber(), 0.0);
    EXPECT_EQ(NumberComplaint(value), "Expected number");
}

TYPED_TEST(ValueReading, a_strict_read_of_what_is_not_a_number_throws) {
    EXPECT_EQ(NumberComplaint(this->Missing()), "Expected number");
}

TYPED_TEST(ValueReading, a_strict_read_of_what_is_not_a_boolean_throws) {
    const CXlOper value = this->Str("yes");
    EXPECT_FALSE(value.ToBool());
    EXPECT_EQ(BoolComplaint(value), "Expected boolean");
}

TYPED_TEST(ValueReading, a_text_is_read_strictly_too) {
    EXPECT_EQ(this->Str("ft").ToText(true), "ft");
    EXPECT_EQ(this->Str("ft").ToWideText(true), u"ft");
}

TYPED_TEST(ValueReading, a_number_is_a_text_only_for_a_lenient_read) {
    EXPECT_EQ(this->Number(2.5).ToText(), "2.500000");
    EXPECT_EQ(this->Number(2.5).ToWideText(), u"2.500000");
    EXPECT_EQ(TextComplaint(this->Number(2.5)), "Conversion error");
    EXPECT_EQ(WideTextComplaint(this->Number(2.5)), "Conversion error");
}

TYPED_TEST(ValueReading, a_boolean_is_a_text_only_for_a_lenient_read) {
    EXPECT_EQ(this->Bool(true).ToText(), "TRUE");
    EXPECT_EQ(this->Bool(true).ToWideText(), u"TRUE");
    EXPECT_EQ(TextComplaint(this->Bool(true)), "Conversion error");
    EXPECT_EQ(WideTextComplaint(this->Bool(true)), "Conversion error");
}

TYPED_TEST(ValueReading, an_error_is_the_empty_text_for_a_lenient_read) {
    EXPECT_EQ(this->Error(xlerrNA).ToText(), "");
    EXPECT_EQ(this->Error(xlerrNA).ToWideText(), u"");
}

TYPED_TEST(ValueReading, an_error_is_a_conversion_error_for_a_strict_read_of_a_text) {
    EXPECT_EQ(TextComplaint(this->Error(xlerrNA)), "Conversion error");
    EXPECT_EQ(WideTextComplaint(this->Error(xlerrNA)), "Conversion error");
}

TEST(ValueRecords, no_value_reads_as_0_false_and_the_empty_text) {
    const CXlOper value;
    EXPECT_EQ(value.ToNumber(), 0.0);
    EXPECT_FALSE(value.ToBool());
    EXPECT_EQ(value.ToText(), "");
    EXPECT_EQ(value.ToWideText(), u"");
}

TEST(ValueRecords, a_strict_read_of_no_value_names_the_expected_type) {
    const CXlOper value;
    EXPECT_EQ(NumberComplaint(value), "Expected number");
    EXPECT_EQ(BoolComplaint(value), "Expected boolean");
    EXPECT_EQ(TextComplaint(value), "Expected string");
    EXPECT_EQ(WideTextComplaint(value), "Expected string");
}

TEST(ValueRecords, the_wide_record_is_read_if_both_are_valid) {
    const XLOPER narrow = NumberRecord<XLOPER>(0.0);
    const XLOPER12 wide = NumberRecord<XLOPER12>(2.5);
    CXlOper value = CXlOper::Wrap4(&narrow);
    value.CopyFrom(CXlOper::Wrap12(&wide));
    ASSERT_EQ(value.State(), CXlOper::kValid4 | CXlOper::kValid12);
    EXPECT_EQ(value.ToNumber(), 2.5);
    EXPECT_TRUE(value.ToBool());
    EXPECT_EQ(value.ToText(), "2.500000");
    EXPECT_EQ(value.ToWideText(), u"2.500000");
}

TEST(ValueRecords, a_narrow_text_is_widened_with_the_code_page) {
    RecordOwner<XLOPER> text;
    MakeText(text.record, std::string_view("caf\xE9"));
    const CXlOper value = CXlOper::Wrap4(&text.record);
    EXPECT_EQ(value.ToText(), "caf\xE9");
    EXPECT_EQ(value.ToWideText(), u"caf\u00E9");
}

TEST(ValueRecords, a_wide_text_is_narrowed_with_the_code_page) {
    RecordOwner<XLOPER12> text;
    MakeText(text.record, std::u16string_view(u"caf\u00E9"));
    const CXlOper value = CXlOper::Wrap12(&text.record);
    EXPECT_EQ(value.ToText(), "caf\xE9");
    EXPECT_EQ(value.ToWideText(), u"caf\u00E9");
}

} // namespace
