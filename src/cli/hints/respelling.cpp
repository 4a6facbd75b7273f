#include "cli/hints/respelling.h"

#include "cli/hints/text_pattern.h"
#include "cli/lookup/names.h"
#include "cli/lookup/unit_text.h"

#include <functional>
#include <map>
#include <optional>
#include <string_view>

namespace metrify {

namespace {

struct character_row {
    std::string_view character; // in UTF-8
    std::string_view spelling;
};

// Longer texts precede those that they begin with.
constexpr character_row characters[] = {
    {"\u00a0", " "},
    {"\u202f", " "},
    {"\u2009", " "},
    {"°C", "degC"},
    {"°F", "degF"},
    {"°K", "degK"},
    {"°R", "degR"},
    {"° C", "degC"},
    {"° F", "degF"},
    {"ºC", "degC"},
    {"ºF", "degF"},
    {"˚C", "degC"},
    {"˚F", "degF"},
    {"℃", "degC"},
    {"℉", "degF"},
    {"°", " deg"},
    {"º", " deg"},
    {"\u00b5", "u"},
    {"\u03bc", "u"},
    {"\u03a9", "ohm"},
    {"\u2126", "ohm"},
    {"Å", "angstrom"},
    {"\u212b", "angstrom"},
    {"·", "*"},
    {"⋅", "*"},
    {"∙", "*"},
    {"•", "*"},
    {"×", "*"},
    {"÷", "/"},
    {"∕", "/"},
    {"⁄", "/"},
    {"−", "-"},
    {"–", "-"},
    {"—", "-"},
    {"½", "(1/2)"},
    {"¼", "(1/4)"},
    {"¾", "(3/4)"},
    {"′", "'"},
    {"’", "'"},
    {"″", "\""},
    {"”", "\""},
    {"“", "\""},
    {"→", "->"},
    {"‰", "permille"},
    {"π", "pi()"},
    {"√", "sqrt"},
};

constexpr std::string_view superscripts[] = {"⁰", "¹", "²", "³", "⁴", "⁵", "⁶", "⁷", "⁸", "⁹"};
constexpr std::string_view superscript_minus = "⁻";

void note_spelling(correction& statement, std::string_view typed, std::string_view spelling) {
    statement.note("`" + std::string(typed) + "` is written `" + std::string(spelling) + "`");
}

void replace_characters(correction& statement) {
    for (const character_row& row : characters) {
        std::string_view spelling = row.spelling;
        std::size_t place = statement.text.find(row.character);
        if (place == std::string::npos)
            continue;
        for (; place != std::string::npos; place = statement.text.find(row.character, place))
            statement.text.replace(place, row.character.size(), spelling);
        if (spelling != " ")
            note_spelling(statement, row.character, spelling.substr(spelling.find_first_not_of(' ')));
    }
}

// The superscript at the place as ASCII, or an empty text; moves after it.
std::string take_superscript(std::string_view text, std::size_t& place) {
    const auto begins_with = [&](std::string_view beginning) {
        return text.substr(place, beginning.size()) == beginning;
    };
    if (begins_with(superscript_minus)) {
        place += superscript_minus.size();
        return "-";
    }
    for (std::size_t digit = 0; digit < std::size(superscripts); ++digit) {
        if (begins_with(superscripts[digit])) {
            place += superscripts[digit].size();
            return std::to_string(digit);
        }
    }
    return {};
}

void replace_superscripts(correction& statement) {
    std::string changed;
    for (std::size_t place = 0; place < statement.text.size();) {
        const std::size_t start = place;
        std::string power;
        for (std::string digit; !(digit = take_superscript(statement.text, place)).empty();)
            power += digit;
        if (power.empty()) {
            changed += statement.text[place++];
            continue;
        }
        changed += "^" + power;
        note_spelling(statement, statement.text.substr(start, place - start), "^" + power);
    }
    statement.text = changed;
}

// Compilation takes longer than a search. The patterns are constants, of which each has its address.
const text_pattern& compiled(const char* pattern) {
    static std::map<const char*, text_pattern> expressions;
    const auto known = expressions.find(pattern);
    return known != expressions.end() ? known->second : expressions.emplace(pattern, pattern).first->second;
}

/// Replaces every match for which there is a replacement, and adds the note if there was one.
using replacement_of = std::function<std::optional<std::string>(const std::smatch&)>;
void replace_matches(correction& statement, const char* pattern, const replacement_of& replacement,
                     const char* note) {
    const text_pattern& expression = compiled(pattern);
    std::string changed;
    std::string rest = statement.text;
    bool is_changed = false;
    for (std::smatch match; expression.finds(rest, match);) {
        const std::optional<std::string> by = replacement(match);
        is_changed = is_changed || by;
        changed += match.prefix().str() + by.value_or(match.str());
        rest = match.suffix().str();
    }
    if (!is_changed)
        return;
    statement.text = changed + rest;
    statement.note(note);
}

struct pattern_row {
    const char* pattern;
    const char* replacement;
    const char* note;
};

// In the order in which they are applied.
constexpr pattern_row patterns[] = {
    {R"((\d)_(\d))", "$1$2", "digits are not grouped"},
    {R"(^(\s*[-+]?[\d.]+)\s+1\s*;)", "$1;", "a plain number has no units"},
    {R"(\b(\d+)\s+(\d+/\d+)\b)", "($1 + $2)", "a number with a fraction is a sum"},
    {R"(^\s*([\d.]+)\s*'\s*([\d./]+)\s*(''|"))", "$1 ft + $2 in", "feet and inches are a sum"},
    {R"(([\d.])\s*'(?!'))", "$1 ft", "`'` is written `ft`"},
    {R"(([\d.])\s*(''|"))", "$1 in", "`\"` is written `in`"},
    {R"((;\s*)(->|=>|to\b|into\b|in\b)\s*(?=[A-Za-z]))", "$1", "a request follows the semicolon directly"},
    {R"(\s*(->|=>)\s*)", "; ", "a conversion is written `3 ft; m`, without an arrow"},
    {R"(\s+(to|into)\s+)", "; ", "a conversion is written `3 ft; m`, without `to`"},
    {R"(\b[Dd]eg(?:rees?|s)?\.?\s+([CFKR])\b)", "deg$1",
     "degrees are written `degC`, `degF`, `degK`, `degR`"},
    {R"(\b[Dd]egrees?\s+(celsius|Celsius|centigrade)\b)", "degC", "degrees Celsius are written `degC`"},
    {R"(\b[Dd]egrees?\s+(fahrenheit|Fahrenheit)\b)", "degF", "degrees Fahrenheit are written `degF`"},
    {R"(\s+per\s+)", "/", "`per` is written `/`"},
    {R"(\b[Ll]ight[ -]years?\b)", "lightyear", "`lightyear` is one word"},
    {R"(\b([Nn]autical|[Ss]ea) miles?\b)", "nmi", "a nautical mile of 1852 m is `nmi`"},
    {R"(\b(US|U\.S\.|us) +fl\.? ?oz\b)", "fluidounce", "a fluid ounce is written `fluidounce`"},
    {R"(\b(UK|imp|imperial|Imperial|British) +(gallons?|gal)\b)", "gal_UK",
     "the imperial gallon is `gal_UK`"},
    {R"(\b(UK|imp|imperial|Imperial|British) +(pints?|pt)\b)", "pint_UK", "the imperial pint is `pint_UK`"},
    {R"(\b(UK|imp|imperial|Imperial|British) +(quarts?|qt)\b)", "qt_UK", "the imperial quart is `qt_UK`"},
    {R"(\b(UK|imp|imperial|Imperial|British) +(fl\.? ?oz|fluid ounces?)\b)", "floz_UK",
     "the imperial fluid ounce is `floz_UK`"},
    {R"(\b(fl\.? ?oz|fluid ounces?)\b)", "fluidounce", "a fluid ounce is written `fluidounce`"},
    {R"(\b[Mm]etric tons?\b)", "tonne", "a metric ton is `tonne`"},
    {R"(\b([Ss]hort|US) tons?\b)", "ton_US", "a short ton is `ton_US`"},
    {R"(\b([Ll]ong|UK) tons?\b)", "ton", "a long ton is `ton`"},
    {R"(\b(US|U\.S\.) +(?=[A-Za-z]))", "", "the gallon, quart, pint and cup are those of the USA anyway"},
    {R"(\b[Tt]roy (oz|ounces?)\b)", "ozt", "a troy ounce is `ozt`"},
    {R"(\b[Mm]etric (hp|horsepower)\b)", "PS", "metric horsepower is `PS`"},
    {R"(\b(ft|foot)[ -](lbs?|pounds?)\b)", "ft lbf", "a foot-pound is written `ft lbf`"},
    {R"(\b(in|inch|inches) (of )?(water|H2O)( column)?\b)", "inWater", "a column of water is `inWater`"},
    {R"(\b(cm|centimet(er|re)s?) (of )?(water|H2O)( column)?\b)", "cmWater",
     "a column of water is `cmWater`"},
    {R"(\b(mm|millimet(er|re)s?) (of )?(water|H2O)( column)?\b)", "mmH2O", "a column of water is `mmH2O`"},
    {R"(\b(m|met(er|re)s?) (of )?(water|H2O)( column)?\b)", "mH2O", "a column of water is `mH2O`"},
    {R"(\b(ft|foot|feet) (of )?(water|H2O)( column)?\b)", "ftH2O", "a column of water is `ftH2O`"},
    {R"(\b(in|inch|inches) (of )?([Mm]ercury|Hg)\b)", "inHg", "a column of mercury is `inHg`"},
    {R"(\b(cm|centimet(er|re)s?) (of )?([Mm]ercury|Hg)\b)", "cmHg", "a column of mercury is `cmHg`"},
    {R"(\b(mm|millimet(er|re)s?) (of )?([Mm]ercury|Hg)\b)", "mmHg", "a column of mercury is `mmHg`"},
    {R"(\b[Tt]ons? (of )?[Rr]efrigeration\b)", "TR", "a ton of refrigeration is `TR`"},
    {R"(\b[Tt]ons? (of )?TNT\b)", "tTNT", "a ton of TNT is `tTNT`"},
    {R"(\b[Bb]arrels? of oil\b)", "bbl", "a barrel of oil is `bbl`"},
    {R"(\b([Pp]ounds?|lbs?)[ -]force\b)", "lbf", "a pound-force is `lbf`"},
    {R"(\b([Pp]ounds?|lbs?)[ -]mass\b)", "lbm", "a pound of mass is `lbm`"},
    {R"(\b([Kk]ilograms?|kg)[ -]force\b)", "kgf", "a kilogram-force is `kgf`"},
};

// What the language accepts in another sense.
constexpr pattern_row misread_patterns[] = {
    {R"(\*\*)", "^", "a power is written `^`"},
    {R"((deg([CF])\s*-\s*[\d.]+\s*deg\2\s*;\s*deg[CF])\b)", "$1diff",
     "`degC` and `degF` are temperatures, and a difference is shown in `degCdiff` or `degFdiff`"},
    {R"((deg[CF]\s*\+\s*[\d.]+\s*deg[CF])\b)", "$1diff",
     "`degC` and `degF` are temperatures, and a difference is given in `degCdiff` or `degFdiff`"},
    {R"((\b(?:rpms?|rps|RPM)\s*;\s*)Hz\b)", "$1rev/s",
     "`Hz` counts radians here; revolutions per second are `rev/s`"},
    {R"(\bHz(\s*;\s*(?:rpms?|rps|RPM)\b))", "rev/s$1",
     "`Hz` counts radians here; revolutions per second are `rev/s`"},
};

void replace_matches(correction& statement, const pattern_row& row) {
    replace_matches(
        statement, row.pattern,
        [&](const std::smatch& match) { return std::optional(match.format(row.replacement)); }, row.note);
}

bool is_outside_of_arguments(const std::string& text) {
    return text.find_first_of("([") == std::string::npos;
}

// Two units with a character between them that the language does not read as a product.
void join_units(correction& statement) {
    const auto product = [](const std::smatch& match) -> std::optional<std::string> {
        if (!is_unit_name(match[1].str()) || !is_unit_name(match[2].str()))
            return std::nullopt;
        return match[1].str() + " " + match[2].str();
    };
    replace_matches(statement, R"(\b([A-Za-z]+)[.-]([A-Za-z]+)\b)", product,
                    "units are multiplied by a blank or `*`");
}

void raise_units(correction& statement) {
    const auto power = [](const std::smatch& match) -> std::optional<std::string> {
        if (is_unit_name(match.str()) || is_variable_name(match[1].str()) || !is_unit_name(match[1].str()))
            return std::nullopt;
        return match[1].str() + "^" + match[2].str();
    };
    constexpr const char* note = "a power of a unit is written `m^2`";
    replace_matches(statement, R"(\b([A-Za-z]+)(-?[1-9])(?![\w.^]))", power, note);
    replace_matches(
        statement, R"(\b([A-Za-z]+)(-?[1-9])(?=[A-Za-z]))",
        [&](const std::smatch& match) -> std::optional<std::string> {
            const std::optional<std::string> raised = power(match);
            return raised ? std::optional(*raised + " ") : std::nullopt;
        },
        note);
    const auto square = [](const std::smatch& match) -> std::optional<std::string> {
        if (is_unit_name(match.str()) || !is_unit_name(match[2].str()))
            return std::nullopt;
        return match[2].str() + (match[1].str()[0] == 's' ? "^2" : "^3");
    };
    replace_matches(statement, R"(\b(square|sq|cubic|cu)\.?\s*([A-Za-z]+)\b)", square,
                    "squares and cubes are written `ft^2` and `ft^3`");
}

void correct_numbers(correction& statement) {
    if (!is_outside_of_arguments(statement.text))
        return; // a comma is in its place there
    const auto without_commas = [](const std::smatch& match) {
        std::string digits = match.str();
        std::erase(digits, ',');
        return std::optional(digits);
    };
    replace_matches(statement, R"((?:^|\b)\d{1,3}(?:,\d{3})+(?!\d))", without_commas,
                    "digits are not grouped");
    replace_matches(
        statement, R"((\d),(\d))",
        [](const std::smatch& match) { return std::optional(match.format("$1.$2")); },
        "the decimal sign is a point");
}

// 5 ft 11 in: two values with units in a row.
void add_values(correction& statement) {
    const auto sum = [](const std::smatch& match) -> std::optional<std::string> {
        if (!is_unit_name(match[2].str()) || !is_unit_name(match[4].str()))
            return std::nullopt;
        return match.format("$1 + $3");
    };
    replace_matches(statement, R"(([\d.]+\s*([A-Za-z]+))\s+([\d.]+\s*([A-Za-z]+)))", sum,
                    "a value in two units is a sum");
}

} // namespace

void respell(correction& statement) {
    replace_characters(statement);
    replace_superscripts(statement);
    correct_numbers(statement);
    for (const pattern_row& row : patterns)
        replace_matches(statement, row);
    raise_units(statement);
    join_units(statement);
    add_values(statement);
}

void correct_misread(correction& statement) {
    for (const pattern_row& row : misread_patterns)
        replace_matches(statement, row);
    const auto fraction = [](const std::smatch& match) -> std::optional<std::string> {
        if (!is_unit_name(match[3].str()))
            return std::nullopt;
        return match.format("$1($2) $3");
    };
    replace_matches(statement, R"((^|[=+(-])\s*(\d+\s*/\s*\d+)\s*([A-Za-z]+)\b)", fraction,
                    "a unit belongs to the number before it, so a fraction needs parentheses");
    const auto conversion = [](const std::smatch& match) -> std::optional<std::string> {
        const std::optional<unit_scale> from = read_unit_text(match[1].str());
        const std::optional<unit_scale> to = read_unit_text(match[2].str());
        if (!from || !to || !same_units_strict(from->dim, to->dim))
            return std::nullopt;
        return match.format("$1; $2");
    };
    replace_matches(statement, R"(\b([A-Za-z]+) in ([A-Za-z]+)\s*$)", conversion,
                    "`in` is the inch, and a conversion is written `3 ft; m`");
}

} // namespace metrify
