#pragma once

// Tables whose rows are found by one of several words.

#include "cli/lookup/names.h"

#include <string_view>

namespace metrify {

struct word_row {
    std::string_view words; // separated by blanks, matched without regard to case
    std::string_view text;
};

inline bool has_word(std::string_view words, std::string_view word) {
    while (!words.empty()) {
        const std::size_t blank = words.find(' ');
        if (equal_nocase(words.substr(0, blank), word))
            return true;
        words.remove_prefix(blank == std::string_view::npos ? words.size() : blank + 1);
    }
    return false;
}

} // namespace metrify
