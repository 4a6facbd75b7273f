#include "cli/plot/plot_range.h"

#include "base/number_text.h"

#include <algorithm>

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

bool plot_range::read(std::string_view text) {
    constexpr std::string_view dots = "..";
    const std::size_t equals = text.find('=');
    const std::size_t between = text.find(dots);
    if (equals == std::string_view::npos || between == std::string_view::npos || between < equals)
        return false;
    variable = without_blanks_around(text.substr(0, equals));
    const std::string first = without_blanks_around(text.substr(equals + 1, between - equals - 1));
    const std::string second = without_blanks_around(text.substr(between + dots.size()));
    const char* const after = read_double(second.c_str(), to);
    units = without_blanks_around(after);
    return !variable.empty() && read_whole_number(first, from) && after != second.c_str() && from != to;
}

plot_request::plot_request(std::string_view text) {
    const std::size_t end = std::min(text.find(';'), text.size());
    variable = without_blanks_around(text.substr(0, end));
    units = end < text.size() ? without_blanks_around(text.substr(end + 1)) : std::string();
}

} // namespace metrify
