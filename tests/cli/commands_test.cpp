#include "cli/commands.h"
#include "language/driver.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <stdexcept>

namespace {

using namespace metrify;

struct outcome {
    int status = 0;
    std::string out = {};
    std::string err = {};
};

outcome convert(double val, std::string_view in_units, std::string_view out_units) {
    std::ostringstream out;
    std::ostringstream err;
    const int status = convert_command(val, in_units, out_units, out, err);
    return {status, out.str(), err.str()};
}

outcome run(const std::vector<std::string>& files, const std::string& standard_input = {},
            const run_options& options = {}) {
    std::istringstream in(standard_input);
    std::ostringstream out;
    std::ostringstream err;
    const int status = run_command(files, in, out, err, options);
    return {status, out.str(), err.str()};
}

// The lines without the heading. An empty list has a special status.
std::string functions(std::string_view text) {
    constexpr std::string_view heading = "function                      what it gives\n";
    std::ostringstream out;
    std::ostringstream err;
    const int status = functions_command(text, out, err);
    EXPECT_EQ(status, out.str().empty() ? 1 : 0);
    EXPECT_EQ(err.str().empty(), status == 0);
    const std::string list = out.str();
    return list.rfind(heading, 0) == 0 ? list.substr(heading.size()) : list;
}

class program_file {
  public:
    explicit program_file(const std::string& text)
        : path_(std::filesystem::temp_directory_path() / ("metrify-" + std::to_string(++number) + ".txt")) {
        std::ofstream(path_, std::ios::binary) << text;
    }
    ~program_file() { std::filesystem::remove(path_); }
    program_file(const program_file&) = delete;
    program_file& operator=(const program_file&) = delete;
    std::string path() const { return path_.string(); }

  private:
    static inline int number = 0;
    std::filesystem::path path_;
};

// convert

TEST(convert_command, prints_number_and_unit) {
    const outcome it = convert(3.5, "ft", "m");
    EXPECT_EQ(it.status, 0);
    EXPECT_EQ(it.out, "1.0668 m\n");
    EXPECT_EQ(it.err, "");
}
TEST(convert_command, prints_only_the_number_if_there_is_no_unit) {
    EXPECT_EQ(convert(3.5, "", "").out, "3.5\n");
}
TEST(convert_command, prints_an_error_cell_on_the_error_stream) {
    const outcome it = convert(3.5, "ft", "kg");
    EXPECT_EQ(it.status, 1);
    EXPECT_EQ(it.out, "");
    EXPECT_EQ(it.err, "ERROR IN REQUESTED OUTPUT: 'kg' is incompatible.\n");
}
TEST(convert_command, explains_an_empty_error_cell) {
    const outcome lines = convert(5, "m\n6 s", "m");
    EXPECT_EQ(lines.status, 1);
    EXPECT_EQ(lines.out, "");
    EXPECT_EQ(lines.err, "metrify: the error cell is empty, since a \"=\" precedes the message:\n"
                         "[  1 ] 5 m\n        = 5 m\n\n"
                         "[  2 ] 6 s; m\n       ERROR IN REQUESTED OUTPUT: 'm' is incompatible.\n"
                         "        = 6 s\n\n");
    EXPECT_EQ(convert(5, "m", "kg # =").err.find("metrify: the error cell is empty"), 0U);
}

TEST(convert_command, shows_the_quantity_in_further_units_on_request) {
    std::ostringstream out;
    std::ostringstream err;
    convert_command(68, "km", "m", out, err, {{}, false, false, true});
    EXPECT_EQ(out.str(), "68000 m\n  42.2532 mi\n  74365.7 yd\n  223097 ft\n");
}
TEST(convert_command, explains_an_error_only_with_hints) {
    EXPECT_EQ(convert(180, "lb", "kg").err, "ERROR IN REQUESTED OUTPUT: 'kg' is incompatible.\n");
    std::ostringstream out;
    std::ostringstream err;
    EXPECT_EQ(convert_command(180, "lb", "kg", out, err, {{}, false, true}), 1);
    EXPECT_EQ(out.str(), "");
    EXPECT_EQ(err.str(),
              "ERROR IN REQUESTED OUTPUT: 'kg' is incompatible.\n"
              "metrify: hint: `lb` is a force and `lbm` the mass: `metrify convert 180 lbm kg` gives "
              "81.6466 kg\n");
}
TEST(refuse_number, corrects_it_with_hints) {
    std::ostringstream err;
    EXPECT_EQ(refuse_number("1/2", "in", "mm", err, {{}, false, true}), 2);
    EXPECT_EQ(err.str(),
              "VAL: '1/2' is not a number\nRun with --help for more information.\n"
              "metrify: hint: a unit belongs to the number before it, so a fraction needs parentheses: "
              "`metrify convert 0.5 in mm` gives 12.7 mm\n");
}
TEST(refuse_number, has_no_hint_for_a_text_without_a_correction) {
    std::ostringstream err;
    refuse_number("abc", "in", "mm", err, {{}, false, true});
    EXPECT_EQ(err.str(), "VAL: 'abc' is not a number\nRun with --help for more information.\n");
}

TEST(refuse_words, names_those_that_were_not_expected) {
    std::ostringstream err;
    EXPECT_EQ(refuse_words({"m"}, {"3.5", "ft", "to", "m"}, err, {}), 2);
    EXPECT_EQ(err.str(),
              "The following argument was not expected: m\nRun with --help for more information.\n");
    err.str({});
    EXPECT_EQ(refuse_words({"m", "s"}, {"3.5", "ft", "to", "m", "s"}, err, {}), 2);
    EXPECT_EQ(err.str(),
              "The following arguments were not expected: m s\nRun with --help for more information.\n");
}
TEST(refuse_words, explains_them_with_hints) {
    std::ostringstream err;
    EXPECT_EQ(refuse_words({"m"}, {"3.5", "ft", "to", "m"}, err, {{}, false, true}), 2);
    EXPECT_EQ(err.str(),
              "The following argument was not expected: m\nRun with --help for more information.\n"
              "metrify: hint: the units follow each other without `to`: `metrify convert 3.5 ft m` "
              "gives 1.0668 m\n");
}
TEST(refuse_words, does_not_explain_an_unknown_option) {
    std::ostringstream err;
    refuse_words({"--foo"}, {"3.5", "ft", "m"}, err, {{}, false, true});
    EXPECT_EQ(err.str(),
              "The following argument was not expected: --foo\nRun with --help for more information.\n");
}

// run

TEST(run_command, writes_the_same_listing_with_hints_which_go_to_the_error_stream) {
    std::istringstream in("x = 180 lb\nx; N\n5 ft to m\n");
    std::ostringstream out;
    std::ostringstream err;
    EXPECT_EQ(run_command({}, in, out, err, {}, {{}, false, true}), 0);
    EXPECT_EQ(out.str(), run({}, "x = 180 lb\nx; N\n5 ft to m\n").out);
    EXPECT_EQ(err.str(),
              "metrify: hint for `5 ft to m`: a conversion is written `3 ft; m`, without `to`: `5 ft; m` "
              "gives 1.524 m\n");
}
TEST(run_command, prints_the_listing_of_standard_input) {
    const std::string listing = "[  1 ] x = 3 ft\n       x = 0.9144 m\n\n[  2 ] x; in\n        = 36 in\n\n";
    for (const std::vector<std::string>& files : {std::vector<std::string>{}, {"-"}}) {
        const outcome it = run(files, "x = 3 ft\nx; in\n");
        EXPECT_EQ(it.status, 0);
        EXPECT_EQ(it.out, listing);
        EXPECT_EQ(it.err, "");
    }
}
TEST(run_command, runs_each_file_on_its_own) {
    const program_file first("x = 3 m\n");
    const program_file second("x\n");
    const outcome it = run({first.path(), second.path()});
    EXPECT_EQ(it.status, 0);
    EXPECT_EQ(it.out, "[  1 ] x = 3 m\n       x = 3 m\n\n[  1 ] x\n       ERROR: 'x' undefined.\n\n");
}
TEST(run_command, reports_a_missing_file_and_runs_the_others) {
    const program_file there("1 m\n");
    const outcome it = run({"no such file", there.path()});
    EXPECT_EQ(it.status, 2);
    EXPECT_EQ(it.out, "[  1 ] 1 m\n        = 1 m\n\n");
    EXPECT_EQ(it.err, "metrify: no such file: No such file or directory\n");
}
TEST(run_command, rejects_a_folder) {
    const outcome it = run({std::filesystem::temp_directory_path().string()});
    EXPECT_EQ(it.status, 2);
    EXPECT_EQ(it.out, "");
    EXPECT_EQ(it.err.find("metrify: " + std::filesystem::temp_directory_path().string() + ": "), 0U)
        << it.err;
    EXPECT_EQ(it.err.find("Success"), std::string::npos) << it.err;
}
TEST(run_command, rejects_a_zero_byte_as_text_after_it_would_be_lost) {
    const outcome it = run({}, std::string("1 m\0 2 m", 8));
    EXPECT_EQ(it.status, 2);
    EXPECT_EQ(it.out, "");
    EXPECT_EQ(it.err,
              "metrify: standard input: holds a zero byte at offset 3, where a program text would end\n");
}
TEST(run_command, distinguishes_a_read_error_from_the_end_of_input) {
    class failing_buffer : public std::stringbuf {
      public:
        failing_buffer() : std::stringbuf("1 m\n") {}
        int_type underflow() override {
            errno = 0;
            throw std::runtime_error("the device is gone");
        }
    } buffer;
    std::istream in(&buffer);
    std::ostringstream out;
    std::ostringstream err;
    EXPECT_EQ(run_command({}, in, out, err), 2);
    EXPECT_EQ(out.str(), "");
    EXPECT_EQ(err.str(), "metrify: standard input: cannot be read to its end\n");
}
TEST(run_command, accepts_an_empty_file) {
    const program_file empty("");
    const outcome it = run({empty.path()});
    EXPECT_EQ(it.status, 0);
    EXPECT_EQ(it.err, "");
}

TEST(run_command, notes_the_carriage_returns_that_it_ignores_on_the_error_stream) {
    const outcome it = run({}, "x = 3 ft\r\n");
    EXPECT_EQ(it.status, 0);
    EXPECT_EQ(it.out, "[  1 ] x = 3 ft\n       x = 0.9144 m\n\n");
    EXPECT_EQ(it.err, "metrify: standard input: carriage returns at line ends are ignored\n");
}
TEST(run_command, fails_for_a_failed_statement_only_if_it_is_strict) {
    run_options strict;
    strict.is_strict = true;
    for (const char* program : {"1 m + 1 s\n", "1 m; kg\n", "1 m; kg; cm\n", "nothing\n2 m\n", "end\n",
                                "DefUnit(ell, 0 m)\n", "begin\ny = x\nend\n"}) {
        EXPECT_EQ(run({}, program).status, 0) << program;
        EXPECT_EQ(run({}, program, strict).status, 1) << program;
        EXPECT_EQ(run({}, program, strict).out, run({}, program).out);
    }
}
TEST(run_command, succeeds_if_no_statement_fails_also_if_it_is_strict) {
    run_options strict;
    strict.is_strict = true;
    for (const char* program : {"", "# ERROR\n", "1 m\n", "x = 1 m # ERROR:\nx; cm; MKS\n", "cgs\n",
                                "x = 1\nbegin\ny = x^2 - 4\nend\nsolve(y, x)\n"})
        EXPECT_EQ(run({}, program, strict).status, 0) << program;
}
TEST(run_command, is_strict_for_each_of_several_files) {
    run_options strict;
    strict.is_strict = true;
    const program_file bad("nothing\n");
    const program_file good("1 m\n");
    EXPECT_EQ(run({bad.path(), good.path()}, {}, strict).status, 1);
    EXPECT_EQ(run({bad.path(), "no such file"}, {}, strict).status, 2);
    EXPECT_EQ(run({"no such file", bad.path()}, {}, strict).status, 2);
}

// output

TEST(checked_output, keeps_the_status_if_all_output_is_written) {
    std::ostringstream out;
    std::ostringstream err;
    EXPECT_EQ(checked_output(1, out, err), 1);
    EXPECT_EQ(err.str(), "");
}
TEST(checked_output, has_a_message_and_a_status_for_lost_output) {
    std::ostringstream out;
    std::ostringstream err;
    out.setstate(std::ios::badbit);
    EXPECT_EQ(checked_output(0, out, err), 2);
    EXPECT_EQ(err.str(), "metrify: standard output: not all of it could be written\n");
}

// functions

TEST(functions_command, writes_a_heading_above_a_list) {
    std::ostringstream out;
    std::ostringstream err;
    functions_command("hyperbolic secant", out, err);
    EXPECT_EQ(out.str().find("function                      what it gives\nsech(x)"), 0U) << out.str();
}

TEST(functions_command, lists_each_function_on_one_line) {
    const std::string all = functions("");
    EXPECT_EQ(std::count(all.begin(), all.end(), '\n'), 89);
    EXPECT_NE(all.find("\nBesselJ(n, x)  "), std::string::npos);
}

TEST(functions_command, lists_the_functions_whose_line_contains_the_text) {
    EXPECT_EQ(functions("The hyperbolic secant"),
              "sech(x)                       The hyperbolic secant, 1/cosh(x)\n");
    EXPECT_EQ(functions("no such text"), "");
}

TEST(functions_command, ignores_the_case_of_the_text) {
    const std::string found = functions("bessel");
    EXPECT_EQ(std::count(found.begin(), found.end(), '\n'), 4);
    EXPECT_EQ(found.find("BesselJ(n, x)"), 0U) << found;
    EXPECT_EQ(functions("Bessel"), found);
    EXPECT_EQ(functions("BESSEL"), found);
    EXPECT_EQ(functions("the HYPERBOLIC secant"), functions("The hyperbolic secant"));
}

TEST(functions_command, shows_names_as_the_table_spells_them) {
    EXPECT_NE(functions("").find("\nlininterp(x1, y1, x2, y2, x)  "), std::string::npos);
    EXPECT_EQ(functions("LinInterp").find("### lininterp("), 0U);
}

TEST(functions_command, shows_the_help_of_a_function_named_in_any_case) {
    const std::string entry = "### sin(x)\n\nThe sine.\n\n- takes: a number or an angle\n- gives: a number\n"
                              "- domain: every x\n- example: `sin(30 deg)` shows `= 0.5`\n";
    EXPECT_EQ(functions("sin"), entry);
    EXPECT_EQ(functions("SIN"), entry);
}

TEST(functions_command, writes_the_document_with_every_entry_in_it) {
    std::ostringstream out;
    EXPECT_EQ(functions_document_command(out), 0);
    EXPECT_NE(out.str().find(functions("sin")), std::string::npos);
    EXPECT_NE(out.str().find(functions("EllipticPi")), std::string::npos);
}

TEST(convert_command, says_that_the_answer_has_neither_a_result_nor_a_message) {
    // The report of a run that failed in its last line takes the place of the result.
    interpret_dimensional_input_lines("x = 2\nbegin\ny = x^2 + 1\nend\nsolve(y, x)");
    const outcome it = convert(3.5, "ft", "m");
    EXPECT_EQ(it.status, 1);
    EXPECT_EQ(it.out, "");
    EXPECT_EQ(it.err,
              "metrify: the units hold a line break, and the answer has neither a result nor a message\n");
}

} // namespace
