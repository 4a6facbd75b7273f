#include "cli/lookup/everyday_tables.h"

#include "base/number_text.h"
#include "cli/lookup/unit_text.h"
#include "cli/units/everyday_units.h"
#include "language/unit_definitions.h"
#include "machine/calculator.h"

#include <algorithm>
#include <optional>
#include <sstream>
#include <string_view>

namespace metrify {

namespace {

constexpr std::string_view definition = "DefUnit(";

// The text of a comment after its sign and blanks; empty if the line has none.
std::string_view comment_of(std::string_view line) {
    const std::size_t sign = line.find('#');
    if (sign == std::string_view::npos)
        return {};
    const std::string_view comment = line.substr(sign + 1);
    return comment.substr(std::min(comment.find_first_not_of(' '), comment.size()));
}

// An abbreviation of a source and its meaning, which the heading of the file has in columns.
bool is_source(std::string_view line) {
    constexpr std::string_view indent = "#   ";
    return line.starts_with(indent) && line.size() > indent.size();
}

std::string source_row(std::string_view line) {
    const std::string_view source = comment_of(line);
    const std::size_t end = source.find(' ');
    const std::size_t meaning = source.find_first_not_of(' ', end);
    return "- " + std::string(source.substr(0, end)) + ": " + std::string(source.substr(meaning)) + '\n';
}

// The source, or the definition of a unit that is made of others.
std::string source_of(std::string_view line) {
    if (const std::string_view comment = comment_of(line); !comment.empty())
        return std::string(comment);
    const std::size_t begin = line.find(", ") + 2;
    return "`" + std::string(line.substr(begin, line.rfind(')') - begin)) + "`";
}

// The calculator in use knows the unit.
std::string unit_row(std::string_view line) {
    const std::string name(line.substr(definition.size(), line.find(',') - definition.size()));
    const std::optional<unit_scale> scale = read_unit_text(name);
    if (!scale)
        return {};
    number_buffer buffer;
    return "| `" + name + "` | " + std::string(format_double(1.0 / scale->factor, buffer)) + " | `" +
           base_unit_text(scale->dim) + "` | " + source_of(line) + " |\n";
}

} // namespace

std::string everyday_tables() {
    calculator used;
    const calculator_scope scope(used);
    define_units(everyday_units());
    std::istringstream lines(everyday_units());
    std::string sources;
    std::string tables;
    std::string previous = "start";
    for (std::string line; std::getline(lines, line); previous = line) {
        if (line.starts_with(definition))
            tables += unit_row(line);
        else if (is_source(line))
            sources += source_row(line);
        else if (previous.empty() && line.starts_with('#'))
            tables += "\n### " + std::string(comment_of(line)) +
                      "\n\n| unit | value of one | in base units | source |\n|---|---|---|---|\n";
    }
    return sources + tables;
}

} // namespace metrify
