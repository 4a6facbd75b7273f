#include "cli/hints/readings.h"

#include "base/cursor.h"
#include "base/number_text.h"

#include <algorithm>
#include <iterator>

namespace metrify {

namespace {

using words_span = std::vector<std::string>::const_iterator;

bool is_joining_word(const std::string& word) {
    constexpr std::string_view joining[] = {"to", "into", "in", "as", "->", "=>", "→"};
    return std::find(std::begin(joining), std::end(joining), word) != std::end(joining);
}

std::string with_blanks(words_span begin, words_span end) {
    std::string text;
    for (words_span word = begin; word != end; ++word)
        text += (word == begin ? "" : " ") + *word;
    return text;
}

// The words up to `value_end` are the value, and those from `request` on the request.
reading split_at(const std::vector<std::string>& words, words_span value_end, words_span request) {
    const bool is_joined = has_joined_unit(words.front());
    reading found = {with_blanks(words.begin(), value_end) + "; " + with_blanks(request, words.end()), {}};
    if (is_joined)
        found.notes.emplace_back("a blank separates a number from its units");
    if (value_end != request)
        found.notes.push_back("the units follow each other without `" + *value_end + "`" +
                              (*value_end == "in" ? ", which is the inch" : ""));
    const auto most_words = is_joined ? 1 : 2; // the number, and one of units
    if (value_end - words.begin() > most_words || words.end() - request > 1)
        found.notes.emplace_back("units of several words are in quotes");
    return found;
}

} // namespace

bool has_joined_unit(std::string_view number) {
    const std::string text(number);
    double ignored = 0.0;
    const char* const after = read_double(text.c_str(), ignored);
    const auto is_of_unit = [](char c) {
        return is_letter(c) || c == '%' || static_cast<unsigned char>(c) > 0x7F;
    };
    return after != text.c_str() && is_of_unit(*after);
}

std::vector<reading> readings_of(std::vector<std::string> words) {
    while (!words.empty() && words.back().empty())
        words.pop_back();
    std::vector<reading> readings;
    if (words.size() < 2)
        return readings;
    const words_span last = words.end() - 1;
    for (words_span word = words.begin() + 1; word < last; ++word)
        if (is_joining_word(*word))
            readings.push_back(split_at(words, word, word + 1));
    readings.push_back(split_at(words, last, last));
    return readings;
}

} // namespace metrify
