// The messages are read from the string table of the program.

#include "expected_messages.h"
#include "fake_resources.h"
#include "xllrt/text/message_catalogue.h"

#include <gtest/gtest.h>

namespace {

using namespace metrify;

TEST(MessageTable, the_programs_own_string_table_holds_every_message) {
    const std::vector<std::uint16_t> languages = SystemResources().BlockLanguages(53249 / 16 + 1);
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
