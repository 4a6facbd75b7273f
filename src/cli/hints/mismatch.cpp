#include "cli/hints/mismatch.h"

#include "base/cursor.h"
#include "base/number_text.h"
#include "cli/hints/text_pattern.h"
#include "cli/hints/trial.h"
#include "cli/lookup/quantities.h"
#include "cli/lookup/unit_text.h"

#include <optional>

namespace metrify {

namespace {

/// A line with one request: value ";" request. Without the request it is the value alone.
struct conversion_line {
    std::string value;
    std::string request;

    std::string text() const { return request.empty() ? value : value + "; " + request; }
};

struct substitution {
    const char* words; // a regular expression
    const char* by;
    const char* note;
};

constexpr substitution temperatures[] = {
    {R"(\bC\b)", "degC", ""},
    {R"(\bF\b)", "degF", ""},
    {R"(\bK\b)", "degK", ""},
    {R"(\bR\b)", "degR", ""},
};
constexpr const char* note_on_temperatures =
    "`C` is the coulomb and `F` the farad; temperatures are `degC` and `degF`";

constexpr substitution substitutions[] = {
    {R"(\b(lb|lbs|pound|pounds|lbf)\b)", "lbm", "`lb` is a force and `lbm` the mass"},
    {R"(\b(oz|ounce|ounces|ozf)\b)", "ozm", "`oz` is a force and `ozm` the mass"},
    {R"(\blbm\b)", "lbf", "`lbm` is a mass and `lbf` the force"},
    {R"(\bozm\b)", "ozf", "`ozm` is a mass and `ozf` the force"},
    {R"(\b(kg|kilogram|kilograms)\b)", "kgf", "`kg` is a mass and `kgf` the force"},
    {R"(\bg\b)", "GEarth()", "`g` is the gram and `GEarth()` the acceleration"},
    {R"(\bppm\b)", "1e-6", "`ppm` is a mass per volume here; as a ratio it is 1e-6"},
    {R"(\bD\b)", "day", "`D` is the darcy and `day` the day"},
    {R"(\bH\b)", "hr", "`H` is the henry and `hr` the hour"},
    {R"(\b(ounce|ounces|oz)\b)", "fluidounce", "`oz` is a force and `fluidounce` the volume"},
};

std::string replaced(const std::string& text, const substitution& row) {
    return text_pattern(row.words).replaced(text, row.by);
}

bool accept_if_it_works(correction& statement, const conversion_line& line, const char* note) {
    const std::string text = line.text();
    if (!try_line(text))
        return false;
    statement.text = text;
    statement.note(note);
    return true;
}

bool substitute_temperatures(correction& statement, conversion_line line) {
    const conversion_line original = line;
    for (const substitution& row : temperatures) {
        line.value = replaced(line.value, row);
        line.request = replaced(line.request, row);
    }
    return line.text() != original.text() && accept_if_it_works(statement, line, note_on_temperatures);
}

bool substitute(correction& statement, const conversion_line& line) {
    for (const substitution& row : substitutions) {
        const conversion_line changed = {replaced(line.value, row), replaced(line.request, row)};
        if (changed.text() == line.text())
            continue;
        if (accept_if_it_works(statement, {changed.value, line.request}, row.note) ||
            accept_if_it_works(statement, {line.value, changed.request}, row.note) ||
            accept_if_it_works(statement, changed, row.note))
            return true;
    }
    return false;
}

std::optional<exponents> dimension_of_value(const std::string& value) {
    const std::optional<std::string> answer = try_line(value);
    if (!answer)
        return std::nullopt;
    const std::size_t unit = answer->find(' ', answer->front() == '[' ? answer->find(']') : 0);
    const std::optional<unit_scale> scale = read_unit_text(
        unit == std::string::npos ? std::string_view() : std::string_view(*answer).substr(unit));
    return scale ? std::optional(scale->dim) : std::nullopt;
}

exponents reciprocal(exponents dim) {
    dim *= -1.0;
    return dim;
}

bool are_reciprocal(const exponents& a, const exponents& b) {
    return same_units_strict(reciprocal(a), b) && !same_units_strict(a, b);
}

constexpr const char* note_on_reciprocals = "one of the two is the reciprocal of the other";

// A request such as L/100 km, which holds a number.
bool correct_request_per_number(correction& statement, const conversion_line& line) {
    static const text_pattern per_number(R"(^\s*([A-Za-z^\d]+)\s*/\s*\(?([\d.]+)\s*([A-Za-z]+)\)?\s*$)");
    std::smatch match;
    if (!per_number.matches(line.request, match))
        return false;
    const std::string of = match[2].str() + " " + match[3].str();
    constexpr const char* note = "a request has no number, so the value is multiplied by it";
    if (accept_if_it_works(statement, {of + "/(" + line.value + ")", match[1].str()}, note)) {
        statement.note(note_on_reciprocals);
        return true;
    }
    return accept_if_it_works(statement, {of + "*(" + line.value + ")", match[1].str()}, note);
}

std::string described(const exponents& dim) {
    const std::string_view name = quantity_name(dim);
    const std::string unit = "`" + base_unit_text(dim) + "`";
    if (name.empty())
        return "in " + unit;
    const bool has_vowel = std::string_view("aeiou").find(name.front()) != std::string_view::npos;
    return (has_vowel ? "an " : "a ") + std::string(name) + " (" + unit + ")";
}

} // namespace

void correct_mismatch(correction& statement) {
    const std::size_t semicolon = statement.text.find(';');
    if (semicolon == std::string::npos)
        return;
    conversion_line line = {statement.text.substr(0, semicolon), statement.text.substr(semicolon + 1)};
    line.value = text_pattern(R"(^\s*[A-Za-z]\w*\s*=\s*)").replaced(line.value, "");
    line.request = line.request.substr(0, line.request.find(';'));
    line.request.erase(0, line.request.find_first_not_of(' '));
    if (line.request == "1") {
        accept_if_it_works(statement, {line.value, {}},
                           "`1` is no unit; without a request the value is in default units");
        return;
    }
    if (line.request.empty() || correct_request_per_number(statement, line))
        return;
    const std::optional<exponents> value = dimension_of_value(line.value);
    const std::optional<unit_scale> request = read_unit_text(line.request);
    if (!value || !request || substitute_temperatures(statement, line) || substitute(statement, line))
        return;
    if (are_reciprocal(*value, request->dim) &&
        accept_if_it_works(statement, {"1/(" + line.value + ")", line.request}, note_on_reciprocals))
        return;
    if (!same_units_strict(*value, request->dim))
        statement.note("the value is " + described(*value) + " and `" + line.request + "` " +
                       described(request->dim));
}

} // namespace metrify
