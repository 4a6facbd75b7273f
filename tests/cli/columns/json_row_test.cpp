#include "cli/columns/json_row.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using namespace metrify;

std::string json_string(std::string_view text) {
    std::string out;
    append_json_string(out, text);
    return out;
}

TEST(json_row, is_an_object_with_the_names_as_keys) {
    std::string out;
    const std::vector<std::string> keys = json_keys({"height", "", "a \"b\""});
    json_row row(out, keys);
    row.add_number(1.5);
    row.add_text("x");
    row.add_null();
    row.add_text("y");
    row.finish();
    EXPECT_EQ(out, "{\"height\":1.5,\"2\":\"x\",\"a \\\"b\\\"\":null,\"4\":\"y\"}\n");
}
TEST(json_row, is_an_array_without_names) {
    std::string out;
    const std::vector<std::string> keys;
    json_row row(out, keys);
    row.add_text("x");
    row.add_number(2.0);
    row.finish();
    EXPECT_EQ(out, "[\"x\",2]\n");
}
TEST(json_string, escapes_quotes_backslashes_and_control_characters) {
    EXPECT_EQ(json_string("a\"b\\c\n\x1F"), "\"a\\\"b\\\\c\\u000a\\u001f\"");
    EXPECT_EQ(json_string(""), "\"\"");
}
TEST(json_string, keeps_characters_in_UTF_8) {
    EXPECT_EQ(json_string("\xC2\xB5 \xE2\x82\xAC \xF0\x9F\x98\x80"),
              "\"\xC2\xB5 \xE2\x82\xAC \xF0\x9F\x98\x80\"");
}
TEST(json_string, replaces_bytes_that_are_no_character) {
    constexpr std::string_view replacement = "\xEF\xBF\xBD";
    for (const char* byte : {"\xB5", "\xC2", "\xC0", "\xF5", "\xFF"})
        EXPECT_EQ(json_string(std::string(byte) + "m"), "\"" + std::string(replacement) + "m\"");
    // A surrogate and an overlong slash: none of their bytes is a character.
    for (const char* bytes : {"\xED\xA0\x80", "\xE0\x80\xAF"})
        EXPECT_EQ(json_string(bytes), "\"\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\"");
}

} // namespace
