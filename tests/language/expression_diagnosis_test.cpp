#include "language/expression_diagnosis.h"
#include "machine/variables.h"
#include "tests/testing.h"
#include "units/user_units.h"

#include <gtest/gtest.h>
#include <string>

namespace {

using namespace metrify;

class diagnosis : public testing::Test {
  protected:
    diagnosis() { free_all_vars(); }
    ~diagnosis() override { free_all_vars(); }

    static std::string of(const char* rest) {
        work_text err;
        diagnose_rest_of_expression(cursor(rest), err.str);
        return std::string(err.view());
    }
    // The message, or an empty text if nothing is reported.
    static std::string first_undefined(const char* text) {
        work_text err;
        const bool found = report_first_undefined(cursor(text), err.str);
        EXPECT_EQ(found, !err.view().empty()) << text;
        return std::string(err.view());
    }
};

TEST_F(diagnosis, finds_units_after_a_value_that_has_units) {
    EXPECT_EQ(of("(m"), "ERROR: Unit assignment error -- value before '(m' must be dimensionless.\n");
    // Quoted up to the first blank, operator or sign.
    for (const char* rest : {"(s) 5", "(s)\t5", "(s)/5", "(s)*5", "(s)^5", "(s)+5", "(s)-5", "(s)\n5"})
        EXPECT_EQ(of(rest), "ERROR: Unit assignment error -- value before '(s)' must be dimensionless.\n")
            << rest;
}

TEST_F(diagnosis, finds_the_first_undefined_name) {
    add_var("x", scalar(1));
    EXPECT_EQ(of("x foo bar"), "ERROR: 'foo' undefined.\n");
    EXPECT_EQ(of("4 + sin(x) + ft + foo"), "ERROR: 'foo' undefined.\n");
    EXPECT_EQ(of("4 SIN Ft"), "ERROR: 'Ft' undefined.\n");
}

TEST_F(diagnosis, quotes_the_rest_of_the_statement_otherwise) {
    EXPECT_EQ(of("4"), "ERROR: Syntax error or undefined variable near or in '4'.\n");
    EXPECT_EQ(of("4 5 ft; m"), "ERROR: Syntax error or undefined variable near or in '4 5 ft'.\n");
    EXPECT_EQ(of("4 # note"), "ERROR: Syntax error or undefined variable near or in '4 '.\n");
    EXPECT_EQ(of("$?\n5"), "ERROR: Syntax error or undefined variable near or in '$?'.\n");
}

TEST_F(diagnosis, searches_only_the_statement) {
    EXPECT_EQ(first_undefined("4; foo"), "");
    EXPECT_EQ(first_undefined("4 # foo"), "");
    EXPECT_EQ(first_undefined("4\nfoo"), "");
    EXPECT_EQ(first_undefined("4 \\\nfoo"), "ERROR: 'foo' undefined.\n");
}

TEST_F(diagnosis, separates_digits_from_names) {
    EXPECT_EQ(first_undefined("2foo"), "ERROR: 'foo' undefined.\n");
    EXPECT_EQ(first_undefined("_foo"), "ERROR: 'foo' undefined.\n");
    EXPECT_EQ(first_undefined("m2"), "ERROR: 'm2' undefined.\n");
}

TEST_F(diagnosis, reports_a_statement_that_has_ended) {
    for (const char* text : {"", "   ", "; m", "# note", "\n1"})
        EXPECT_EQ(first_undefined(text), "ERROR:  Unexpected end of input.\n") << text;
}

} // namespace
