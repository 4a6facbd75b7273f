#include "readable_records.h"
#include "xllrt/value/record_reading.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <optional>
#include <string>

namespace {

using namespace metrify;

constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

// Types that cannot be read, except for the texts of errors.
constexpr std::uint16_t kUnreadable[] = {xltypeRef,     xltypeErr, xltypeFlow, xltypeMulti,
                                         xltypeMissing, xltypeNil, xltypeSRef, xltypeBigData};

template <class Record>
class RecordReading : public testing::Test {
  protected:
    using Text = std::basic_string<typename RecordFamily<Record>::Unit>;

    static Record Number(double number) { return NumberRecord<Record>(number); }
    static Record Bool(bool value) { return BoolRecord<Record>(value); }
    static Record Int(int value) { return IntRecord<Record>(value); }
    static Record Error(int code) { return ErrorRecord<Record>(code); }
    static Record Bare(std::uint16_t type) { return BareRecord<Record>(type); }

    // Owned by the test until the next text.
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

TYPED_TEST(RecordReading, a_text_reads_as_the_number_in_it) {
    EXPECT_EQ(this->AsNumber(this->Str("-12.5e1")), -125.0);
}

TYPED_TEST(RecordReading, other_types_are_not_numbers) {
    for (const std::uint16_t type : kUnreadable)
        EXPECT_FALSE(this->AsNumber(this->Bare(type)).has_value()) << type;
}

TYPED_TEST(RecordReading, memory_marks_have_no_effect) {
    for (const std::uint16_t mark : {xlbitXLFree, xlbitDLLFree}) {
        TypeParam record = this->Number(2.5);
        record.xltype |= mark;
        EXPECT_EQ(this->AsNumber(record), 2.5) << mark;
        EXPECT_EQ(this->AsInt(record), 2) << mark;
        EXPECT_EQ(this->AsBool(record), true) << mark;
        EXPECT_EQ(this->AsText(record), "2.500000") << mark;
    }
}

TYPED_TEST(RecordReading, blanks_may_precede_a_number) {
    EXPECT_EQ(this->AsNumber(this->Str("   12")), 12.0);
    EXPECT_EQ(this->AsInt(this->Str("   12")), 12);
}

TYPED_TEST(RecordReading, white_space_of_any_kind_may_follow_a_number) {
    EXPECT_EQ(this->AsNumber(this->Str("12   ")), 12.0);
    EXPECT_EQ(this->AsNumber(this->Str(" 12 \t\n\v\f\r")), 12.0);
    EXPECT_EQ(this->AsInt(this->Str("12 \t")), 12);
}

TYPED_TEST(RecordReading, a_number_followed_by_a_letter_is_not_a_number) {
    EXPECT_FALSE(this->AsNumber(this->Str("12a")).has_value());
    EXPECT_FALSE(this->AsNumber(this->Str("12 a")).has_value());
    EXPECT_FALSE(this->AsInt(this->Str("12a")).has_value());
    EXPECT_FALSE(this->AsBool(this->Str("12a")).has_value());
}

TYPED_TEST(RecordReading, the_empty_text_is_not_a_number_an_integer_or_a_boolean) {
    EXPECT_FALSE(this->AsNumber(this->Str("")).has_value());
    EXPECT_FALSE(this->AsInt(this->Str("")).has_value());
    EXPECT_FALSE(this->AsBool(this->Str("")).has_value());
}

TYPED_TEST(RecordReading, a_word_is_not_a_number) {
    EXPECT_FALSE(this->AsNumber(this->Str("true")).has_value());
}

TYPED_TEST(RecordReading, white_space_alone_is_0) {
    EXPECT_EQ(this->AsNumber(this->Str("  ")), 0.0);
}

TYPED_TEST(RecordReading, a_number_too_large_for_a_double_is_not_a_number) {
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

TYPED_TEST(RecordReading, a_number_is_truncated_towards_zero_to_an_integer) {
    EXPECT_EQ(this->AsInt(this->Number(2.9)), 2);
    EXPECT_EQ(this->AsInt(this->Number(-2.9)), -2);
}

TYPED_TEST(RecordReading, the_bounds_of_an_integer_are_inclusive) {
    EXPECT_EQ(this->AsInt(this->Number(2147483647.0)), 2147483647);
    EXPECT_EQ(this->AsInt(this->Number(-2147483648.0)), std::numeric_limits<int>::min());
}

TYPED_TEST(RecordReading, a_number_beyond_the_bounds_is_not_an_integer) {
    EXPECT_FALSE(this->AsInt(this->Number(2147483647.5)).has_value());
    EXPECT_FALSE(this->AsInt(this->Number(-2147483648.5)).has_value());
    EXPECT_FALSE(this->AsInt(this->Number(kNotANumber)).has_value());
}

TYPED_TEST(RecordReading, an_integer_in_a_text_is_decimal) {
    EXPECT_EQ(this->AsInt(this->Str("-12")), -12);
    EXPECT_EQ(this->AsInt(this->Str("010")), 10);
}

TYPED_TEST(RecordReading, a_number_in_a_text_is_truncated_to_an_integer) {
    EXPECT_EQ(this->AsInt(this->Str("12.9")), 12);
    EXPECT_EQ(this->AsInt(this->Str("1e3")), 1000);
}

TYPED_TEST(RecordReading, a_text_beyond_the_bounds_is_not_an_integer) {
    EXPECT_FALSE(this->AsInt(this->Str("2147483648")).has_value());
    EXPECT_FALSE(this->AsInt(this->Str("2147483647.5")).has_value());
    EXPECT_FALSE(this->AsInt(this->Str("99999999999999999999")).has_value());
}

TYPED_TEST(RecordReading, other_types_are_not_integers) {
    for (const std::uint16_t type : kUnreadable)
        EXPECT_FALSE(this->AsInt(this->Bare(type)).has_value()) << type;
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

TYPED_TEST(RecordReading, true_and_false_are_words_in_any_case) {
    for (const char* word : {"TRUE", "true", "True", "tRuE"})
        EXPECT_EQ(this->AsBool(this->Str(word)), true) << word;
    for (const char* word : {"FALSE", "false", "False", "fAlSe"})
        EXPECT_EQ(this->AsBool(this->Str(word)), false) << word;
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

TYPED_TEST(RecordReading, another_word_is_not_a_boolean) {
    for (const char* word : {"yes", "truer", "tru", " true"})
        EXPECT_FALSE(this->AsBool(this->Str(word)).has_value()) << word;
}

TYPED_TEST(RecordReading, other_types_are_not_booleans) {
    for (const std::uint16_t type : kUnreadable)
        EXPECT_FALSE(this->AsBool(this->Bare(type)).has_value()) << type;
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

TYPED_TEST(RecordReading, the_text_of_what_is_not_a_number_has_no_sign) {
    EXPECT_EQ(this->AsText(this->Number(kNotANumber)), "nan");
    EXPECT_EQ(this->AsText(this->Number(-kNotANumber)), "nan");
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
         {xltypeRef, xltypeFlow, xltypeMulti, xltypeMissing, xltypeNil, xltypeSRef, xltypeBigData})
        EXPECT_FALSE(this->AsText(this->Bare(type)).has_value()) << type;
}

} // namespace
