#include "host/program/program_platform.h"
#include "host/program/sheet_command.h"

#include <gtest/gtest.h>
#include <sstream>

namespace metrify::host {
namespace {

struct SheetRun {
    int status;
    std::string output;
    std::string errors;
};

SheetRun RunSheet(SheetOptions options, const std::string& input = {}) {
    if (options.module.empty())
        options.module = ModuleBesideProgram();
    std::istringstream in(input);
    std::ostringstream out;
    std::ostringstream errors;
    const int status = SheetCommand(options, in, out, errors);
    return {status, out.str(), errors.str()};
}

TEST(sheet_command, writes_the_cells_of_a_result_with_tabs_between) {
    const SheetRun run = RunSheet({.module = {}, .formulas = {"=Metrify(3.5,\"ft\",\"m\")"}});
    EXPECT_EQ(run.output, "1.0668\t\"m\\n\\n\"\n");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.errors, "");
}

TEST(sheet_command, reads_formulas_from_the_input_for_a_dash) {
    const SheetRun run = RunSheet({.module = {}, .formulas = {"=1", "-", "=4"}}, "=2\r\n\n=3");
    EXPECT_EQ(run.output, "1\n2\n3\n4\n");
}

TEST(sheet_command, keeps_the_order_with_several_threads) {
    std::string input;
    std::string expected;
    for (int i = 1; i <= 200; ++i) {
        input += "=Metrify(" + std::to_string(i) + ",\"m\",\"m\")\n";
        expected += std::to_string(i) + "\t\"m\\n\\n\"\n";
    }
    EXPECT_EQ(RunSheet({.module = {}, .threads = 4, .formulas = {"-"}}, input).output, expected);
}

TEST(sheet_command, a_text_that_is_not_a_formula_is_reported) {
    const SheetRun run = RunSheet({.module = {}, .formulas = {"=1+", "=2"}});
    EXPECT_EQ(run.output, "#NAME?\n2\n");
    EXPECT_EQ(run.errors, "metrify-sheet: no formula: =1+\n");
    EXPECT_EQ(run.status, 1);
}

TEST(sheet_command, a_missing_module_is_reported) {
    const SheetRun run = RunSheet({.module = "no-such-module", .formulas = {"=1"}});
    EXPECT_EQ(run.output, "");
    EXPECT_TRUE(run.errors.starts_with("metrify-sheet: ")) << run.errors;
    EXPECT_EQ(run.status, 1);
}

TEST(sheet_command, release_16_gets_the_refusal) {
    const SheetRun run = RunSheet({.module = {}, .release = 16, .formulas = {"=Metrify(3.5,\"ft\",\"m\")"}});
    EXPECT_TRUE(run.output.starts_with("\"This version of Excel is not supported.  Check ")) << run.output;
    EXPECT_EQ(run.status, 0);
}

TEST(sheet_command, escape_ends_long_cells_and_no_others) {
    const std::string long_cell = "=Metrify(1,\"* BesselJ(2000000000, 2000000001)\",\"\")";
    const SheetRun run = RunSheet({.module = {},
                                   .threads = 2,
                                   .escape_after_milliseconds = 20,
                                   .formulas = {long_cell, "=Metrify(3.5,\"ft\",\"m\")", long_cell}});
    EXPECT_EQ(run.output, "\"ERROR: interrupted.\\n\\n\"\t\"\"\n"
                          "1.0668\t\"m\\n\\n\"\n"
                          "\"ERROR: interrupted.\\n\\n\"\t\"\"\n");
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.status, 0);
}

// ---- Macros

TEST(sheet_command, shows_the_effects_of_the_macro_on_an_empty_cell) {
    const SheetRun run = RunSheet({.module = {}, .macro = "Metrify_Macro"});
    EXPECT_EQ(run.output, "cell\t\nwizard\t=Metrify()\ncell\t=Metrify()\n");
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.status, 0);
}

TEST(sheet_command, shows_the_question_of_the_macro_and_the_effect_of_each_answer) {
    const SheetRun agreed = RunSheet({.module = {}, .macro = "Metrify_Macro", .formulas = {"=B2+1"}});
    EXPECT_EQ(agreed.output, "cell\t=B2+1\nalert\tDelete existing contents in cell?\tOK\n"
                             "wizard\t=Metrify()\ncell\t=Metrify()\n");
    const SheetRun refused =
        RunSheet({.module = {}, .macro = "Metrify_Macro", .agrees = false, .formulas = {"=B2+1"}});
    EXPECT_EQ(refused.output, "cell\t=B2+1\nalert\tDelete existing contents in cell?\tCancel\ncell\t=B2+1\n");
    EXPECT_EQ(refused.status, 0);
}

TEST(sheet_command, shows_that_a_refused_text_stays_in_either_family) {
    for (const int release : {4, 11, 12, 15}) {
        const SheetRun run = RunSheet({.module = {},
                                       .release = release,
                                       .macro = "Metrify_Macro",
                                       .agrees = false,
                                       .formulas = {"hello world", "about metrify"}});
        EXPECT_EQ(run.output, "cell\thello world\nalert\tDelete existing contents in cell?\tCancel\n"
                              "cell\thello world\n"
                              "cell\tabout metrify\nwizard\tabout metrify\ncell\tabout metrify\n")
            << release;
    }
}

TEST(sheet_command, shows_the_macro_on_one_cell_after_the_other) {
    const SheetRun run =
        RunSheet({.module = {}, .macro = "metrify_macro", .formulas = {"=metrify(1,\"ft\",\"m\")", "3.5"}});
    EXPECT_EQ(run.output, "cell\t=metrify(1,\"ft\",\"m\")\nwizard\t=metrify(1,\"ft\",\"m\")\n"
                          "cell\t=metrify(1,\"ft\",\"m\")\n"
                          "cell\t3.5\nalert\tDelete existing contents in cell?\tOK\n"
                          "wizard\t=Metrify()\ncell\t=Metrify()\n");
}

TEST(sheet_command, an_unknown_macro_is_reported) {
    for (const char* name : {"No_Macro", "Metrify"}) {
        const SheetRun run = RunSheet({.module = {}, .macro = name});
        EXPECT_EQ(run.output, "cell\t\n");
        EXPECT_EQ(run.errors, std::string("metrify-sheet: no macro: ") + name + "\n");
        EXPECT_EQ(run.status, 1);
    }
}

} // namespace
} // namespace metrify::host
