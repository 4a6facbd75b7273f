// The examples of the documents for users: each block marked as a program gives the listing behind it. Blanks
// at the ends of lines are not shown there, and numbers next to zero differ with the platform's functions.

#include "calc/driver.h"
#include "calc/number_text.h"
#include "calc/solver_binding.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

const fs::path source_folder(METRIFY_SOURCE_DIR);

std::string read_file(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    EXPECT_TRUE(in.is_open()) << path;
    return {std::istreambuf_iterator<char>(in), {}};
}

/// The blocks with this mark, in order.
std::vector<std::string> blocks(const std::string& text, const std::string& mark) {
    const std::string opening = "```" + mark + "\n";
    std::vector<std::string> found;
    for (std::size_t at = text.find(opening); at != std::string::npos; at = text.find(opening, at)) {
        at += opening.size();
        const std::size_t end = text.find("```", at);
        found.push_back(text.substr(at, end - at));
    }
    return found;
}

bool is_same_word(const std::string& word, const std::string& expected) {
    if (word == expected)
        return true;
    double a = 0.0;
    double b = 0.0;
    const bool are_numbers = metrify::read_double(word.c_str(), a) == word.c_str() + word.size() &&
                             metrify::read_double(expected.c_str(), b) == expected.c_str() + expected.size();
    return are_numbers && std::fabs(a - b) <= 2e-6 + 2e-5 * std::fabs(b);
}

void expect_same_lines(const std::string& shown, const std::string& expected) {
    std::istringstream shown_lines(shown);
    std::istringstream expected_lines(expected);
    std::string line;
    for (std::string wanted; std::getline(expected_lines, wanted);) {
        ASSERT_TRUE(std::getline(shown_lines, line)) << wanted;
        std::istringstream words(line);
        std::istringstream wanted_words(wanted);
        std::string word;
        for (std::string wanted_word; wanted_words >> wanted_word;) {
            ASSERT_TRUE(words >> word) << line;
            EXPECT_TRUE(is_same_word(word, wanted_word)) << line << " instead of " << wanted;
        }
        EXPECT_FALSE(words >> word) << line << " instead of " << wanted;
    }
    while (std::getline(shown_lines, line))
        EXPECT_EQ(line.find_first_not_of(' '), std::string::npos) << line;
}

class document : public testing::TestWithParam<const char*> {};

TEST_P(document, shows_what_its_programs_give) {
    const std::string text = read_file(source_folder / "docs" / GetParam());
    const std::vector<std::string> programs = blocks(text, "program");
    const std::vector<std::string> listings = blocks(text, "listing");
    ASSERT_FALSE(programs.empty());
    ASSERT_EQ(programs.size(), listings.size());
    for (std::size_t i = 0; i < programs.size(); ++i) {
        metrify::teardown_solver_binding();
        const metrify::listing shown = metrify::interpret_dimensional_input_lines(programs[i].c_str());
        expect_same_lines(std::string(shown.view()), listings[i]);
    }
}

INSTANTIATE_TEST_SUITE_P(documents, document, testing::Values("language.md", "solving.md", "examples.md"),
                         [](const testing::TestParamInfo<const char*>& file) {
                             return fs::path(file.param).stem().string();
                         });

TEST(examples, stand_in_their_document_as_they_are) {
    const std::vector<std::string> shown =
        blocks(read_file(source_folder / "docs" / "examples.md"), "program");
    std::size_t count = 0;
    for (const fs::directory_entry& entry : fs::directory_iterator(source_folder / "examples")) {
        ++count;
        EXPECT_NE(std::find(shown.begin(), shown.end(), read_file(entry.path())), shown.end())
            << entry.path();
    }
    EXPECT_EQ(count, shown.size());
    EXPECT_GE(count, 8U);
}

} // namespace
