#include "language/driver.h"
#include "language/session.h"
#include "language/unit_definitions.h"
#include "machine/calculator.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace metrify {

bool operator==(const definition_fault& a, const definition_fault& b) {
    return a.line == b.line && a.message == b.message;
}
void PrintTo(const definition_fault& fault, std::ostream* out) {
    *out << fault.line << ": " << fault.message;
}

} // namespace metrify

namespace {

using namespace metrify;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<definition_fault> faults_of(const std::string& definitions) {
    calculator used;
    const calculator_scope scope(used);
    return define_units(definitions);
}

std::string listing_with(const std::string& definitions, const char* program) {
    return std::string(interpret_dimensional_input_lines(program, definitions).view());
}

TEST(unit_definitions, define_units_that_a_program_uses_and_its_listing_does_not_show) {
    EXPECT_EQ(listing_with("DefUnit(pace, 0.75 m)\n", "4 pace\n2 m; pace\n"),
              "[  1 ] 4 pace\n        = 3 m\n\n[  2 ] 2 m; pace\n        = 2.66667 pace\n\n");
}

TEST(unit_definitions, can_use_units_of_earlier_lines) {
    EXPECT_EQ(listing_with("DefUnit(pace, 0.75 m)\nDefUnit(step, 2 pace)", "1 step"),
              "[  1 ] 1 step\n        = 1.5 m\n\n");
}

TEST(unit_definitions, can_be_replaced_by_later_lines_and_by_the_program) {
    EXPECT_EQ(listing_with("DefUnit(pace, 0.75 m)\nDefUnit(pace, 0.8 m)", "1 pace"),
              "[  1 ] 1 pace\n        = 0.8 m\n\n");
    EXPECT_NE(
        listing_with("DefUnit(pace, 0.75 m)", "DefUnit(pace, 3 m)\n1 pace").find("1 pace\n        = 3 m"),
        std::string::npos);
}

TEST(unit_definitions, are_forgotten_by_the_next_program) {
    listing_with("DefUnit(pace, 0.75 m)", "1 pace");
    EXPECT_EQ(interpret_dimensional_input_lines("1 pace").view(),
              "[  1 ] 1 pace\n       ERROR: 'pace' undefined.\n\n");
}

TEST(unit_definitions, may_have_comments_empty_lines_blanks_and_continuations) {
    EXPECT_THAT(faults_of("# paces\n\n  DefUnit(pace, 0.75 m)  # a step\n\nDefUnit(twice, \\\n2 pace)\n"),
                IsEmpty());
    EXPECT_THAT(faults_of(""), IsEmpty());
}

TEST(unit_definitions, report_a_fault_with_the_number_of_its_line) {
    EXPECT_THAT(faults_of("# one\nDefUnit(m, 2 ft)\n\nDefUnit(a, \\\n 2 foo)\nDefUnit(b, 0)\n"),
                ElementsAre(definition_fault{2, "ERROR: New unit name 'm' matches an existing base unit."},
                            definition_fault{4, "ERROR: 'foo' undefined."},
                            definition_fault{6, "ERROR: Cannot define a unit with value zero."}));
}

TEST(unit_definitions, define_the_units_of_the_other_lines_after_a_fault) {
    EXPECT_EQ(listing_with("DefUnit(m, 2 ft)\nDefUnit(pace, 0.75 m)", "1 pace"),
              "[  1 ] 1 pace\n        = 0.75 m\n\n");
}

TEST(unit_definitions, are_nothing_but_definitions) {
    EXPECT_THAT(faults_of("x = 3\nMKS(N)"),
                ElementsAre(definition_fault{1, "only DefUnit lines and comments can be here"},
                            definition_fault{2, "only DefUnit lines and comments can be here"}));
    EXPECT_THAT(faults_of("DefUnit(pace)"),
                ElementsAre(definition_fault{1, "the DefUnit line defines no unit"}));
}

TEST(unit_definitions, last_for_a_whole_session_and_after_it_starts_over) {
    session it("DefUnit(pace, 0.75 m)");
    EXPECT_EQ(it.enter("4 pace"), "[  1 ] 4 pace\n        = 3 m\n\n");
    it.start_over();
    EXPECT_EQ(it.enter("4 pace"), "[  1 ] 4 pace\n        = 3 m\n\n");
}

} // namespace
