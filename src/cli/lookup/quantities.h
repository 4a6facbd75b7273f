#pragma once

// What people call the dimensions, and the units that they commonly use for them.

#include "units/dim_value.h"

#include <span>
#include <string_view>
#include <vector>

namespace metrify {

struct quantity {
    std::string_view names;        // separated by commas, the most common one first
    std::string_view unit;         // has the dimension
    std::string_view common_units; // separated by commas, everyday units among them
};

std::span<const quantity> all_quantities();

/// The quantity with these exponents, or null.
const quantity* find_quantity(const exponents& dim);

/// The most common name of the quantity with these exponents, or an empty text.
std::string_view quantity_name(const exponents& dim);

/// The parts of a text between commas, without the blanks around them.
std::vector<std::string_view> split_list(std::string_view text);

} // namespace metrify
