// The manual pages, the completion in the shell and the pictures of the documents agree with the programs.

#include "tests/shell_posix.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <regex>
#include <set>
#include <string>

namespace {

std::string output_of(const std::string& command) {
    return metrify::test::run_shell("cd '" METRIFY_SOURCE_DIR "' && " + command + " 2>&1").output;
}

std::string read_file(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

// The long options in a text.
std::set<std::string> options_in(const std::string& text) {
    static const std::regex option("--[a-z][a-z-]*");
    return {std::sregex_token_iterator(text.begin(), text.end(), option), std::sregex_token_iterator()};
}

std::string manual(const std::string& name) {
    const std::string page = read_file(METRIFY_SOURCE_DIR "/docs/man/" + name + ".1");
    return std::regex_replace(page, std::regex(R"(\\-)"), "-");
}

const std::string metrify = METRIFY_BINARY_DIR "/metrify ";

// `convert`, `run` and the others, as listed by the help.
const std::array<std::string, 6> commands = {"convert", "run", "columns", "plot", "units", "functions"};

std::set<std::string> options_of_metrify() {
    std::set<std::string> all = options_in(output_of(metrify + "--help"));
    for (const std::string& command : commands)
        all.merge(options_in(output_of(metrify + command + " --help")));
    return all;
}

TEST(manual_page, describes_every_option_of_metrify_and_no_other) {
    EXPECT_EQ(options_in(manual("metrify")), options_of_metrify());
}
TEST(manual_page, describes_every_command_of_metrify) {
    const std::string help = output_of(metrify + "--help");
    for (const std::string& command : commands) {
        EXPECT_NE(help.find("\n  " + command + " "), std::string::npos) << command;
        EXPECT_TRUE(std::regex_search(manual("metrify"), std::regex("\n\\.B[IR] " + command + "\\b")))
            << command;
    }
}
TEST(manual_page, describes_every_option_of_metrify_sheet_and_no_other) {
    std::set<std::string> options = options_in(output_of(METRIFY_BINARY_DIR "/metrify-sheet --help"));
    options.insert("--serve"); // on Windows only
    EXPECT_EQ(options_in(manual("metrify-sheet")), options);
}

// What the shell offers for a command line.
std::string completed(const std::string& words) {
    return output_of("bash -c 'source completions/metrify.bash; COMP_WORDS=(" + metrify + words +
                     "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _metrify; echo ${COMPREPLY[@]}'");
}

TEST(shell_completion, offers_commands_units_and_options) {
    EXPECT_EQ(completed("col"), "columns\n");
    EXPECT_EQ(completed("convert 3 fathom"), "fathom fathoms\n");
    EXPECT_EQ(completed("3 ft fathom"), "fathom fathoms\n");
    EXPECT_EQ(completed("columns --from fathom"), "fathom fathoms\n");
    EXPECT_EQ(completed("columns --line"), "--line-buffered\n");
}
TEST(shell_completion, knows_every_option) {
    std::set<std::string> offered = options_in(read_file(METRIFY_SOURCE_DIR "/completions/metrify.bash"));
    EXPECT_EQ(offered, options_of_metrify());
}

TEST(picture_in_the_documents, is_what_its_command_draws) {
    const std::string arguments =
        "plot examples/projectile.txt --over 'elev = 0 .. 90 deg' --of range --of 'flight; s' -o ";
    EXPECT_NE(read_file(METRIFY_SOURCE_DIR "/docs/cli.md").find("metrify " + arguments + "projectile.svg"),
              std::string::npos);
    const std::string picture = testing::TempDir() + "metrify-projectile.svg";
    EXPECT_EQ(output_of(metrify + arguments + picture), "");
    EXPECT_EQ(read_file(picture), read_file(METRIFY_SOURCE_DIR "/docs/projectile.svg"));
    std::filesystem::remove(picture);
}

} // namespace
