#pragma once

// What is known about each built-in function besides its routine. A function's row holds these facts and
// the routine; the look-up, the call and the list for users all read that row.

#include "machine/function_dispatch.h"

#include <cstdint>
#include <string_view>

namespace metrify {

/// The chapters of the list for users.
enum class family {
    trigonometry,
    hyperbolic,
    logarithms,
    rounding,
    vectors,
    units,
    constant,
    solving,
    bessel,
    gamma_and_beta,
    error_and_normal,
    exponential_integrals,
    elliptic,
    count,
};

/// Where a function differs from most. An empty name is the function's own.
struct function_exceptions {
    arg_mode mode = args_expressions;
    std::string_view name_in_count = {}; // the name in the message about a wrong number of arguments
    std::string_view name_in_refusals = {};
};

struct function_facts {
    std::int32_t number;
    family chapter;
    std::string_view name;
    std::int32_t arguments;          // how many; at least that many for one that takes variables
    std::string_view argument_names; // as they are written between the parentheses
    std::string_view what;           // one line
    std::string_view takes;          // the arguments' units
    std::string_view gives;          // the result's units
    std::string_view domain;
    std::string_view example; // a line of the language, or a program
    std::string_view answer;  // what the listing shows after the line, or a line of the report
    function_exceptions except = {};

    constexpr bool takes_variables() const { return except.mode != args_expressions; }
    constexpr std::string_view name_in_count() const {
        return except.name_in_count.empty() ? name : except.name_in_count;
    }
    constexpr std::string_view name_in_refusals() const {
        return except.name_in_refusals.empty() ? name : except.name_in_refusals;
    }
};

/// Texts that several functions share.
namespace help {

constexpr std::string_view number = "a number";
constexpr std::string_view numbers = "numbers";
constexpr std::string_view angle = "a number or an angle";
constexpr std::string_view radians = "an angle, in radians";
constexpr std::string_view anywhere = "every x";
constexpr std::string_view number_or_angle = "a number; an angle stays one";
constexpr std::string_view variables = "names of variables";
constexpr std::string_view report = "no value; shows the block with what was found";
constexpr std::string_view no_limits = "everything";
constexpr std::string_view order_and_x = "numbers: the order n and x";
constexpr std::string_view first_kind_domain = "every x where n is whole, x > 0 elsewhere; orders of 32 bits";
constexpr std::string_view second_kind_domain = "x > 0; orders of 32 bits";

} // namespace help

} // namespace metrify
