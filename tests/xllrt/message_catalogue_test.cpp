#include "fake_resources.h"
#include "xllrt/message_catalogue.h"

#include <gtest/gtest.h>
#include <string>

namespace {

using namespace metrify;

// What every message must be in the string table; the built-in table differs at number 49 alone.
const char* const expected_texts[] = {
    "",
    "#ERROR: {0}",
    "#WAIT!",
    "unknown type",
    "boolean",
    "number",
    "integer",
    "string",
    "error",
    "long integer",
    "Conversion error",
    "Expected {0}",
    "Expected {1} for {0}",
    "Expected at least 1 value for {0}",
    "Label {1} not found in {0}",
    "Expected vector for {0}",
    "Expected at least {1} values for {0}",
    "Expected 1 row in {0}",
    "Expected {1} rows in {0}",
    "Expected 1 column in {0}",
    "Expected {1} columns in {0}",
    "Expected 1 value in {0}",
    "Expected {1} values in {0}",
    "Expected 1 value in row {2} of {0}",
    "Expected {1} values in row {2} of {0}",
    "Expected 1 value in column {2} of {0}",
    "Expected {1} values in column {2} of {0}",
    "Expected at least {1} rows for {0}",
    "Expected at least {1} columns for {0}",
    "Failed to convert {0} from {1} to {2}",
    "Index out of range",
    "Illegal argument",
    "Bad XLOPER type",
    "Failed to convert {0} to any of the permitted types",
    "XlElemTraits is not implemented for this type",
    "Array is too large",
    "Array is empty",
    "String is too long",
    "Extended {0} parameter index {1} for argument {2} is out of range",
    "Right-hand side of cell assignment must be a scalar value",
    "Parameter ignoreItems is out of range (maximum = {0})",
    "Source must be a scalar value",
    "Expected all items in the array to be empty",
    "CXlOper instance is not initialized",
    "{0} is not initialized",
    "{0} is not initialized. Expected {1}.",
    "{0} is not initialized. Expected {1} vector.",
    "{0} is not initialized. Expected {1} matrix.",
    "Illegal value for result of common function. Must be 0, &xloResult or static.",
    "The following functions in {0} failed to register:\n{1}\nDo you wish to continue loading the add-in?",
    "Add-in Load Failure",
    "Memory allocation failed",
    "Excel API call failed",
    "Excel API call {0} failed with error code {1}",
    "'C' structured exception occurred",
    "'C' exception {0}",
    "Threw Excel error {0}",
    "COM call failed",
    "{0} failed with error code {1}",
    "short integer",
    "unsigned short integer",
    "Expected at least 1 value for {0}",
    "Expected at least 1 row for {0}",
    "Expected at least 1 column for {0}",
    "Expected one of {1} for {0}",
    "handle to {0}",
};

const std::string built_in_49 =
    "The following functions in {0} failed to register:\n\n{1}\nDo you wish to continue loading the add-in?";

std::u16string Wide(std::string_view ascii) {
    return {ascii.begin(), ascii.end()};
}

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

TEST(MessageCatalogue, without_a_string_table_the_built_in_text_is_taken_silently) {
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

TEST(MessageCatalogue, the_string_table_goes_before_the_built_in_one) {
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

TEST(MessageCatalogue, a_number_from_66_on_is_in_no_catalogue) {
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

// Where the program has a string table of its own, on Windows, it is the one the messages come from.
TEST(MessageCatalogue, the_programs_own_string_table_holds_every_message) {
    const std::vector<std::uint16_t> languages = SystemResources().BlockLanguages(53249 / 16 + 1);
    if (languages.empty())
        GTEST_SKIP() << "no string tables on this platform";
    EXPECT_EQ(languages, std::vector<std::uint16_t>{kUsEnglish});
    EXPECT_EQ(53248 + kMessageCount - 1, 53313U);
    for (unsigned number = 1; number < kMessageCount; ++number) {
        std::u16string text;
        ASSERT_TRUE(LoadResourceText(text, 53248 + number, kUsEnglish)) << number;
        EXPECT_EQ(text, Wide(expected_texts[number])) << number;
        EXPECT_EQ(MessageText(number), expected_texts[number]) << number;
    }
    std::u16string text;
    EXPECT_FALSE(LoadResourceText(text, 53248, kUsEnglish));
    EXPECT_FALSE(LoadResourceText(text, 53314, kUsEnglish));
    EXPECT_EQ(SystemResources().CountryCode(kUsEnglish), 1);
    EXPECT_EQ(SystemResources().CountryCode(kGerman), 49);
}

} // namespace
