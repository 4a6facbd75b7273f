#pragma once

// Two ways to call a built-in function in a test: by a line of the language, and by its number on a stack.

#include "units/dim_value.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace metrify::test {

constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();

/// The listing of a one-line program after the echo of the line, without leading and trailing blanks.
std::string answer(std::string_view line);

struct expectation {
    const char* line;
    const char* answer;
};
/// Compares the answer of each line.
void expect_answers(std::span<const expectation> expectations);

struct outcome {
    dim_value value;
    std::string err;
    std::size_t depth; // of the stack, which had one value below the arguments
};
/// Calls the function of that name.
outcome call(std::string_view name, const std::vector<dim_value>& given);
outcome call_number(std::int32_t number, const std::vector<dim_value>& given);

dim_value scalar(double x, const exponents& dim = {});
dim_value vector(double x, double y, double z, const exponents& dim = {});

constexpr exponents radian = {1};
constexpr exponents second = {0, 1};
constexpr exponents meter = {0, 0, 0, 1};

/// True if all fields are equal; a not-a-number equals none.
bool equal(const dim_value& a, const dim_value& b);
/// True for the cleared record: a scalar 0 without exponents.
bool is_cleared(const dim_value& v);

/// Expects a call that failed with the message: its value is cleared, and its arguments are gone.
void expect_refused(const outcome& result, const std::string& message);

} // namespace metrify::test
