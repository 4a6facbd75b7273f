#include "tests/language/long_programs.h"

#include "tests/testing.h"

#include <cstdio>
#include <string_view>

namespace metrify {

namespace {

const std::string too_deep =
    "       ERROR: Cannot parse line -- parentheses and brackets are nested too deeply.\n\n";
const std::string one = "        = 1 \n\n";

std::string filled(std::string_view head, std::string_view piece, std::size_t size,
                   std::string_view tail = "") {
    return std::string(head) + repeated(piece, size / piece.size()) + std::string(tail);
}

std::string six_digits(std::size_t n) {
    char text[32];
    std::snprintf(text, sizeof text, "%g", static_cast<double>(n));
    return text;
}

const long_program programs[] = {
    // Nested constructs.
    {"open_parentheses",
     [](std::size_t n) -> long_text {
         return {repeated("(", n), too_deep};
     }},
    {"open_brackets",
     [](std::size_t n) -> long_text {
         return {repeated("[", n), too_deep};
     }},
    {"closed_parentheses",
     [](std::size_t n) -> long_text {
         return {repeated("(", n / 2) + "1" + repeated(")", n / 2), too_deep};
     }},
    {"signs_and_parentheses",
     [](std::size_t n) -> long_text {
         return {filled("", "-(", n), too_deep};
     }},
    {"vectors_in_vectors",
     [](std::size_t n) -> long_text {
         return {filled("", "[1,", n), too_deep};
     }},
    {"calls_in_calls",
     [](std::size_t n) -> long_text {
         return {filled("", "sin(", n), too_deep};
     }},
    {"calls_of_Number",
     [](std::size_t n) -> long_text {
         return {filled("", "Number(", n), too_deep};
     }},
    {"indices_in_indices",
     [](std::size_t n) -> long_text {
         return {filled("v = [1, 2, 3]\n", "v[", n), too_deep};
     }},
    {"powers_of_parentheses",
     [](std::size_t n) -> long_text {
         return {filled("", "2^(", n), too_deep};
     }},
    {"parentheses_in_an_assignment",
     [](std::size_t n) -> long_text {
         return {filled("x = ", "(", n), too_deep};
     }},
    {"parentheses_in_a_unit",
     [](std::size_t n) -> long_text {
         return {filled("1 ", "(", n), too_deep};
     }},
    {"parentheses_with_units_in_a_unit",
     [](std::size_t n) -> long_text {
         return {filled("1 ", "(m ", n),
                 "ERROR: Unit assignment error -- value before '(m' must be dimensionless.\n\n"};
     }},
    {"parentheses_in_an_exponent",
     [](std::size_t n) -> long_text {
         return {filled("1 m^", "(", n), too_deep};
     }},
    {"operators_in_an_exponent",
     [](std::size_t n) -> long_text {
         return {filled("1 m^", "*/", n), too_deep};
     }},
    {"parentheses_in_a_new_unit",
     [](std::size_t n) -> long_text {
         return {filled("DefUnit(foo, ", "(", n), too_deep + "\n"};
     }},
    {"parentheses_in_exceptions",
     [](std::size_t n) -> long_text {
         return {filled("MKS(", "(", n), " Default units = MKS with 0 exceptions.\n\n\n"};
     }},
    {"parentheses_in_a_request",
     [](std::size_t n) -> long_text {
         return {filled("1; ", "(", n), "' not recognized.\n        = 1 \n\n"};
     }},
    // Sequences of operators.
    {"sum",
     [](std::size_t n) -> long_text {
         return {filled("1", "+1", n), "        = " + six_digits(1 + n / 2) + " \n\n"};
     }},
    {"difference",
     [](std::size_t n) -> long_text {
         return {filled("0", "-1", n), "        = -" + six_digits(n / 2) + " \n\n"};
     }},
    {"product",
     [](std::size_t n) -> long_text {
         return {filled("1", "*1", n), one};
     }},
    {"quotient",
     [](std::size_t n) -> long_text {
         return {filled("1", "/1", n), one};
     }},
    {"power",
     [](std::size_t n) -> long_text {
         return {filled("1", "^1", n), one};
     }},
    {"sum_of_variables",
     [](std::size_t n) -> long_text {
         return {filled("x = 1\nx", "+x", n), "        = " + six_digits(1 + n / 2) + " \n\n"};
     }},
    {"product_of_variables",
     [](std::size_t n) -> long_text {
         return {filled("x = 1\nx", " * x", n), one};
     }},
    {"operators_without_operands",
     [](std::size_t n) -> long_text {
         return {filled("1", " + +", n), one};
     }},
    {"stars",
     [](std::size_t n) -> long_text {
         return {filled("1", " *", n), one};
     }},
    {"slashes",
     [](std::size_t n) -> long_text {
         return {filled("1", " /", n), one};
     }},
    {"carets",
     [](std::size_t n) -> long_text {
         return {filled("1", "^", n), "       ERROR: Math expression incomplete.\n\n"};
     }},
    // Sequences of units.
    {"units_without_a_number",
     [](std::size_t n) -> long_text {
         return {filled("m", " m", n), "       ERROR: 'm' undefined.\n\n"};
     }},
    {"units",
     [](std::size_t n) -> long_text {
         return {filled("1", " m", n), "        = 1 m^" + std::to_string(n / 2) + "\n\n"};
     }},
    {"units_with_stars",
     [](std::size_t n) -> long_text {
         return {filled("1 m", "*m", n), "        = 1 m^" + std::to_string(1 + n / 2) + "\n\n"};
     }},
    {"units_with_slashes",
     [](std::size_t n) -> long_text {
         return {filled("1 ", "/m", n), "        = 1 / m^" + std::to_string(n / 2) + "\n\n"};
     }},
    {"units_in_parentheses",
     [](std::size_t n) -> long_text {
         return {filled("1 ", "(m)", n), "        = 1 m^" + std::to_string(n / 3) + "\n\n"};
     }},
    {"product_in_an_exponent",
     [](std::size_t n) -> long_text {
         return {filled("1 m^(", "1 ", n, ")"), "        = 1 m\n\n"};
     }},
    // Lists.
    {"components",
     [](std::size_t n) -> long_text {
         return {filled("[1", ",1", n), "       ERROR: vectors can only have 3 components.\n\n"};
     }},
    {"arguments",
     [](std::size_t n) -> long_text {
         return {filled("sqrt(1", ",1", n),
                 "ERROR: Argument list for function 'sqrt' not correctly finished.\n\n"};
     }},
    {"references",
     [](std::size_t n) -> long_text {
         return {filled("solve(x", " x", n),
                 "ERROR: Argument list for function 'solve' not correctly finished.\n\n"};
     }},
    {"requests",
     [](std::size_t n) -> long_text {
         return {filled("1 m", ";m", n), " = 1 m = 1 m\n\n"};
     }},
    {"empty_requests",
     [](std::size_t n) -> long_text {
         return {filled("1", ";", n), " = 1  = 1 \n\n"};
     }},
    {"equals_signs",
     [](std::size_t n) -> long_text {
         return {filled("", "x=", n), "       ERROR: 'x' undefined.\n\n"};
     }},
    {"exceptions",
     [](std::size_t n) -> long_text {
         return {filled("MKS(m", ",m", n, ")"),
                 " Default units = MKS with " + std::to_string(1 + n / 2) + " exceptions.\n\n\n"};
     }},
    {"unclosed_exceptions",
     [](std::size_t n) -> long_text {
         return {filled("MKS(m", ",m", n),
                 " Argument list not terminated\n Default units = MKS with 0 exceptions.\n\n\n"};
     }},
    {"commas_in_a_new_unit",
     [](std::size_t n) -> long_text {
         return {filled("DefUnit(", ",", n), "        Cant get here\n\n"};
     }},
    {"names_of_a_new_unit",
     [](std::size_t n) -> long_text {
         return {filled("DefUnit(", "x ", n), "       ERROR: Illegal new unit name '.\n\n\n"};
     }},
    // Names, numbers, comments and blanks.
    {"name",
     [](std::size_t n) -> long_text {
         return {repeated("x", n), "x' undefined.\n\n"};
     }},
    {"digits",
     [](std::size_t n) -> long_text {
         return {repeated("1", n), "        = inf \n\n"};
     }},
    {"decimals",
     [](std::size_t n) -> long_text {
         return {filled("0.", "0", n, "1"), "        = 0 \n\n"};
     }},
    {"bytes_above_the_letters",
     [](std::size_t n) -> long_text {
         return {repeated("\x80", n), "\x80'.\n\n"};
     }},
    {"closing_parentheses",
     [](std::size_t n) -> long_text {
         return {repeated(")", n), "))'.\n\n"};
     }},
    {"closing_brackets",
     [](std::size_t n) -> long_text {
         return {repeated("]", n), "]]'.\n\n"};
     }},
    {"commas",
     [](std::size_t n) -> long_text {
         return {repeated(",", n), ",,'.\n\n"};
     }},
    {"blanks",
     [](std::size_t n) -> long_text {
         return {filled("3", " ", n, "ft"), "        = 0.9144 m\n\n"};
     }},
    {"backslash_at_the_end",
     [](std::size_t n) -> long_text {
         return {filled("2 + 3", " ", n, "\\"), "        = 5 \n\n"};
     }},
    {"backslashes",
     [](std::size_t n) -> long_text {
         return {filled("2 + 3 ", "\\", n), "        = 5 \n\n"};
     }},
    {"continuations",
     [](std::size_t n) -> long_text {
         return {filled("1", " \\\n", n, " + 1"), "        = 2 \n\n"};
     }},
    {"comment",
     [](std::size_t n) -> long_text {
         return {filled("1 ", "#", n), one};
     }},
    {"blank_lines",
     [](std::size_t n) -> long_text {
         return {filled("", "\n", n, "1"), one};
     }},
    {"comment_lines",
     [](std::size_t n) -> long_text {
         return {filled("", "#\n", n), "#\n#\n\n"};
     }},
    // Lines.
    {"assignments",
     [](std::size_t n) -> long_text {
         return {filled("", "x = 1\n", n), "[  " + std::to_string(n / 6) + " ] x = 1\n       x = 1 \n\n"};
     }},
    {"failing_lines",
     [](std::size_t n) -> long_text {
         return {filled("", "1 +\n", n), "[  1 ] 1 +\n       ERROR: Math expression incomplete.\n\n"};
     }},
    {"blocks",
     [](std::size_t n) -> long_text {
         return {filled("", "begin\nend\n", n), " ] end\n       \n\n"};
     }},
    {"listing_of_a_block",
     [](std::size_t n) -> long_text {
         return {filled("begin\n", "x = 1\n", n, "end\nPrintFunc\n"),
                 "[  PrintFunc" + std::to_string(1 + n / 6) + " ] end\n       \n\n\n"};
     }},
    {"unclosed_block",
     [](std::size_t n) -> long_text {
         return {filled("begin\n", "x = 1\n", n, "PrintFunc\n"), " ] PrintFunc\n       \n"};
     }},
};

} // namespace

std::span<const long_program> all_long_programs() {
    return programs;
}

} // namespace metrify
