#pragma once

// Completion of names in a session.

#include <string>
#include <string_view>
#include <vector>

namespace metrify {

struct completion {
    std::string inserted;                ///< what all candidates have after the word
    std::vector<std::string> candidates; ///< sorted
};

/// The completion of the word at the end of the text. Names of units and variables are compared with their
/// case, names of functions without. A function that is the only candidate gets its parenthesis; a command of
/// the session is completed at the start of the line only.
completion complete_word(std::string_view text, const std::vector<std::string>& defined_names);

/// The candidates in columns that fit the width.
std::string candidate_table(const std::vector<std::string>& candidates, std::size_t width);

} // namespace metrify
