#pragma once

// What the families of built-in functions share: how a built-in finds its arguments and leaves its result,
// how it words a refusal, and how a row of a family's table becomes a routine that is called without a
// search.

#include "functions/function_facts.h"
#include "machine/operand_stack.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace metrify {

/// A built-in takes its count arguments off the stack and pushes exactly one value. The number of arguments
/// has been tested, and err is empty.
using builtin = void (*)(std::int32_t count, compile_ctx& ctx, text_str*& err);

/// Empties err and tests the number of arguments. If it is wrong, one cleared value takes their place and the
/// message is in err, which doesn't tell where more would be right too.
bool check_arg_count(std::string_view name, bool exact, std::int32_t expected, std::int32_t given,
                     compile_ctx& ctx, text_str*& err);
void replace_by_cleared_value(std::int32_t given, compile_ctx& ctx);

/// The arguments of a built-in at the place where they stand on the stack, in the order in which they were
/// written. There is at least one.
class arguments {
  public:
    arguments(std::size_t count, compile_ctx& ctx) : stack_(&ctx.stack), last_(count - 1) {
        stack_->require(count);
    }

    dim_value& operator[](std::size_t i) const { return stack_->top(last_ - i).value; }
    std::size_t size() const { return last_ + 1; }

    /// Puts the result in the place of all arguments, which are gone then.
    void replace_by(const dim_value& result) const {
        (*this)[0] = result;
        for (std::size_t i = 0; i < last_; ++i)
            stack_->drop();
    }

  private:
    operand_stack* stack_;
    std::size_t last_;
};

/// What is said about arguments that a function refuses, ahead of its name and behind it.
struct refusal {
    std::string_view before, after;
};

/// Appends "ERROR:  ", the refusal around the function's name with its parentheses, and ".\n".
void append_refusal(text_str*& err, std::string_view name, const refusal& said);

/// A reason to refuse arguments, what is said, and what number the cleared result holds then.
struct argument_test {
    bool (*fails)(arguments a) = nullptr; // may give a pure zero the units of another argument
    refusal said = {};
    double left = 0.0;
};

inline std::size_t argument_count(const function_facts& function) {
    return static_cast<std::size_t>(function.arguments);
}

/// A function of values: its arguments are tested in the order of the row, then the result is formed.
struct value_function {
    function_facts about;
    std::array<argument_test, 4> tests; // an empty one ends them
    dim_value (*result)(arguments a);
};
void run_function(const value_function& function, compile_ctx& ctx, text_str*& err);

// The tests of which several functions have one.

bool any_scalar(arguments a);
bool any_vector(arguments a);

constexpr argument_test refuses_vectors = {any_vector, {"Computing ", " of a vector"}};

/// Truncates to a 32-bit integer. Beyond its range, and for a not-a-number, that is the least integer.
std::int32_t truncate_to_int32(double x);

/// A scalar with exponents, by default none.
inline dim_value scalar_value(double x, const exponents& dim = {}) {
    return {0, {x}, dim};
}
constexpr exponents in_radians = {1.0};

} // namespace metrify
