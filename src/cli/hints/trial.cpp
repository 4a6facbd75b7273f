#include "cli/hints/trial.h"

#include "cli/hints/text_pattern.h"
#include "language/driver.h"
#include "language/expression.h"

namespace metrify {

bool is_harmless(const std::string& line) {
    static const text_pattern harmful(R"(\b(solve|fmin|fmax|func|begin|end|PrintFunc)\b)", letter_case::any);
    return !harmful.is_in(line);
}

std::optional<std::string> try_line(const std::string& line) {
    if (!is_harmless(line))
        return std::nullopt;
    reset_expression_state();
    const listing shown = run_further_lines(line.c_str());
    const std::string text(shown.view());
    const std::size_t answer = text.find('\n');
    if (answer == std::string_view::npos || text.find("ERROR", answer) != std::string_view::npos)
        return std::nullopt;
    constexpr std::string_view equals = " = ";
    const std::size_t begin = text.find(equals, answer);
    if (begin == std::string_view::npos)
        return std::nullopt;
    const std::size_t value = begin + equals.size();
    return text.substr(value, text.find('\n', value) - value);
}

} // namespace metrify
