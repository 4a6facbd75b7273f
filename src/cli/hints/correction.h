#pragma once

// A statement that is changed step by step until the language accepts it, with the reason of each change.

#include <algorithm>
#include <string>
#include <vector>

namespace metrify {

struct correction {
    std::string text;
    std::vector<std::string> notes = {};
    bool needs_everyday_units = false;

    void note(std::string text_of_note) {
        if (std::find(notes.begin(), notes.end(), text_of_note) == notes.end())
            notes.push_back(std::move(text_of_note));
    }
};

} // namespace metrify
