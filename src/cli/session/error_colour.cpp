#include "cli/session/error_colour.h"

#include <cstdlib>

namespace metrify {

namespace {

std::string_view variable(const char* name) {
    const char* const value = std::getenv(name); // NOLINT(concurrency-mt-unsafe): nothing changes them
    return value == nullptr ? std::string_view() : value;
}

} // namespace

bool has_colours() {
    const std::string_view terminal = variable("TERM");
    return !terminal.empty() && terminal != "dumb" && variable("NO_COLOR").empty();
}

std::string with_coloured_errors(std::string_view listing) {
    constexpr std::string_view message_start = "       ERROR"; // a line as typed begins with its heading
    std::string coloured;
    while (!listing.empty()) {
        const std::size_t end = std::min(listing.find('\n'), listing.size());
        const std::string_view line = listing.substr(0, end);
        if (line.starts_with(message_start))
            coloured.append("\x1b[31m").append(line).append("\x1b[0m");
        else
            coloured.append(line);
        const std::size_t length = std::min(end + 1, listing.size());
        coloured.append(listing.substr(end, length - end));
        listing.remove_prefix(length);
    }
    return coloured;
}

} // namespace metrify
