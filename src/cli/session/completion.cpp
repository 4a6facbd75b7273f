#include "cli/session/completion.h"

#include "base/cursor.h"
#include "cli/session/session_words.h"
#include "functions/function_help.h"
#include "units/unit_table.h"

#include <algorithm>

namespace metrify {

namespace {

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

// The name or command at the end of the text; empty if there is none.
std::string_view last_word(std::string_view text) {
    std::size_t begin = text.size();
    while (begin > 0 && is_name_char(text[begin - 1]))
        --begin;
    if (begin > 0 && begin == text.find_first_not_of(' ') + 1 && text[begin - 1] == ':')
        --begin;
    // The digits of a number that a unit follows directly.
    while (begin < text.size() && is_digit(text[begin]))
        ++begin;
    return text.substr(begin);
}

bool begins_nocase(std::string_view name, std::string_view start) {
    return name.size() >= start.size() && std::equal(
                                              start.begin(), start.end(), name.begin(),
                                              [](char a, char b) { return fold_case(a) == fold_case(b); });
}

void add_functions(std::string_view word, std::vector<std::string>& candidates) {
    for (const help_chapter& chapter : function_help())
        for (const function_row* function : chapter.functions)
            if (begins_nocase(function->name, word))
                candidates.push_back(std::string(function->name) + "(");
}

// What all candidates have in common after the first `length` characters.
std::string common_rest(const std::vector<std::string>& candidates, std::size_t length) {
    std::string_view common = candidates.front();
    for (const std::string& candidate : candidates) {
        const auto end = std::mismatch(common.begin(), common.end(), candidate.begin(), candidate.end());
        common = common.substr(0, static_cast<std::size_t>(end.first - common.begin()));
    }
    return common.size() > length ? std::string(common.substr(length)) : std::string();
}

} // namespace

completion complete_word(std::string_view text, const std::vector<std::string>& defined_names) {
    const std::string_view word = last_word(text);
    completion found;
    if (word.empty())
        return found;
    const auto add_if_fitting = [&](std::string_view name) {
        if (name.starts_with(word))
            found.candidates.emplace_back(name);
    };
    for (const session_word& command : session_words)
        if (word[0] == ':' || text.find_first_not_of(' ') + word.size() == text.size())
            add_if_fitting(command.word);
    for (const std::string_view keyword : line_keywords)
        add_if_fitting(keyword);
    for (const std::string& name : defined_names)
        add_if_fitting(name);
    for (const unit_entry& unit : all_units())
        add_if_fitting(unit.name);
    add_functions(word, found.candidates);
    std::sort(found.candidates.begin(), found.candidates.end());
    found.candidates.erase(std::unique(found.candidates.begin(), found.candidates.end()),
                           found.candidates.end());
    if (!found.candidates.empty())
        found.inserted = common_rest(found.candidates, word.size());
    return found;
}

std::string candidate_table(const std::vector<std::string>& candidates, std::size_t width) {
    std::size_t longest = 0;
    for (const std::string& candidate : candidates)
        longest = std::max(longest, candidate.size());
    const std::size_t column = longest + 2;
    const std::size_t columns = std::max<std::size_t>(1, width / column);
    std::string table;
    for (std::size_t i = 0; i < candidates.size(); ++i) {
        table += candidates[i];
        if ((i + 1) % columns == 0 || i + 1 == candidates.size())
            table += '\n';
        else
            table.append(column - candidates[i].size(), ' ');
    }
    return table;
}

} // namespace metrify
