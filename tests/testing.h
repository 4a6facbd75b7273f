#pragma once

// Helpers for the tests of the calculator.

#include "base/text_str.h"
#include "language/driver.h"
#include "machine/solver_binding.h"
#include "units/dim_value.h"

#include <string>
#include <string_view>

// Whether the tests are built with a sanitizer, which has larger stack frames and its own allocator.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define METRIFY_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define METRIFY_SANITIZED 1
#endif
#endif
#ifndef METRIFY_SANITIZED
#define METRIFY_SANITIZED 0
#endif

namespace metrify {

constexpr bool is_sanitized = METRIFY_SANITIZED != 0;

constexpr exponents in_plain = {};
constexpr exponents in_rad = {1, 0, 0, 0, 0, 0, 0, 0};
constexpr exponents in_s = {0, 1, 0, 0, 0, 0, 0, 0};
constexpr exponents in_kg = {0, 0, 1, 0, 0, 0, 0, 0};
constexpr exponents in_m = {0, 0, 0, 1, 0, 0, 0, 0};
constexpr exponents in_degK = {0, 0, 0, 0, 1, 0, 0, 0};
constexpr exponents in_mol = {0, 0, 0, 0, 0, 1, 0, 0};
constexpr exponents in_degKdiff = {0, 0, 0, 0, 0, 0, 1, 0};
constexpr exponents in_C = {0, 0, 0, 0, 0, 0, 0, 1};
constexpr exponents in_N = {0, -2, 1, 1, 0, 0, 0, 0};
constexpr exponents in_J = {0, -2, 1, 2, 0, 0, 0, 0};
constexpr exponents in_Pa = {0, -2, 1, -1, 0, 0, 0, 0};

inline dim_value scalar(double x, const exponents& dim = in_plain) {
    return {0, {x, 0.0, 0.0}, dim};
}
inline dim_value vector(double x, double y, double z, const exponents& dim = in_plain) {
    return {1, {x, y, z}, dim};
}

/// True if all fields are equal; a not-a-number equals nothing.
inline bool equal(const dim_value& a, const dim_value& b) {
    return a.kind == b.kind && a.comp == b.comp && a.dim == b.dim;
}

/// Kind, components and exponents; a zero exponent has no sign.
inline std::string described(const dim_value& v) {
    std::string text = std::to_string(v.kind) + ":";
    for (const double x : v.comp)
        text += " " + std::to_string(x);
    text += " |";
    for (const double x : v.dim)
        text += " " + std::to_string(x + 0.0);
    return text;
}

/// The listing of a program without a pending report of an earlier run.
inline std::string run(const std::string& program) {
    teardown_solver_binding();
    return std::string(interpret_dimensional_input_lines(program.c_str()).view());
}

inline std::string repeated(std::string_view piece, std::size_t times) {
    std::string text;
    text.reserve(piece.size() * times);
    for (std::size_t i = 0; i < times; ++i)
        text += piece;
    return text;
}

inline bool ends_with(std::string_view text, std::string_view ending) {
    return text.size() >= ending.size() && text.substr(text.size() - ending.size()) == ending;
}

/// The last part of a long text, for failure messages.
inline std::string tail_of(std::string_view text) {
    constexpr std::size_t shown = 300;
    return std::string(text.size() > shown ? text.substr(text.size() - shown) : text);
}

} // namespace metrify
