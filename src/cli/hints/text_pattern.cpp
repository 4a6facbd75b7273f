#include "cli/hints/text_pattern.h"

namespace metrify {

text_pattern::text_pattern(const char* expression, letter_case letters)
    : expression_(expression, letters == letter_case::any ? std::regex::ECMAScript | std::regex::icase
                                                          : std::regex::ECMAScript) {}

bool text_pattern::matches(const std::string& text, std::smatch& parts) const {
    return std::regex_match(text, parts, expression_);
}

bool text_pattern::finds(const std::string& text, std::smatch& first) const {
    return std::regex_search(text, first, expression_);
}

bool text_pattern::is_in(const std::string& text) const {
    std::smatch first;
    return finds(text, first);
}

std::string text_pattern::replaced(const std::string& text, const char* by) const {
    return std::regex_replace(text, expression_, by);
}

} // namespace metrify
