#pragma once

// What the words of a conversion can mean that are not a number, its units and the requested units.

#include <string>
#include <string_view>
#include <vector>

namespace metrify {

struct reading {
    std::string statement; // a line with one request
    std::vector<std::string> notes;
};

/// The likeliest one first. Empty words at the end don't count.
std::vector<reading> readings_of(std::vector<std::string> words);

/// True for a number with a unit after it, such as `5ft`.
bool has_joined_unit(std::string_view number);

} // namespace metrify
