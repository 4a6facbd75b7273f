#include "xllrt/exceptions.h"
#include "xllrt/record_memory.h"
#include "xllrt/record_reading.h"
#include "xllrt/xl_oper.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <optional>
#include <string>

namespace {

using namespace metrify;

constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

// Types that nothing can be read from, but for the texts of errors.
constexpr std::uint16_t kUnreadable[] = {xltypeRef,     xltypeErr, xltypeFlow, xltypeMulti,
                                         xltypeMissing, xltypeNil, xltypeSRef, xltypeBigData};

template <class Record>
Record NumberRecord(double number) {
    Record record{};
    record.xltype = xltypeNum;
    record.val.num = number;
    return record;
}

template <class Record>
Record BoolRecord(bool value) {
    Record record{};
    record.xltype = xltypeBool;
    record.val.xbool = value ? 1 : 0;
    return record;
}

template <class Record>
Record IntRecord(int value) {
    Record record{};
    record.xltype = xltypeInt;
    StoreField(record.val.w, value);
    return record;
}

template <class Record>
Record ErrorRecord(int code) {
    Record record{};
    record.xltype = xltypeErr;
    StoreField(record.val.err, code);
    return record;
}

template <class Record>
Record BareRecord(std::uint16_t type) {
    Record record{};
    record.xltype = type;
    return record;
}

// ---- Records, in both families

template <class Record>
class RecordReading : public testing::Test {
  protected:
    using Text = std::basic_string<typename RecordFamily<Record>::Unit>;

    static Record Number(double number) { return NumberRecord<Record>(number); }
    static Record Bool(bool value) { return BoolRecord<Record>(value); }
    static Record Int(int value) { return IntRecord<Record>(value); }
    static Record Error(int code) { return ErrorRecord<Record>(code); }
    static Record Bare(std::uint16_t type) { return BareRecord<Record>(type); }

    // In the test's keeping until the next text.
    const Record& Str(std::string_view text) {
        DeepFree(text_.record);
        MakeText(text_.record, text);
        return text_.record;
    }

    static std::optional<double> AsNumber(const Record& record) {
        double value = 0.0;
        return RecordToNumber(record, value) ? std::optional(value) : std::nullopt;
    }
    static std::optional<int> AsInt(const Record& record) {
        std::int32_t value = 0;
        return RecordToInt(record, value) ? std::optional<int>(value) : std::nullopt;
    }
    static std::optional<bool> AsBool(const Record& record) {
        bool value = false;
        return RecordToBool(record, value) ? std::optional(value) : std::nullopt;
    }
    // All texts of these tests are ASCII.
    static std::optional<std::string> AsText(const Record& record) {
        Text text;
        return RecordToText(record, text) ? std::optional(std::string(text.begin(), text.end()))
                                          : std::nullopt;
    }

  private:
    RecordOwner<Record> text_;
};

using Families = testing::Types<XLOPER, XLOPER12>;
TYPED_TEST_SUITE(RecordReading, Families);

TYPED_TEST(RecordReading, a_number_reads_as_itself) {
    EXPECT_EQ(this->AsNumber(this->Number(-2.5)), -2.5);
}

TYPED_TEST(RecordReading, a_boolean_reads_as_the_number_1_or_0) {
    EXPECT_EQ(this->AsNumber(this->Bool(true)), 1.0);
    EXPECT_EQ(this->AsNumber(this->Bool(false)), 0.0);
}

TYPED_TEST(RecordReading, an_integer_reads_as_a_number) {
    EXPECT_EQ(this->AsNumber(this->Int(-12)), -12.0);
}

TYPED_TEST(RecordReading, a_text_reads_as_the_number_it_is) {
    EXPECT_EQ(this->AsNumber(this->Str("-12.5e1")), -125.0);
}

TYPED_TEST(RecordReading, other_types_are_no_number) {
    for (const std::uint16_t type : kUnreadable) {
        EXPECT_FALSE(this->AsNumber(this->Bare(type)).has_value()) << type;
    }
}

TYPED_TEST(RecordReading, memory_marks_do_not_disturb) {
    for (const std::uint16_t mark : {xlbitXLFree, xlbitDLLFree}) {
        TypeParam record = this->Number(2.5);
        record.xltype |= mark;
        EXPECT_EQ(this->AsNumber(record), 2.5) << mark;
        EXPECT_EQ(this->AsInt(record), 2) << mark;
        EXPECT_EQ(this->AsBool(record), true) << mark;
        EXPECT_EQ(this->AsText(record), "2.500000") << mark;
    }
}

TYPED_TEST(RecordReading, a_number_may_stand_behind_blanks) {
    EXPECT_EQ(this->AsNumber(this->Str("   12")), 12.0);
    EXPECT_EQ(this->AsInt(this->Str("   12")), 12);
}

TYPED_TEST(RecordReading, a_number_may_stand_before_white_space_of_any_kind) {
    EXPECT_EQ(this->AsNumber(this->Str("12   ")), 12.0);
    EXPECT_EQ(this->AsNumber(this->Str(" 12 \t\n\v\f\r")), 12.0);
    EXPECT_EQ(this->AsInt(this->Str("12 \t")), 12);
}

TYPED_TEST(RecordReading, a_number_before_a_letter_is_none) {
    EXPECT_FALSE(this->AsNumber(this->Str("12a")).has_value());
    EXPECT_FALSE(this->AsNumber(this->Str("12 a")).has_value());
    EXPECT_FALSE(this->AsInt(this->Str("12a")).has_value());
    EXPECT_FALSE(this->AsBool(this->Str("12a")).has_value());
}

TYPED_TEST(RecordReading, the_empty_text_is_no_number_no_integer_and_no_boolean) {
    EXPECT_FALSE(this->AsNumber(this->Str("")).has_value());
    EXPECT_FALSE(this->AsInt(this->Str("")).has_value());
    EXPECT_FALSE(this->AsBool(this->Str("")).has_value());
}

TYPED_TEST(RecordReading, a_word_is_no_number) {
    EXPECT_FALSE(this->AsNumber(this->Str("true")).has_value());
}

TYPED_TEST(RecordReading, white_space_alone_leaves_nothing_else_behind_and_is_0) {
    EXPECT_EQ(this->AsNumber(this->Str("  ")), 0.0);
}

TYPED_TEST(RecordReading, a_number_too_large_for_a_double_is_none) {
    EXPECT_FALSE(this->AsNumber(this->Str("1e400")).has_value());
    EXPECT_FALSE(this->AsNumber(this->Str("-1e400")).has_value());
}

TYPED_TEST(RecordReading, an_integer_reads_as_itself) {
    EXPECT_EQ(this->AsInt(this->Int(-12)), -12);
}

TYPED_TEST(RecordReading, a_boolean_reads_as_the_integer_1_or_0) {
    EXPECT_EQ(this->AsInt(this->Bool(true)), 1);
    EXPECT_EQ(this->AsInt(this->Bool(false)), 0);
}

TYPED_TEST(RecordReading, a_number_is_cut_towards_zero_to_an_integer) {
    EXPECT_EQ(this->AsInt(this->Number(2.9)), 2);
    EXPECT_EQ(this->AsInt(this->Number(-2.9)), -2);
}

TYPED_TEST(RecordReading, the_bounds_of_an_integer_are_inclusive) {
    EXPECT_EQ(this->AsInt(this->Number(2147483647.0)), 2147483647);
    EXPECT_EQ(this->AsInt(this->Number(-2147483648.0)), std::numeric_limits<int>::min());
}

TYPED_TEST(RecordReading, a_number_beyond_the_bounds_is_no_integer) {
    EXPECT_FALSE(this->AsInt(this->Number(2147483647.5)).has_value());
    EXPECT_FALSE(this->AsInt(this->Number(-2147483648.5)).has_value());
    EXPECT_FALSE(this->AsInt(this->Number(kNotANumber)).has_value());
}

TYPED_TEST(RecordReading, an_integer_in_a_text_is_decimal) {
    EXPECT_EQ(this->AsInt(this->Str("-12")), -12);
    EXPECT_EQ(this->AsInt(this->Str("010")), 10);
}

TYPED_TEST(RecordReading, a_number_in_a_text_is_cut_to_an_integer) {
    EXPECT_EQ(this->AsInt(this->Str("12.9")), 12);
    EXPECT_EQ(this->AsInt(this->Str("1e3")), 1000);
}

TYPED_TEST(RecordReading, a_text_beyond_the_bounds_is_no_integer) {
    EXPECT_FALSE(this->AsInt(this->Str("2147483648")).has_value());
    EXPECT_FALSE(this->AsInt(this->Str("2147483647.5")).has_value());
    EXPECT_FALSE(this->AsInt(this->Str("99999999999999999999")).has_value());
}

TYPED_TEST(RecordReading, other_types_are_no_integer) {
    for (const std::uint16_t type : kUnreadable) {
        EXPECT_FALSE(this->AsInt(this->Bare(type)).has_value()) << type;
    }
}

TYPED_TEST(RecordReading, a_number_other_than_0_is_true) {
    EXPECT_EQ(this->AsBool(this->Number(0.25)), true);
    EXPECT_EQ(this->AsBool(this->Number(0.0)), false);
    EXPECT_EQ(this->AsBool(this->Number(-0.0)), false);
}

TYPED_TEST(RecordReading, not_a_number_is_true) {
    EXPECT_EQ(this->AsBool(this->Number(kNotANumber)), true);
}

TYPED_TEST(RecordReading, booleans_and_integers_other_than_0_are_true) {
    EXPECT_EQ(this->AsBool(this->Bool(true)), true);
    EXPECT_EQ(this->AsBool(this->Bool(false)), false);
    EXPECT_EQ(this->AsBool(this->Int(-12)), true);
    EXPECT_EQ(this->AsBool(this->Int(0)), false);
}

TYPED_TEST(RecordReading, true_and_false_are_words_in_any_mix_of_case) {
    for (const char* word : {"TRUE", "true", "True", "tRuE"}) {
        EXPECT_EQ(this->AsBool(this->Str(word)), true) << word;
    }
    for (const char* word : {"FALSE", "false", "False", "fAlSe"}) {
        EXPECT_EQ(this->AsBool(this->Str(word)), false) << word;
    }
}

TYPED_TEST(RecordReading, an_integer_in_a_text_is_compared_with_0) {
    EXPECT_EQ(this->AsBool(this->Str("0")), false);
    EXPECT_EQ(this->AsBool(this->Str("12")), true);
}

TYPED_TEST(RecordReading, a_number_in_a_text_is_compared_with_0) {
    EXPECT_EQ(this->AsBool(this->Str("0.0")), false);
    EXPECT_EQ(this->AsBool(this->Str("0.25")), true);
    EXPECT_EQ(this->AsBool(this->Str("3e9")), true);
}

TYPED_TEST(RecordReading, another_word_is_no_boolean) {
    for (const char* word : {"yes", "truer", "tru", " true"}) {
        EXPECT_FALSE(this->AsBool(this->Str(word)).has_value()) << word;
    }
}

TYPED_TEST(RecordReading, other_types_are_no_boolean) {
    for (const std::uint16_t type : kUnreadable) {
        EXPECT_FALSE(this->AsBool(this->Bare(type)).has_value()) << type;
    }
}

TYPED_TEST(RecordReading, the_text_of_a_number_has_six_decimals) {
    EXPECT_EQ(this->AsText(this->Number(2.5)), "2.500000");
    EXPECT_EQ(this->AsText(this->Number(-1e-9)), "-0.000000");
}

TYPED_TEST(RecordReading, the_text_of_a_number_is_cut_to_the_buffer) {
    EXPECT_EQ(this->AsText(this->Number(-1e22)), "-10000000000000000000000.000000") << "31 characters fit";
    EXPECT_EQ(this->AsText(this->Number(std::ldexp(1.0, 100))), "1267650600228229401496703205376");
    EXPECT_EQ(this->AsText(this->Number(-std::ldexp(1.0, 100))), "-126765060022822940149670320537");
}

TYPED_TEST(RecordReading, the_text_of_a_boolean_is_a_word_in_capitals) {
    EXPECT_EQ(this->AsText(this->Bool(true)), "TRUE");
    EXPECT_EQ(this->AsText(this->Bool(false)), "FALSE");
}

TYPED_TEST(RecordReading, the_text_of_an_integer_is_its_digits) {
    EXPECT_EQ(this->AsText(this->Int(-1234)), "-1234");
}

TYPED_TEST(RecordReading, errors_have_the_texts_of_cells) {
    EXPECT_EQ(this->AsText(this->Error(7)), "#DIV/0!");
    EXPECT_EQ(this->AsText(this->Error(15)), "#VALUE!");
    EXPECT_EQ(this->AsText(this->Error(23)), "#REF!");
    EXPECT_EQ(this->AsText(this->Error(29)), "#NAME?");
    EXPECT_EQ(this->AsText(this->Error(36)), "#NUM!");
    EXPECT_EQ(this->AsText(this->Error(42)), "#N/A");
}

TYPED_TEST(RecordReading, the_error_of_code_0_has_no_text) {
    EXPECT_FALSE(this->AsText(this->Error(0)).has_value());
}

TYPED_TEST(RecordReading, a_text_reads_as_itself) {
    EXPECT_EQ(this->AsText(this->Str(" 12 ft")), " 12 ft");
    EXPECT_EQ(this->AsText(this->Str("")), "");
}

TYPED_TEST(RecordReading, other_types_have_no_text) {
    for (const std::uint16_t type :
         {xltypeRef, xltypeFlow, xltypeMulti, xltypeMissing, xltypeNil, xltypeSRef, xltypeBigData}) {
        EXPECT_FALSE(this->AsText(this->Bare(type)).has_value()) << type;
    }
}

// ---- Values

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

// What a strict read says when it fails; both widths say the same.
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

TYPED_TEST(ValueReading, a_strict_read_gives_what_can_be_read) {
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

TYPED_TEST(ValueReading, a_number_too_large_for_a_double_is_0_or_a_complaint) {
    const CXlOper value = this->Str("1e400");
    EXPECT_EQ(value.ToNumber(), 0.0);
    EXPECT_EQ(NumberComplaint(value), "Expected number");
}

TYPED_TEST(ValueReading, a_strict_read_of_what_is_no_number_says_so) {
    EXPECT_EQ(NumberComplaint(this->Missing()), "Expected number");
}

TYPED_TEST(ValueReading, a_strict_read_of_what_is_no_boolean_says_so) {
    const CXlOper value = this->Str("yes");
    EXPECT_FALSE(value.ToBool());
    EXPECT_EQ(BoolComplaint(value), "Expected boolean");
}

TYPED_TEST(ValueReading, a_text_is_read_strictly_too) {
    EXPECT_EQ(this->Str("ft").ToText(true), "ft");
    EXPECT_EQ(this->Str("ft").ToWideText(true), u"ft");
}

TYPED_TEST(ValueReading, a_number_is_a_text_to_a_lenient_read_alone) {
    EXPECT_EQ(this->Number(2.5).ToText(), "2.500000");
    EXPECT_EQ(this->Number(2.5).ToWideText(), u"2.500000");
    EXPECT_EQ(TextComplaint(this->Number(2.5)), "Conversion error");
    EXPECT_EQ(WideTextComplaint(this->Number(2.5)), "Conversion error");
}

TYPED_TEST(ValueReading, a_boolean_is_a_text_to_a_lenient_read_alone) {
    EXPECT_EQ(this->Bool(true).ToText(), "TRUE");
    EXPECT_EQ(this->Bool(true).ToWideText(), u"TRUE");
    EXPECT_EQ(TextComplaint(this->Bool(true)), "Conversion error");
    EXPECT_EQ(WideTextComplaint(this->Bool(true)), "Conversion error");
}

TYPED_TEST(ValueReading, an_error_is_the_empty_text_to_a_lenient_read) {
    EXPECT_EQ(this->Error(xlerrNA).ToText(), "");
    EXPECT_EQ(this->Error(xlerrNA).ToWideText(), u"");
}

TYPED_TEST(ValueReading, an_error_is_a_conversion_error_to_a_strict_read_of_a_text) {
    EXPECT_EQ(TextComplaint(this->Error(xlerrNA)), "Conversion error");
    EXPECT_EQ(WideTextComplaint(this->Error(xlerrNA)), "Conversion error");
}

TEST(ValueSides, no_value_reads_as_0_false_and_the_empty_text) {
    const CXlOper value;
    EXPECT_EQ(value.ToNumber(), 0.0);
    EXPECT_FALSE(value.ToBool());
    EXPECT_EQ(value.ToText(), "");
    EXPECT_EQ(value.ToWideText(), u"");
}

TEST(ValueSides, a_strict_read_of_no_value_names_the_type_it_wants) {
    const CXlOper value;
    EXPECT_EQ(NumberComplaint(value), "Expected number");
    EXPECT_EQ(BoolComplaint(value), "Expected boolean");
    EXPECT_EQ(TextComplaint(value), "Expected string");
    EXPECT_EQ(WideTextComplaint(value), "Expected string");
}

TEST(ValueSides, the_wide_side_is_read_if_both_are_valid) {
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

TEST(ValueSides, a_narrow_text_is_widened_with_the_code_page) {
    RecordOwner<XLOPER> text;
    MakeText(text.record, std::string_view("caf\xE9"));
    const CXlOper value = CXlOper::Wrap4(&text.record);
    EXPECT_EQ(value.ToText(), "caf\xE9");
    EXPECT_EQ(value.ToWideText(), u"caf\u00E9");
}

TEST(ValueSides, a_wide_text_is_narrowed_with_the_code_page) {
    RecordOwner<XLOPER12> text;
    MakeText(text.record, std::u16string_view(u"caf\u00E9"));
    const CXlOper value = CXlOper::Wrap12(&text.record);
    EXPECT_EQ(value.ToText(), "caf\xE9");
    EXPECT_EQ(value.ToWideText(), u"caf\u00E9");
}

} // namespace
