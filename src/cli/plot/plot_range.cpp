#include "cli/plot/plot_range.h"

#include "base/number_text.h"

#include <algorithm>
#include <cmath>

namespace metrify {

namespace {

std::string without_blanks_around(std::string_view text) {
    const std::size_t begin = std::min(text.find_first_not_of(" \t"), text.size());
    return std::string(text.substr(begin, text.find_last_not_of(" \t") + 1 - begin));
}

// The number that is the whole text.
bool read_whole_number(const std::string& text, double& value) {
    return !text.empty() && *read_double(text.c_str(), value) == '\0';
}

} // namespace

std::string plot_range::read(std::string_view text) {
    constexpr std::string_view dots = "..";
    const std::size_t equals = text.find('=');
    const std::size_t between = text.find(dots);
    if (equals == std::string_view::npos)
        return "there is no '=' after a variable";
    if (between == std::string_view::npos || between < equals)
        return "there is no '..' between two numbers";
    variable = without_blanks_around(text.substr(0, equals));
    if (variable.empty())
        return "there is no variable before '='";
    const std::string first = without_blanks_around(text.substr(equals + 1, between - equals - 1));
    if (!read_whole_number(first, from))
        return "'" + first + "' before '..' is no number; units follow the second number";
    const std::string second = without_blanks_around(text.substr(between + dots.size()));
    const char* const after = read_double(second.c_str(), to);
    if (after == second.c_str())
        return "'" + second + "' after '..' does not begin with a number";
    units = without_blanks_around(after);
    if (from == to)
        return "both ends are " + first;
    return std::isfinite(from) && std::isfinite(to) && std::isfinite(to - from) ? "" : "it is too large";
}

plot_request::plot_request(std::string_view text) {
    const std::size_t end = std::min(text.find(';'), text.size());
    variable = without_blanks_around(text.substr(0, end));
    units = end < text.size() ? without_blanks_around(text.substr(end + 1)) : std::string();
}

} // namespace metrify
