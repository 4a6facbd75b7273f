#pragma once

#include "units/dim_value.h"

#include <optional>
#include <string>
#include <string_view>

namespace metrify {

/// The scale of a text that is a unit expression as a whole, with the units of the calculator in use.
std::optional<unit_scale> read_unit_text(std::string_view text);

/// True for two spellings of one unit. Their factors can differ in the last digits.
bool is_same_unit(const unit_scale& a, const unit_scale& b);

/// The text of exponents in base units; `1` if there are none.
std::string base_unit_text(const exponents& dim);

} // namespace metrify
