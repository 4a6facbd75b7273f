#include "cli/typed_text.h"

#include <clocale>
#include <gtest/gtest.h>
#include <string>

namespace {

using metrify::typed_text;

std::wstring characters_of(std::string_view bytes) {
    typed_text typed;
    std::wstring characters;
    for (const char byte : bytes)
        typed.take(byte, characters);
    return characters;
}

class typed_texts : public testing::Test {
  protected:
    typed_texts() { std::setlocale(LC_CTYPE, "C.UTF-8"); }
    ~typed_texts() override { std::setlocale(LC_CTYPE, "C"); }
};

TEST_F(typed_texts, contain_the_characters_of_the_encoding) {
    EXPECT_EQ(characters_of("a\xC2\xB5\xE2\x82\xAC"), L"a\u00B5\u20AC");
}

TEST_F(typed_texts, have_no_character_until_its_last_byte) {
    EXPECT_EQ(characters_of("a\xE2"), L"a");
    EXPECT_EQ(characters_of("a\xE2\x82"), L"a");
}

TEST_F(typed_texts, represent_a_byte_that_belongs_to_no_character) {
    const std::wstring characters = characters_of("\xB5m\xE2\x82m\xFF\x80x");
    EXPECT_EQ(characters.size(), 8U);
    EXPECT_EQ(characters[1], L'm');
    EXPECT_EQ(characters[4], L'm');
    EXPECT_EQ(typed_text::bytes_of(characters), "\xB5m\xE2\x82m\xFF\x80x");
}

TEST_F(typed_texts, restore_each_pair_of_bytes) {
    for (int first = 0; first < 256; ++first) {
        for (int second = 0; second < 256; ++second) {
            const std::string bytes = {static_cast<char>(first), static_cast<char>(second), 'x', 'x', 'x'};
            EXPECT_EQ(typed_text::bytes_of(characters_of(bytes)), bytes) << first << ' ' << second;
        }
    }
}

TEST_F(typed_texts, restore_each_byte_in_the_portable_locale) {
    std::setlocale(LC_CTYPE, "C");
    for (int byte = 0; byte < 256; ++byte) {
        const std::string bytes = {static_cast<char>(byte), 'x'};
        EXPECT_EQ(typed_text::bytes_of(characters_of(bytes)), bytes) << byte;
    }
}

} // namespace
