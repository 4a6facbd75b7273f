#pragma once

// Programs of any length, with one long line or with many lines.

#include <cstddef>
#include <ostream>
#include <span>
#include <string>

namespace metrify {

struct long_text {
    std::string program;
    std::string ending; // the end of its listing
};

struct long_program {
    const char* name;
    /// A program of about the given number of characters.
    long_text (*make)(std::size_t size);
};

inline std::ostream& operator<<(std::ostream& out, const long_program& program) {
    return out << program.name;
}

std::span<const long_program> all_long_programs();

} // namespace metrify
