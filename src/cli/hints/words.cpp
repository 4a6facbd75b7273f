#include "cli/hints/words.h"

#include "base/cursor.h"
#include "cli/hints/impossible_units.h"
#include "cli/hints/word_list.h"
#include "cli/lookup/names.h"
#include "cli/lookup/unit_text.h"
#include "cli/units/everyday_units.h"
#include "language/unit_definitions.h"
#include "machine/calculator.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

namespace metrify {

namespace {

constexpr word_row synonyms[] = {
    {"celsius centigrade", "degC"},
    {"fahrenheit", "degF"},
    {"kelvin kelvins K", "degK"},
    {"rankine", "degR"},
    {"e", "exp(1)"},
    {"c lightspeed", "CLight()"},
    {"arcsin", "asin"},
    {"arccos", "acos"},
    {"arctan", "atan"},
    {"gamma tgamma", "GammaFunc"},
    {"lgamma", "LogGammaFunc"},
    {"sqr", "sqrt"},
    {"mps", "m/s"},
    {"ftlb ftlbs", "ft lbf"},
    {"inlb inlbs", "in lbf"},
    {"kmh kmph", "km/hr"},
};

// Names that mean something else in another case.
struct spelling_row {
    std::string_view name;
    std::string_view spelling;
};
constexpr spelling_row exact_spellings[] = {
    {"Nm", "N m"},   {"kNm", "kN m"}, {"Nmm", "N mm"}, {"Ws", "W s"}, {"Pas", "Pa s"},
    {"Cal", "kcal"}, {"mcg", "ug"},   {"P", "poise"},  {"d", "day"},
};

struct prefix_row {
    std::string_view prefix;
    std::string_view value;
};
constexpr prefix_row prefixes[] = {
    {"kilo", "1e3"},   {"mega", "1e6"},  {"giga", "1e9"},   {"tera", "1e12"}, {"milli", "1e-3"},
    {"micro", "1e-6"}, {"nano", "1e-9"}, {"pico", "1e-12"}, {"hecto", "1e2"}, {"deci", "0.1"},
    {"centi", "0.01"}, {"da", "10"},     {"k", "1e3"},      {"M", "1e6"},     {"G", "1e9"},
    {"T", "1e12"},     {"P", "1e15"},    {"h", "1e2"},      {"d", "0.1"},     {"c", "0.01"},
    {"m", "1e-3"},     {"u", "1e-6"},    {"n", "1e-9"},     {"p", "1e-12"},   {"f", "1e-15"},
    {"K", "1e3"},
};

/// What is known about a name: its replacement, unless the name stays as it is, and a note.
struct meaning {
    std::optional<std::string> replacement = {};
    std::string note = {};
    bool needs_everyday_units = false;
};
using found_meaning = std::optional<meaning>;

std::string quoted(std::string_view name) {
    return "`" + std::string(name) + "`";
}

meaning written_as(std::string_view name, std::string_view spelling) {
    return {std::string(spelling), quoted(name) + " is written " + quoted(spelling)};
}

bool has_prefix(std::string_view unit) {
    const std::optional<unit_scale> whole = read_unit_text(unit);
    return whole && std::any_of(std::begin(prefixes), std::end(prefixes), [&](const prefix_row& row) {
               if (!unit.starts_with(row.prefix) || !is_unit_name(unit.substr(row.prefix.size())))
                   return false;
               const std::optional<unit_scale> plain = read_unit_text(unit.substr(row.prefix.size()));
               return plain && same_units_strict(plain->dim, whole->dim); // `min` is no part of an inch
           });
}

found_meaning synonym(std::string_view name) {
    for (const word_row& row : synonyms)
        if (has_word(row.words, name))
            return written_as(name, row.text);
    return std::nullopt;
}

// The everyday units as a calculator of their own.
calculator& everyday_calculator() {
    static const std::unique_ptr<calculator> loaded = [] {
        auto made = std::make_unique<calculator>();
        const calculator_scope scope(*made);
        define_units(everyday_units());
        return made;
    }();
    return *loaded;
}

bool is_everyday_unit(std::string_view name) {
    const calculator_scope scope(everyday_calculator());
    return is_unit_name(name);
}

meaning everyday_meaning(std::string_view name, const std::string& unit) {
    meaning found{unit, quoted(unit) + " is one of the everyday units, which `--everyday` adds", true};
    if (unit != name)
        found.note = quoted(name) + " is written " + quoted(unit) + "; " + found.note;
    return found;
}

// The letter of a molar concentration, as in uM.
found_meaning molar_concentration(std::string_view name) {
    if (name == "M")
        return meaning{{}, "`M` is no unit; `m` is the meter, and a molar concentration is written `mol/L`"};
    constexpr std::string_view usual_prefixes = "munp";
    if (name.size() != 2 || name[1] != 'M' || usual_prefixes.find(name[0]) == std::string_view::npos)
        return std::nullopt;
    const auto* const prefix =
        std::find_if(std::begin(prefixes), std::end(prefixes),
                     [&](const prefix_row& row) { return row.prefix == name.substr(0, 1); });
    return meaning{{},
                   quoted(name) + " is no unit; a molar concentration is written `" +
                       std::string(prefix->value) + " mol/L`"};
}

found_meaning exact_spelling(std::string_view name) {
    if (found_meaning molar = molar_concentration(name))
        return molar;
    if (name == "NM") // nm is the nanometer
        return is_unit_name("nmi") ? written_as(name, "nmi") : everyday_meaning(name, "nmi");
    for (const spelling_row& row : exact_spellings)
        if (row.name == name)
            return written_as(name, row.spelling);
    return std::nullopt;
}

// The spellings that differ in case, or in being singular or plural, British or American.
std::vector<std::string> variants(std::string_view name) {
    std::vector<std::string> forms = {std::string(name), std::string(name) + "s"};
    if (name.size() > 2 && fold_case(name.back()) == 's') {
        forms.emplace_back(name.substr(0, name.size() - 1));
        if (name.size() > 3 && fold_case(name[name.size() - 2]) == 'e')
            forms.emplace_back(name.substr(0, name.size() - 2));
    }
    if (const std::size_t re = name.rfind("tre"); re != std::string_view::npos && re + 4 >= name.size())
        forms.push_back(std::string(name.substr(0, re)) + "ter" + std::string(name.substr(re + 3)));
    return forms;
}

std::vector<std::string> spelled_alike(std::string_view name, const std::vector<std::string>& names) {
    std::vector<std::string> found;
    for (const std::string& form : variants(name)) {
        for (const std::string& known : names)
            if (equal_nocase(known, form) && std::find(found.begin(), found.end(), known) == found.end())
                found.push_back(known);
        if (!found.empty())
            return found;
    }
    return found;
}

// True for spellings of one unit, such as `kPa` and `kpa`.
bool have_same_value(const std::vector<std::string>& units) {
    const std::optional<unit_scale> first = read_unit_text(units.front());
    return first && std::all_of(units.begin(), units.end(), [&](const std::string& unit) {
               const std::optional<unit_scale> other = read_unit_text(unit);
               return other && is_same_unit(*first, *other);
           });
}

std::optional<unit_scale> everyday_scale(std::string_view name) {
    const calculator_scope scope(everyday_calculator());
    return read_unit_text(name);
}

found_meaning other_spelling(std::string_view name) {
    std::vector<std::string> found = spelled_alike(name, unit_names());
    if (is_everyday_unit(name)) { // MA is no mA
        const std::optional<unit_scale> meant = everyday_scale(name);
        std::erase_if(found, [&](const std::string& unit) {
            const std::optional<unit_scale> scale = read_unit_text(unit);
            return !meant || !scale || !is_same_unit(*scale, *meant);
        });
    }
    if (found.empty())
        return std::nullopt;
    if (have_same_value(found))
        return written_as(name, found.front());
    return meaning{{}, quoted(name) + " can be " + quoted_list(found)};
}

found_meaning everyday_spelling(std::string_view name) {
    if (is_everyday_unit(name))
        return everyday_meaning(name, std::string(name));
    const calculator_scope scope(everyday_calculator());
    const std::vector<std::string> found = spelled_alike(name, unit_names());
    if (found.empty())
        return std::nullopt;
    if (have_same_value(found))
        return everyday_meaning(name, found.front());
    return meaning{{},
                   quoted(name) + " can be " + quoted_list(found) +
                       " of the everyday units, which `--everyday` adds"};
}

// The name of a unit, perhaps in another case. Empty if there is none.
std::string unit_in_any_case(std::string_view name) {
    constexpr std::size_t clear_length = 2; // another case of a letter is another unit
    if (is_unit_name(name))
        return std::string(name);
    if (name.size() < clear_length)
        return {};
    const std::vector<std::string> found = spelled_alike(name, unit_names());
    return found.empty() || !have_same_value(found) ? std::string() : found.front();
}

found_meaning prefixed_unit(std::string_view name) {
    for (const prefix_row& row : prefixes) {
        if (!name.starts_with(row.prefix))
            continue;
        const std::string unit = unit_in_any_case(name.substr(row.prefix.size()));
        if (unit.empty() || has_prefix(unit))
            continue;
        const std::string product = std::string(row.value) + " " + unit;
        return meaning{{},
                       quoted(name) + " is " + quoted(product) + ": define it by `DefUnit(" +
                           std::string(name) + ", " + product + ")`"};
    }
    return std::nullopt;
}

meaning nearest_spelling(std::string_view name, bool is_call) {
    std::vector<std::string> names = is_call ? function_names() : unit_names();
    if (!is_call) {
        variable_store& variables = current_calculator().variables;
        for (std::size_t i = 0; i < variables.size(); ++i)
            names.push_back(variables[i].name);
    }
    const std::vector<std::string> nearest = nearest_names(name, names);
    const std::string unknown =
        std::string(is_call ? "no function is called " : "no unit or variable is called ") + quoted(name);
    constexpr std::size_t clear_length = 4; // a shorter text resembles too many names
    if (!nearest.empty() && name.size() >= clear_length)
        return {nearest.front(), unknown + "; the nearest: " + quoted_list(nearest)};
    if (!nearest.empty())
        return {{}, unknown + "; the nearest: " + quoted_list(nearest)};
    return {{},
            unknown + (is_call ? "; `metrify functions TEXT` searches" : "; `metrify units TEXT` searches")};
}

meaning meaning_of(std::string_view name, bool is_call) {
    if (is_unit_name(name))
        return {{}, quoted(name) + " is a unit and follows a number, as in `1 " + std::string(name) + "`"};
    if (const std::optional<std::string> reason = why_impossible(name))
        return {{}, *reason};
    if (name.size() == 1 && is_everyday_unit(name))
        return everyday_meaning(name, std::string(name)); // another case is another unit
    using search = found_meaning (*)(std::string_view);
    for (const search find : {exact_spelling, synonym, other_spelling, everyday_spelling, prefixed_unit}) {
        found_meaning found = find(name);
        if (found && !is_call)
            return *found;
        if (found && found->replacement && is_function_name(*found->replacement))
            return *found;
    }
    return nearest_spelling(name, is_call);
}

bool is_keyword(std::string_view name) {
    return has_word("MKS cgs FPS IPS DefUnit begin end PrintFunc", name);
}

// A unit follows a number, another unit, an operator between units, or the semicolon of a request.
bool unit_can_follow(std::string_view text) {
    const std::size_t last = text.find_last_not_of(" \t");
    return last != std::string_view::npos &&
           std::string_view("=+-(").find(text[last]) == std::string_view::npos;
}

// True if the name explains itself after this text.
bool is_in_place(std::string_view name, std::string_view text_before, bool is_call) {
    if (is_call)
        return is_function_name(name);
    if (is_unit_name(name))
        return unit_can_follow(text_before) || text_before.find('(') != std::string_view::npos;
    return is_variable_name(name) || is_function_name(name) || is_keyword(name);
}

// Skips what is no name: a number, or one character. The sign of a currency is noted.
void skip_other_text(cursor& expptr, correction& statement) {
    double ignored = 0.0;
    const std::string_view sign = currency_sign(expptr.at);
    if (!sign.empty()) {
        statement.note(why_impossible(sign).value_or(""));
        expptr.at += sign.size();
    } else if (is_blank(*expptr) || *expptr == '+' || *expptr == '-' || !scan_number(true, expptr, ignored)) {
        ++expptr.at;
    }
}

// True before the equals sign of an assignment to a variable or a component, such as x = or x[1] =
bool is_assignment_sign(cursor expptr) {
    skip_blanks(expptr);
    if (*expptr == '[') {
        while (!at_text_end(expptr) && *expptr != ']')
            ++expptr.at;
        if (*expptr == ']')
            ++expptr.at;
        skip_blanks(expptr);
    }
    return *expptr == '=';
}

} // namespace

void resolve_unknown_names(correction& statement) {
    const std::string text = statement.text;
    std::string changed;
    cursor expptr(text.c_str());
    while (!at_text_end(expptr)) {
        const cursor start = expptr;
        if (!is_mnemonic(false, expptr)) {
            skip_other_text(expptr, statement);
            changed += text_span(start, expptr);
            continue;
        }
        const std::string name(take_name(expptr));
        const bool is_call = *expptr == '(';
        const bool is_assigned =
            changed.find_first_not_of(" \t") == std::string::npos && is_assignment_sign(expptr);
        if (is_assigned && is_unit_name(name))
            statement.note(quoted(name) + " is a unit, and a variable needs another name");
        if (is_assigned || is_in_place(name, changed, is_call)) {
            changed += name;
            continue;
        }
        const meaning found = meaning_of(name, is_call);
        statement.note(found.note);
        statement.needs_everyday_units = statement.needs_everyday_units || found.needs_everyday_units;
        changed += found.replacement.value_or(name);
    }
    statement.text = changed;
}

} // namespace metrify
