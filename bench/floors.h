#pragma once

// The least work of any implementation, which the figures of conversions are compared with.

#include "base/number_text.h"
#include "bench/hidden_number.h"
#include "bench/unit_pairs.h"
#include "xllrt/value/host_records.h"

#include <benchmark/benchmark.h>
#include <charconv>
#include <cstring>
#include <memory>
#include <string>

namespace metrify_bench {

// The floors format and read numbers by the standard library, so that they don't change with our routines.

/// Six significant digits.
inline std::string_view standard_digits(double x, metrify::number_buffer& buffer) {
    const char* const end =
        std::to_chars(buffer.text, buffer.text + sizeof buffer.text, x, std::chars_format::general, 6).ptr;
    return {buffer.text, static_cast<std::size_t>(end - buffer.text)};
}

inline double standard_number(const char* text, const char* end) {
    double number = 0.0;
    std::from_chars(text, end, number);
    return number;
}

/// A conversion: the number is formatted into a line with both texts, read again and multiplied, and the
/// answer is formatted.
inline void floor_of_conversion(double val, const unit_pair& pair) {
    hide(val);
    metrify::number_buffer buffer;
    char line[256];
    const std::string_view digits = standard_digits(val, buffer);
    char* end = line;
    for (const std::string_view piece : {digits, std::string_view(" "), std::string_view(pair.from),
                                         std::string_view("; "), std::string_view(pair.to)}) {
        std::memcpy(end, piece.data(), piece.size());
        end += piece.size();
    }
    *end = '\0';
    benchmark::DoNotOptimize(line);
    metrify::number_buffer answer;
    benchmark::DoNotOptimize(standard_digits(standard_number(line, end) * 0.3048, answer));
}

/// Appends a text and returns its end.
template <class Target, class Source>
Target* copied(Target* to, const Source* from, std::size_t length) {
    for (std::size_t i = 0; i < length; ++i)
        to[i] = static_cast<Target>(from[i]);
    return to + length;
}
template <class Source>
char* copied(char* to, const Source* text) {
    return copied(to, text, std::char_traits<Source>::length(text));
}

/// A call of the worksheet function: the same, and the result is an array of a number and a text, which are
/// allocated and released.
inline void floor_of_call(double val, const char16_t* in_units, const char16_t* out_units) {
    metrify::number_buffer digits;
    const std::string_view formatted = standard_digits(val, digits);
    char line[256];
    char* end = copied(copied(line, formatted.data(), formatted.size()), " ");
    *copied(copied(copied(end, in_units), "; "), out_units) = '\0';
    benchmark::DoNotOptimize(line);

    metrify::number_buffer answer_digits;
    const std::string_view answer = standard_digits(standard_number(line, end) * 0.3048, answer_digits);
    char listing[512];
    end = copied(copied(listing, line), "\n = ");
    const char* const number_in_listing = end;
    *copied(copied(copied(copied(end, answer.data(), answer.size()), " "), out_units), "\n\n") = '\0';
    benchmark::DoNotOptimize(listing);

    const auto cells = std::make_unique<metrify::XLOPER12[]>(2);
    cells[0].val.num = standard_number(number_in_listing, number_in_listing + answer.size());
    const std::size_t length = std::char_traits<char16_t>::length(out_units) + 2;
    const auto text = std::make_unique<char16_t[]>(length + 1);
    text[0] = static_cast<char16_t>(length);
    copied(text.get() + 1, listing + std::strlen(listing) - length, length);
    cells[1].val.str = text.get();
    benchmark::DoNotOptimize(cells.get());
}

} // namespace metrify_bench
