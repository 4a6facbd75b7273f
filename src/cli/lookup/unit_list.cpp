#include "cli/lookup/unit_list.h"

#include "base/number_text.h"
#include "cli/lookup/names.h"
#include "cli/lookup/quantities.h"
#include "cli/lookup/unit_text.h"
#include "cli/units/everyday_units.h"
#include "language/unit_definitions.h"
#include "machine/calculator.h"
#include "units/unit_table.h"

#include <algorithm>
#include <iomanip>
#include <optional>
#include <ostream>
#include <vector>

namespace metrify {

namespace {

struct listed_unit {
    std::string name;
    double value; // of one, in base units
    exponents dim;
};

std::vector<listed_unit> known_units() {
    std::vector<listed_unit> units;
    for (const unit_entry& unit : all_units())
        units.push_back({std::string(unit.name), 1.0 / unit.factor, unit.dim});
    named_list<user_unit>& own = current_unit_state().user_units.units;
    for (std::size_t i = 0; i < own.size(); ++i)
        units.push_back({own[i].name, own[i].value.comp[0], own[i].value.dim});
    return units;
}

// A temperature scale has its zero elsewhere.
std::string_view remark(std::string_view unit) {
    if (unit == "degC")
        return ", 0 degC = 273.15 degK";
    if (unit == "degF")
        return ", 0 degF = 255.372 degK";
    return {};
}

void write_units(const std::vector<listed_unit>& units, std::ostream& out) {
    const auto row = [&](std::string_view name, std::string_view value,
                         std::string_view base) -> std::ostream& {
        return out << std::left << std::setw(21) << name << ' ' << std::setw(13) << value << ' '
                   << std::setw(19) << base << ' ';
    };
    row("unit", "value of one", "in base units") << "quantity\n";
    for (const listed_unit& unit : units) {
        number_buffer buffer;
        row(unit.name, format_double(unit.value, buffer), base_unit_text(unit.dim))
            << quantity_name(unit.dim) << remark(unit.name) << '\n';
    }
}

std::vector<listed_unit> units_with(const exponents& dim) {
    std::vector<listed_unit> units = known_units();
    std::erase_if(units, [&](const listed_unit& unit) { return !same_units_strict(unit.dim, dim); });
    return units;
}

// The units of the quantities with a name that the text begins.
std::vector<std::string> quantity_units(std::string_view text) {
    std::vector<std::string> found;
    for (const quantity& row : all_quantities()) {
        const std::vector<std::string_view> names = split_list(row.names);
        const bool is_called = std::any_of(names.begin(), names.end(), [&](std::string_view name) {
            constexpr std::size_t least = 3; // letters of a beginning
            return equal_nocase(name, text) ||
                   (text.size() >= least && equal_nocase(name.substr(0, text.size()), text));
        });
        if (is_called)
            found.emplace_back(row.unit);
    }
    return found;
}

std::vector<listed_unit> units_called(std::string_view text) {
    std::vector<listed_unit> units = known_units();
    std::vector<exponents> dimensions;
    for (const std::string& unit : quantity_units(text))
        dimensions.push_back(read_unit_text(unit)->dim);
    std::erase_if(units, [&](const listed_unit& unit) {
        return !contains_nocase(unit.name, text) &&
               std::none_of(dimensions.begin(), dimensions.end(),
                            [&](const exponents& dim) { return same_units_strict(unit.dim, dim); });
    });
    return units;
}

std::vector<std::string> names_to_search() {
    std::vector<std::string> names = unit_names();
    for (const quantity& row : all_quantities())
        for (const std::string_view name : split_list(row.names))
            names.emplace_back(name);
    return names;
}

int report_nothing_found(std::string_view text, std::ostream& err) {
    const std::vector<std::string> products = quantity_units(text);
    if (!products.empty())
        err << "metrify: `" << text << "` has no single unit; write " << quoted_list(products);
    else
        err << "metrify: no unit or quantity is called `" << text << "`";
    const std::vector<std::string> nearest = nearest_names(text, names_to_search());
    if (products.empty() && !nearest.empty())
        err << "; the nearest: " << quoted_list(nearest);
    calculator everyday;
    const calculator_scope scope(everyday);
    define_units(everyday_units());
    if (!units_called(text).empty())
        err << "; `metrify units --everyday " << quoted_for_shell(text) << "` finds some";
    err << '\n';
    return 1;
}

} // namespace

int list_units(std::string_view text, std::ostream& out, std::ostream& err) {
    std::vector<listed_unit> units = units_called(text);
    if (units.empty()) {
        const std::optional<unit_scale> expression = read_unit_text(text);
        if (!expression)
            return report_nothing_found(text, err);
        units.push_back({std::string(text), 1.0 / expression->factor, expression->dim});
    }
    write_units(units, out);
    return 0;
}

int list_units_like(std::string_view expression, std::ostream& out, std::ostream& err) {
    const std::optional<unit_scale> scale = read_unit_text(expression);
    if (!scale)
        return report_nothing_found(expression, err);
    const std::vector<listed_unit> units = units_with(scale->dim);
    if (units.empty()) {
        err << "metrify: no unit has the dimension of `" << expression << "`, " << base_unit_text(scale->dim)
            << '\n';
        return 1;
    }
    write_units(units, out);
    return 0;
}

std::string unit_tables() {
    std::string text;
    exponents previous = {};
    bool is_first = true;
    for (const unit_entry& unit : all_units()) {
        if (is_first || !(unit.dim == previous)) {
            const std::string_view name = quantity_name(unit.dim);
            text += "\n### " + std::string(name) + ": `" + base_unit_text(unit.dim) +
                    "`\n\n| unit | value of one |\n|---|---|\n";
        }
        number_buffer buffer;
        text.append("| `").append(unit.name).append("` | ").append(format_double(1.0 / unit.factor, buffer));
        text.append(remark(unit.name)).append(" |\n");
        previous = unit.dim;
        is_first = false;
    }
    return text;
}

} // namespace metrify
