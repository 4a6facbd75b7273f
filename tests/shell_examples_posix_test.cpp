// Runs the shell examples in the documents: in an indented block each line "$ COMMAND" is followed by its
// output, up to the next command or the end of the block.

#include "tests/shell_posix.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr std::string_view indent = "    ";

struct example {
    std::string command;
    std::string output;
};

bool begins_with(std::string_view text, std::string_view beginning) {
    return text.substr(0, beginning.size()) == beginning;
}

std::vector<example> examples_of(const fs::path& document) {
    std::vector<example> found;
    std::ifstream in(document);
    std::string line;
    std::string empty_lines; // part of the output only if more of it follows
    bool is_in_example = false;
    while (std::getline(in, line)) {
        if (begins_with(line, "    $ ")) {
            found.push_back({line.substr(6), {}});
            is_in_example = true;
            empty_lines.clear();
        } else if (line.empty()) {
            empty_lines += '\n';
        } else if (is_in_example && begins_with(line, indent)) {
            found.back().output += empty_lines + line.substr(indent.size()) + '\n';
            empty_lines.clear();
        } else {
            is_in_example = false;
        }
    }
    return found;
}

std::string with(std::string text, std::string_view what, std::string_view by) {
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + by.size()))
        text.replace(at, what.size(), by);
    return text;
}

// Empty lines at the end of the output are not shown in a document.
std::string without_last_newlines(std::string text) {
    text.erase(text.find_last_not_of('\n') + 1);
    return text;
}

// The programs of the current build are run instead of those in build/release.
std::string output_of(const std::string& command) {
    const std::string build = METRIFY_BINARY_DIR "/";
    const std::string here =
        with(with(command, "build/release/", build), "./run ", build + "metrify convert ");
    return metrify::test::run_shell("cd '" METRIFY_SOURCE_DIR "' && { " + here + "; } 2>&1").output;
}

class shell_examples : public testing::TestWithParam<fs::path> {};

TEST_P(shell_examples, give_the_output_in_their_document) {
    for (const example& shown : examples_of(GetParam()))
        EXPECT_EQ(without_last_newlines(output_of(shown.command)), without_last_newlines(shown.output))
            << GetParam() << ": $ " << shown.command;
}

std::vector<fs::path> all_documents() {
    std::vector<fs::path> found = {METRIFY_SOURCE_DIR "/README.md"};
    for (const fs::directory_entry& entry : fs::directory_iterator(METRIFY_SOURCE_DIR "/docs"))
        if (entry.path().extension() == ".md")
            found.push_back(entry.path());
    return found;
}

std::vector<fs::path> documents_with_examples() {
    std::vector<fs::path> found;
    for (const fs::path& document : all_documents())
        if (!examples_of(document).empty())
            found.push_back(document);
    return found;
}

INSTANTIATE_TEST_SUITE_P(documents, shell_examples, testing::ValuesIn(documents_with_examples()),
                         [](const auto& document) { return with(document.param.stem().string(), "-", "_"); });

// The documents without examples are about Windows, spreadsheets, testing or Python, whose examples have
// tests of their own, or are a table that another test checks.
TEST(documents, have_examples_except_for_some) {
    std::set<std::string> without;
    for (const fs::path& document : all_documents())
        if (examples_of(document).empty())
            without.insert(document.filename().string());
    for (const char* known : {"embedding.md", "integration.md", "libreoffice.md", "performance.md",
                              "problems.md", "python.md", "scaling.md", "spreadsheets.md", "testing.md"})
        without.erase(known);
    EXPECT_THAT(without, testing::IsEmpty());
}

TEST(readme, has_examples) {
    EXPECT_GE(examples_of(METRIFY_SOURCE_DIR "/README.md").size(), 2u);
}

// An example without output would pass with any command.
TEST(documents, show_the_output_of_each_example) {
    for (const fs::path& document : all_documents()) {
        for (const example& shown : examples_of(document))
            EXPECT_NE(shown.output.find_first_not_of(" \n"), std::string::npos)
                << document << ": $ " << shown.command;
    }
}

} // namespace
