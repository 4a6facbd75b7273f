#include "cli/short_form.h"

#include "base/number_text.h"

#include <algorithm>

namespace metrify {

bool is_number(const std::string& text) {
    double value = 0.0;
    return !text.empty() && *read_double(text.c_str(), value) == '\0';
}

std::vector<std::string> with_convert_added(std::vector<std::string> arguments) {
    const auto first = std::find_if(arguments.begin(), arguments.end(), [](const std::string& argument) {
        return !argument.starts_with("--") || argument == "--execute"; // whose value can be a number
    });
    if (first != arguments.end() && is_number(*first))
        arguments.insert(first, "convert");
    return arguments;
}

} // namespace metrify
