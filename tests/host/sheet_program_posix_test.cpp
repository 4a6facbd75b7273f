// The command line of metrify-sheet.

#include "tests/shell_posix.h"

#include <dlfcn.h>
#include <gnu/libc-version.h>
#include <gtest/gtest.h>
#include <string>

namespace {

using metrify::test::shell_result;

// The output has both streams.
shell_result run_sheet(const std::string& arguments) {
    return metrify::test::run_shell(METRIFY_BINARY_DIR "/metrify-sheet " + arguments + " 2>&1");
}

bool contains(const std::string& text, const char* part) {
    return text.find(part) != std::string::npos;
}

// The output of the program for one conversion with the options.
std::string release_with(const std::string& options) {
    return run_sheet(options + " '=Metrify(1,\"m\",\"m\")'").output;
}

TEST(sheet_program, evaluates_its_arguments_in_their_order) {
    const shell_result run = run_sheet("'=1+1' '=Metrify(3.5,\"ft\",\"m\")' '={1,2;3,4}'");
    EXPECT_EQ(run.output, "2\n1.0668\t\"m\\n\\n\"\n1\t2\n3\t4\n");
    EXPECT_EQ(run.status, 0);
}

TEST(sheet_program, reads_formulas_from_standard_input) {
    const shell_result run = run_sheet("- <<'END'\n=1\n=2\nEND\n");
    EXPECT_TRUE(run.output.starts_with("1\n2\n")) << run.output;
}

TEST(sheet_program, reports_an_invalid_formula) {
    const shell_result run = run_sheet("'1+'");
    EXPECT_TRUE(contains(run.output, "metrify-sheet: no formula: 1+\n"));
    EXPECT_TRUE(contains(run.output, "#NAME?\n"));
    EXPECT_EQ(run.status, 1);
}

TEST(sheet_program, needs_a_formula) {
    const shell_result run = run_sheet("");
    EXPECT_EQ(run.output, "metrify-sheet: a FORMULA is required\n");
    EXPECT_EQ(run.status, 2);
}

TEST(sheet_program, refuses_unknown_options) {
    EXPECT_EQ(run_sheet("--nothing '=1'").status, 2);
    EXPECT_EQ(run_sheet("--refuse '=1'").status, 2);
    EXPECT_EQ(run_sheet("--wide --narrow '=1'").status, 2);
}

TEST(sheet_program, presses_escape_after_the_given_time) {
    const shell_result run =
        run_sheet("--escape-after 100 '=Metrify(1,\"* BesselJ(2000000000, 2000000001)\",\"\")'");
    EXPECT_EQ(run.output, "\"ERROR: interrupted.\\n\\n\"\t\"\"\n");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run_sheet("--escape-after soon '=1'").status, 2);
}

TEST(sheet_program, has_the_releases_4_to_16) {
    EXPECT_EQ(run_sheet("--release 3 '=1'").status, 2);
    EXPECT_EQ(run_sheet("--release 17 '=1'").status, 2);
    EXPECT_EQ(release_with("--release 4"), "1\t\"m\\n\\n\"\n");
    EXPECT_TRUE(release_with("--release 16").starts_with("\"This version of Excel is not supported."))
        << release_with("--release 16");
}

TEST(sheet_program, has_wide_text_from_release_12_on) {
    for (const char* options : {"--wide", "--narrow", "--release 11 --narrow", "--release 12 --wide"})
        EXPECT_EQ(release_with(options), "1\t\"m\\n\\n\"\n") << options;
    for (const char* options : {"--release 11 --wide '=1'", "--release 12 --narrow '=1'"}) {
        const shell_result run = run_sheet(options);
        EXPECT_EQ(run.output, "metrify-sheet: a spreadsheet of that version passes other text\n") << options;
        EXPECT_EQ(run.status, 2) << options;
    }
}

TEST(sheet_program, calculates_on_several_threads) {
    EXPECT_EQ(run_sheet("--threads 3 '=1' '=2' '=3' '=4'").output, "1\n2\n3\n4\n");
    EXPECT_EQ(run_sheet("--threads 0 '=1'").status, 2);
}

TEST(sheet_program, loads_another_module) {
    const shell_result missing = run_sheet("--module /nowhere.so '=1'");
    EXPECT_TRUE(missing.output.starts_with("metrify-sheet: ")) << missing.output;
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(run_sheet("--module " METRIFY_BINARY_DIR "/Metrify.so '=1'").output, "1\n");
}

TEST(sheet_program, reports_a_module_that_is_not_an_add_in) {
    Dl_info library{};
    ASSERT_NE(dladdr(reinterpret_cast<void*>(&gnu_get_libc_version), &library), 0);
    const shell_result run = run_sheet(std::string("--module ") + library.dli_fname + " '=1'");
    EXPECT_EQ(run.output, "metrify-sheet: the add-in did not open\n");
    EXPECT_EQ(run.status, 1);
}

TEST(sheet_program, runs_a_macro) {
    EXPECT_EQ(run_sheet("--macro Metrify_Macro").output, "cell\t\nwizard\t=Metrify()\ncell\t=Metrify()\n");
    EXPECT_EQ(run_sheet("--macro Metrify_Macro --refuse '=1'").output,
              "cell\t=1\nalert\tDelete existing contents in cell?\tCancel\ncell\t=1\n");
}

TEST(sheet_program, is_found_by_other_programs_on_windows_only) {
    const shell_result run = run_sheet("--serve");
    EXPECT_EQ(run.output, "metrify-sheet: programs can't be found by others on this system\n");
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run_sheet("--serve '=1'").status, 2);
}

TEST(sheet_program, prints_its_version_and_its_options) {
    EXPECT_TRUE(run_sheet("--version").output.starts_with("metrify-sheet "));
    EXPECT_EQ(run_sheet("--version").status, 0);
    EXPECT_TRUE(contains(run_sheet("--help").output, "--release"));
    EXPECT_EQ(run_sheet("--help").status, 0);
}

} // namespace
