#include "expected_messages.h"
#include "fake_resources.h"
#include "xllrt/text/message_catalogue.h"

#include <gtest/gtest.h>
#include <string>

namespace {

using namespace metrify;

const std::string built_in_49 =
    "The following functions in {0} failed to register:\n\n{1}\nDo you wish to continue loading the add-in?";

std::string Formatted(unsigned number, auto... arguments) {
    std::string text;
    FormatMessageText(text, number, arguments...);
    return text;
}

std::u16string WideFormatted(unsigned number, auto... arguments) {
    std::u16string text;
    FormatMessageText(text, number, arguments...);
    return text;
}

TEST(MessageCatalogue, the_built_in_table_has_every_text_at_its_number) {
    static_assert(std::size(expected_texts) == kMessageCount);
    for (unsigned number = 0; number < kMessageCount; ++number)
        EXPECT_EQ(kBuiltInMessages[number], number == 49 ? built_in_49 : expected_texts[number]) << number;
}

TEST(MessageCatalogue, without_a_string_table_the_built_in_text_is_used) {
    const FakeResources none;
    for (unsigned number = 0; number < kMessageCount; ++number) {
        std::string text = "old";
        EXPECT_TRUE(LoadMessage(text, number));
        EXPECT_EQ(text, kBuiltInMessages[number]);
        std::u16string wide = u"old";
        EXPECT_TRUE(LoadMessage(wide, number));
        EXPECT_EQ(wide, Wide(kBuiltInMessages[number]));
    }
}

TEST(MessageCatalogue, the_string_table_takes_precedence_over_the_built_in_texts) {
    FakeResources resources;
    resources.Add(53248 + 10, kUsEnglish, u"Something else");
    EXPECT_EQ(MessageText(10), "Something else");
    EXPECT_EQ(WideMessageText(10), u"Something else");
    EXPECT_EQ(MessageText(11), "Expected {0}");
}

TEST(MessageCatalogue, message_49_has_one_line_feed_in_the_string_table_and_two_built_in) {
    FakeResources resources;
    EXPECT_EQ(MessageText(49), built_in_49);
    resources.Add(53248 + 49, kUsEnglish, Wide(expected_texts[49]));
    EXPECT_EQ(MessageText(49), expected_texts[49]);
}

TEST(MessageCatalogue, under_uk_english_the_us_english_table_is_used) {
    FakeResources resources;
    resources.Add(53248 + 10, kGerman, u"Umwandlung misslungen");
    resources.Add(53248 + 10, kUsEnglish, u"From the table");
    resources.thread_language = kUkEnglish;
    EXPECT_EQ(MessageText(10), "From the table");
}

TEST(MessageCatalogue, a_number_of_66_or_more_is_not_in_the_catalogue) {
    std::string text = "kept";
    EXPECT_FALSE(LoadMessage(text, 66));
    EXPECT_EQ(text, "kept");
    std::u16string wide;
    EXPECT_FALSE(LoadMessage(wide, 66));
    EXPECT_FALSE(LoadMessage(text, 4294967295U));
    EXPECT_EQ(MessageText(66), "Unknown error");
    EXPECT_EQ(WideMessageText(66), u"");
    EXPECT_EQ(Formatted(66, "a"), "Message #66 not found");
    EXPECT_EQ(WideFormatted(1000), u"Message #1000 not found");
}

TEST(MessageCatalogue, messages_are_formatted_with_their_arguments) {
    EXPECT_EQ(Formatted(11, "number"), "Expected number");
    EXPECT_EQ(WideFormatted(11, u"number"), u"Expected number");
    EXPECT_EQ(Formatted(12, static_cast<const char*>(nullptr), "b"), "Expected b for ");
    EXPECT_EQ(Formatted(58, "Run", "0x80004005"), "Run failed with error code 0x80004005");
    EXPECT_EQ(Formatted(30), "Index out of range");
    EXPECT_EQ(Formatted(0), "");
}

TEST(MessageCatalogue, a_string_table_text_with_a_bad_brace_throws) {
    FakeResources resources;
    resources.Add(53248 + 11, kUsEnglish, u"Expected {");
    std::string text;
    EXPECT_THROW(FormatMessageText(text, 11, "number"), psl::StringFormatterError);
}

TEST(MessageCatalogue, the_numbers_raised_have_names) {
    const std::pair<unsigned, const char*> named[] = {
        {kMessageErrorCell, "#ERROR: {0}"},
        {kMessageBoolean, "boolean"},
        {kMessageNumber, "number"},
        {kMessageString, "string"},
        {kMessageConversionError, "Conversion error"},
        {kMessageExpected, "Expected {0}"},
        {kMessageIndexOutOfRange, "Index out of range"},
        {kMessageIllegalArgument, "Illegal argument"},
        {kMessageBadOperType, "Bad XLOPER type"},
        {kMessageStringTooLong, "String is too long"},
        {kMessageSourceNotScalar, "Source must be a scalar value"},
        {kMessageIllegalResult,
         "Illegal value for result of common function. Must be 0, &xloResult or static."},
        {kMessageLoadFailureTitle, "Add-in Load Failure"},
        {kMessageStructuredException, "'C' exception {0}"},
        {kMessageCallFailed, "{0} failed with error code {1}"},
    };
    for (const auto& [number, text] : named)
        EXPECT_EQ(kBuiltInMessages[number], text);
    EXPECT_EQ(kMessageRegistrationFailed, 49U);
}

} // namespace
