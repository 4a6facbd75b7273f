#include "base/number_text.h"

#include "base/short_decimals.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

namespace metrify {

namespace {

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

// The parts of a number's text, without its sign.
struct decimal_form {
    const char* digits;   // start of digits and point
    const char* exponent; // end of digits and point
    const char* end;      // end of the exponent, if there is one
    bool has_digits;
};

const char* pass_digits(const char* p) {
    while (is_digit(*p))
        ++p;
    return p;
}

// number := digits [ "." [ digits ] ] [ exponent ] | "." digits [ exponent ]
// exponent := ( "e" | "E" ) [ "+" | "-" ] digits
decimal_form scan_decimal(const char* p) {
    decimal_form form = {p, nullptr, nullptr, false};
    p = pass_digits(p);
    form.has_digits = p != form.digits;
    if (*p == '.') {
        const char* fraction = pass_digits(p + 1);
        form.has_digits = form.has_digits || fraction != p + 1;
        p = fraction;
    }
    form.exponent = form.end = p;
    if (*p == 'e' || *p == 'E') {
        ++p;
        if (*p == '+' || *p == '-')
            ++p;
        if (is_digit(*p))
            form.end = pass_digits(p);
    }
    return form;
}

// False if the number is not short.
bool read_short_decimal(const decimal_form& form, double& magnitude) {
    constexpr int usual_exponent = 99;
    int power = 0;
    if (form.exponent != form.end) {
        const char* p = form.exponent + 1;
        const bool negative = *p == '-';
        if (negative || *p == '+')
            ++p;
        for (; p != form.end && power <= usual_exponent; ++p)
            power = 10 * power + (*p - '0');
        if (power > usual_exponent)
            return false;
        if (negative)
            power = -power;
    }
    const auto length = static_cast<std::size_t>(form.exponent - form.digits);
    return short_decimals::read_digits({form.digits, length}, power, magnitude);
}

// Whether a number outside the range of a double is too large rather than too small. The power of ten of its
// first non-zero digit decides.
bool is_above_range(const decimal_form& form) {
    const char* point = std::find(form.digits, form.exponent, '.');
    const char* leading =
        std::find_if(form.digits, form.exponent, [](char c) { return c >= '1' && c <= '9'; });
    const long long position = leading < point ? point - leading : point - leading + 1;
    if (form.exponent == form.end)
        return position > 0;

    const char* digits = form.exponent + 1;
    const bool negative = *digits == '-';
    if (*digits == '+' || *digits == '-')
        ++digits;
    long long exponent = 0;
    if (std::from_chars(digits, form.end, exponent).ec != std::errc())
        exponent = std::numeric_limits<long long>::max() / 2;
    return position + (negative ? -exponent : exponent) > 0;
}

} // namespace

std::string_view format_double(double x, number_buffer& buffer) {
    if (std::isnan(x))
        return "nan";
    short_decimals::six_digits rounded = {};
    if (short_decimals::round_to_six_digits(std::fabs(x), rounded)) {
        buffer.text[0] = '-';
        char* const begin = x < 0.0 ? buffer.text + 1 : buffer.text;
        const char* const end = short_decimals::write_six_digits(rounded, begin);
        return {buffer.text, static_cast<std::size_t>(end - buffer.text)};
    }
    const auto result =
        std::to_chars(buffer.text, buffer.text + sizeof buffer.text, x, std::chars_format::general, 6);
    return {buffer.text, static_cast<std::size_t>(result.ptr - buffer.text)};
}

std::string_view format_int(int n, number_buffer& buffer) {
    const auto result = std::to_chars(buffer.text, buffer.text + sizeof buffer.text, n);
    return {buffer.text, static_cast<std::size_t>(result.ptr - buffer.text)};
}

const char* read_double(const char* text, double& value) {
    value = 0.0;
    const bool has_sign = *text == '+' || *text == '-';
    const decimal_form form = scan_decimal(text + (has_sign ? 1 : 0));
    if (!form.has_digits)
        return text;
    double magnitude = 0.0;
    if (!read_short_decimal(form, magnitude) &&
        std::from_chars(form.digits, form.end, magnitude).ec == std::errc::result_out_of_range)
        magnitude = is_above_range(form) ? std::numeric_limits<double>::infinity() : 0.0;
    value = *text == '-' ? -magnitude : magnitude;
    return form.end;
}

} // namespace metrify
