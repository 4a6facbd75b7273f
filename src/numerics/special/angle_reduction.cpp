#include "numerics/special/angle_reduction.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <limits>

namespace metrify {

namespace {

constexpr int digit_bits = 32;

// The binary digits of 2/pi after the point, in words. The largest exponent of a double needs all of them.
constexpr std::array<std::uint32_t, 38> two_over_pi = {
    0xa2f9836e, 0x4e441529, 0xfc2757d1, 0xf534ddc0, 0xdb629599, 0x3c439041, 0xfe5163ab, 0xdebbc561,
    0xb7246e3a, 0x424dd2e0, 0x06492eea, 0x09d1921c, 0xfe1deb1c, 0xb129a73e, 0xe88235f5, 0x2ebb4484,
    0xe99c7026, 0xb45f7e41, 0x3991d639, 0x835339f4, 0x9c845f8b, 0xbdf9283b, 0x1ff897ff, 0xde05980f,
    0xef2f118b, 0x5a0a6d1f, 0x6d367ecf, 0x27cb09b7, 0x4f463f66, 0x9e5fea2d, 0x7527bac7, 0xebe5f17b,
    0x3d0739f7, 0x8a5292ea, 0x6bfb5fb1, 0x1f8d5d08, 0x56033046, 0xfc7b6bab};
constexpr std::uint64_t half_pi = 0xc90fdaa22168c235; // pi/2 times 2^63

// The words of 2/pi that take part in a product. The words before them give whole turns, those after them are
// too small: a double comes no nearer to a multiple of pi/2 than 2^-62 of a quarter turn.
constexpr std::size_t window = 8;

/// The least significant word first.
using product_words = std::array<std::uint32_t, window + 2>;

/// Adds a factor times the words of 2/pi from `first` on.
void add_multiple(product_words& product, std::uint32_t factor, std::size_t first, std::size_t shift) {
    std::uint64_t carry = 0;
    for (std::size_t i = 0; i < window; ++i) {
        const std::uint64_t digit = two_over_pi[first + window - 1 - i];
        carry += product[shift + i] + factor * digit;
        product[shift + i] = static_cast<std::uint32_t>(carry);
        carry >>= digit_bits;
    }
    product[shift + window] += static_cast<std::uint32_t>(carry);
}

/// The 64 bits of a product from a position on, counted from the least significant one.
std::uint64_t bits_from(const product_words& product, int position) {
    const auto word = static_cast<std::size_t>(position / digit_bits);
    const int shift = position % digit_bits;
    const auto at = [&](std::size_t i) -> std::uint64_t { return i < product.size() ? product[i] : 0; };
    const std::uint64_t low = at(word) | at(word + 1) << digit_bits;
    return shift == 0 ? low : low >> shift | at(word + 2) << (2 * digit_bits - shift);
}

/// The upper half of the product of two words of 64 bits.
std::uint64_t upper_product(std::uint64_t a, std::uint64_t b) {
    constexpr std::uint64_t mask = 0xffffffff;
    const std::uint64_t upper_a = a >> digit_bits, lower_a = a & mask, upper_b = b >> digit_bits,
                        lower_b = b & mask;
    const std::uint64_t middle = upper_a * lower_b + (lower_a * lower_b >> digit_bits);
    return upper_a * upper_b + (middle >> digit_bits) + ((lower_a * upper_b + (middle & mask)) >> digit_bits);
}

/// The part of a quarter turn after the point, of 128 bits.
struct fraction {
    std::uint64_t upper, lower;

    void negate() {
        lower = ~lower + 1;
        upper = ~upper + (lower == 0 ? 1 : 0);
    }
    /// In radians.
    [[nodiscard]] double angle() const {
        const int zeros = std::countl_zero(upper);
        const std::uint64_t leading = zeros == 0 ? upper : upper << zeros | lower >> (64 - zeros);
        return std::ldexp(static_cast<double>(upper_product(leading, half_pi)), -63 - zeros);
    }
};

} // namespace

// The reduction of Payne and Hanek: x is multiplied with those digits of 2/pi that decide on the quadrant and
// on what follows the point.
reduced_angle reduce_large_angle(double x) {
    constexpr int mantissa_bits = std::numeric_limits<double>::digits;
    int exponent = 0;
    const double mantissa = std::frexp(std::fabs(x), &exponent);
    const auto integer = static_cast<std::uint64_t>(std::ldexp(mantissa, mantissa_bits));
    exponent -= mantissa_bits; // |x| is integer times 2^exponent

    const int first = std::max(0, (exponent - 2) / digit_bits);
    product_words product = {};
    add_multiple(product, static_cast<std::uint32_t>(integer), static_cast<std::size_t>(first), 0);
    add_multiple(product, static_cast<std::uint32_t>(integer >> digit_bits), static_cast<std::size_t>(first),
                 1);

    const int point = digit_bits * (first + static_cast<int>(window)) - exponent;
    fraction part = {bits_from(product, point - 64), bits_from(product, point - 128)};
    std::uint64_t quadrant = bits_from(product, point);
    const bool rounds_up = std::bit_cast<std::int64_t>(part.upper) < 0;
    if (rounds_up) {
        part.negate();
        ++quadrant;
    }
    const double rest = rounds_up ? -part.angle() : part.angle();
    if (x < 0.0)
        return {-rest, static_cast<std::uint32_t>((0 - quadrant) % 4)};
    return {rest, static_cast<std::uint32_t>(quadrant % 4)};
}

} // namespace metrify
