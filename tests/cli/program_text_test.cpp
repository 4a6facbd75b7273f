#include "cli/program_text.h"

#include <gtest/gtest.h>
#include <sstream>
#include <string>

namespace {

using metrify::program_text;

program_text read(const std::string& bytes) {
    std::istringstream in(bytes);
    program_text program;
    EXPECT_TRUE(program.read(in)) << program.reason;
    return program;
}

TEST(program_text, without_marks_of_windows_is_unchanged_and_has_no_note) {
    const program_text program = read("x = 3 ft\nx; in\n");
    EXPECT_EQ(program.text, "x = 3 ft\nx; in\n");
    EXPECT_EQ(program.note, "");
}

TEST(program_text, loses_the_carriage_returns_at_line_ends_with_a_note) {
    const program_text program = read("x = 3 ft\r\n\r\nx; in\r\n");
    EXPECT_EQ(program.text, "x = 3 ft\n\nx; in\n");
    EXPECT_EQ(program.note, "carriage returns at line ends are ignored");
}

TEST(program_text, keeps_a_carriage_return_within_a_line) {
    const program_text program = read("# a\rb\n1 m\r");
    EXPECT_EQ(program.text, "# a\rb\n1 m\r");
    EXPECT_EQ(program.note, "");
}

TEST(program_text, loses_a_byte_order_mark_with_a_note) {
    const program_text program = read("\xEF\xBB\xBF"
                                      "1 m\n");
    EXPECT_EQ(program.text, "1 m\n");
    EXPECT_EQ(program.note, "a byte order mark is ignored");
}

TEST(program_text, has_one_note_for_both) {
    EXPECT_EQ(read("\xEF\xBB\xBF"
                   "1 m\r\n")
                  .note,
              "a byte order mark and carriage returns at line ends are ignored");
}

TEST(program_text, keeps_the_bytes_of_a_mark_that_is_not_at_the_start) {
    EXPECT_EQ(read("1 m\n\xEF\xBB\xBF").text, "1 m\n\xEF\xBB\xBF");
}

TEST(program_text, is_rejected_in_UTF_16) {
    for (const char* const bytes : {"\xFF\xFE\x31\x0A", "\xFE\xFF\x31\x0A"}) {
        std::istringstream in(bytes);
        program_text program;
        EXPECT_FALSE(program.read(in));
        EXPECT_EQ(program.reason, "is encoded in UTF-16; save it as UTF-8");
    }
}

} // namespace
