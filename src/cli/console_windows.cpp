#include "cli/console.h"

#include <cstdio>
#include <fcntl.h>
#include <io.h>
#include <iostream>

namespace metrify {

void use_binary_streams() {
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
}

bool is_interactive() {
    return _isatty(_fileno(stdin)) != 0 && _isatty(_fileno(stdout)) != 0;
}

bool is_error_shown_to_person() {
    return _isatty(_fileno(stderr)) != 0;
}

// The Windows console provides line editing and a history.
struct line_reader::terminal {};

line_reader::line_reader() = default;
line_reader::~line_reader() = default;

void line_reader::complete_with(completer) {} // NOLINT: the other platform takes it over

line_reader::outcome line_reader::read(std::string_view prompt, std::string& line) {
    std::cout << prompt << std::flush;
    if (!std::getline(std::cin, line))
        return outcome::end;
    if (!line.empty() && line.back() == '\r')
        line.pop_back();
    return outcome::line;
}

} // namespace metrify
