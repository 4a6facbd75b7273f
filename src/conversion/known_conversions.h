#pragma once

// Conversions between plain units that a thread has made before. In a sheet the same few pairs of units come
// back many times, and their scales depend on the two texts only.

#include "units/scalar_arithmetic.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace metrify {

class known_conversion {
  public:
    /// The second cell: the requested units as typed, and the two newlines at the end of a listing.
    std::string_view unit_cell() const { return std::string_view(text_, length_).substr(unit_cell_); }

    /// The value as the listing has it, before it is rounded to six digits.
    double convert(double val) const {
        return to_base_system(val, in_offset_, in_factor_) * out_factor_ + out_offset_;
    }

    /// True if this is the conversion between these two texts.
    bool is_between(std::string_view in_units, std::string_view out_units) const;

    /// Parses the two texts. False if they are not both plain units of the same dimension, or if they are too
    /// long. An empty request is not plain: it means default units.
    bool prepare(std::string_view in_units, std::string_view out_units);

  private:
    static constexpr std::size_t longest = 80; // in_units, out_units and the newlines

    double in_offset_ = 0.0;
    double in_factor_ = 1.0;
    double out_factor_ = 1.0;
    double out_offset_ = 0.0;
    std::uint8_t in_length_ = 0;
    std::uint8_t out_length_ = 0;
    std::uint8_t unit_cell_ = 0; // where it begins
    std::uint8_t length_ = 0;
    char text_[longest];
};

/// The conversion between the two texts from this thread's table, or null if it is not one of plain units. It
/// is made if it is not in the table, in place of another one. The address is valid until the next call of
/// the thread. Only the making of the first one of a thread allocates memory.
const known_conversion* find_known_conversion(std::string_view in_units, std::string_view out_units);

} // namespace metrify
