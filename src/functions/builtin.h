#pragma once

// What the families of built-in functions share: how a built-in reads its arguments and leaves its result,
// and the messages about arguments that it refuses.

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

/// Clears err and tests the number of arguments. If it is wrong, one cleared value replaces them and err
/// holds a message, which is the same whether the expected number is exact or a minimum.
bool check_arg_count(std::string_view name, bool exact, std::int32_t expected, std::int32_t given,
                     compile_ctx& ctx, text_str*& err);
void replace_by_cleared_value(std::int32_t given, compile_ctx& ctx);

/// The arguments of a built-in where they are on the stack, in the order in which they were written. There is
/// at least one.
class arguments {
  public:
    arguments(std::size_t count, compile_ctx& ctx) : stack_(&ctx.stack), last_(count - 1) {
        stack_->require(count);
    }

    dim_value& operator[](std::size_t i) const { return stack_->top(last_ - i).value; }
    std::size_t size() const { return last_ + 1; }

    /// Replaces all arguments by the result.
    void replace_by(const dim_value& result) const {
        (*this)[0] = result;
        for (std::size_t i = 0; i < last_; ++i)
            stack_->drop();
    }

  private:
    operand_stack* stack_;
    std::size_t last_;
};

/// The message about arguments that a function refuses: the texts before and after its name.
struct refusal {
    std::string_view before, after;
};

/// Appends "ERROR:  ", the message with the function's name and parentheses, and ".\n".
void append_refusal(text_str*& err, std::string_view name, const refusal& message);

/// A reason to refuse arguments, its message, and the number that the cleared result then holds.
struct argument_test {
    bool (*fails)(arguments a) = nullptr; // may give a pure zero the units of another argument
    refusal message = {};
    double result = 0.0;
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

// Tests that several functions use.

bool any_scalar(arguments a);
bool any_vector(arguments a);

constexpr argument_test refuses_vectors = {any_vector, {"Computing ", " of a vector"}};

/// Truncates to a 32-bit integer. Out of range, and for a not-a-number, the result is the least integer.
std::int32_t truncate_to_int32(double x);

/// A scalar with exponents, by default none.
inline dim_value scalar_value(double x, const exponents& dim = {}) {
    return {0, {x}, dim};
}
constexpr exponents in_radians = {1.0};

} // namespace metrify
