#include "cli/short_form.h"

#include "base/number_text.h"

#include <algorithm>
#include <iterator>

namespace metrify {

bool is_number(const std::string& text) {
    double value = 0.0;
    return !text.empty() && *read_double(text.c_str(), value) == '\0';
}

namespace {

// Also a text such as 1/2, which the conversion refuses with an explanation.
bool resembles_number(const std::string& text) {
    const std::size_t digit = text.starts_with('-') || text.starts_with('+') ? 1 : 0;
    return is_number(text) || (text.size() > digit && text[digit] >= '0' && text[digit] <= '9');
}

// Adds the zero without which -.5 is taken for an option. The value of --execute stays as it is.
void complete_fractions(std::vector<std::string>& arguments) {
    bool is_line = false;
    for (std::string& argument : arguments) {
        if (!is_line && argument.starts_with("-.") && is_number(argument))
            argument.insert(argument.begin() + 1, '0');
        is_line = !is_line && (argument == "-e" || argument == "--execute");
    }
}

} // namespace

std::vector<std::string> conversion_words(const std::vector<std::string>& arguments) {
    std::vector<std::string> words;
    auto argument = std::find(arguments.begin(), arguments.end(), "convert");
    while (argument != arguments.end() && ++argument != arguments.end())
        if (*argument == "--units" && std::next(argument) != arguments.end())
            ++argument; // its value
        else if (!argument->starts_with("--"))
            words.push_back(*argument);
    return words;
}

std::vector<std::string> with_convert_added(std::vector<std::string> arguments) {
    complete_fractions(arguments);
    auto first = arguments.begin();
    // The value of --execute can be a number.
    while (first != arguments.end() && first->starts_with("--") && *first != "--execute") {
        const bool has_value = *first == "--units" && std::next(first) != arguments.end();
        first += has_value ? 2 : 1;
    }
    // Only the command itself knows --also.
    const bool is_front = std::find(arguments.begin(), first, "--also") != first;
    if (first != arguments.end() && resembles_number(*first))
        arguments.insert(is_front ? arguments.begin() : first, "convert");
    return arguments;
}

} // namespace metrify
