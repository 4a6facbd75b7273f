#include "cli/lookup/also.h"

#include "base/number_text.h"
#include "cli/lookup/quantities.h"
#include "cli/lookup/unit_text.h"
#include "cli/units/everyday_units.h"
#include "language/unit_definitions.h"
#include "machine/calculator.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <ostream>
#include <vector>

namespace metrify {

namespace {

constexpr double most_digits_more = 3.0;

struct shown_quantity {
    double number;
    std::string_view unit;
    double digits_more; // beyond those of a number between 1 and 1000
};

double digits_beyond_readable(double number) {
    if (number == 0.0 || !std::isfinite(number))
        return 0.0;
    constexpr double rounding = 1e-9; // 1 kWh can be a little less than 1
    const double digits = std::log10(std::fabs(number));
    const double more = std::max({0.0, -digits, digits - 3.0});
    return more < rounding ? 0.0 : more;
}

std::vector<shown_quantity> in_common_units(double val, std::string_view in_units,
                                            std::string_view shown_units) {
    std::vector<shown_quantity> found;
    const std::optional<unit_scale> given = read_unit_text(in_units);
    const quantity* row = given ? find_quantity(given->dim) : nullptr;
    if (row == nullptr)
        return found;
    const std::optional<unit_scale> shown = read_unit_text(shown_units);
    const double base = (val - given->offset) / given->factor;
    for (const std::string_view unit : split_list(row->common_units)) {
        const std::optional<unit_scale> scale = read_unit_text(unit);
        // A unit of the user can have taken the name.
        if (!scale || !same_units_strict(scale->dim, given->dim) || is_same_unit(*scale, *given) ||
            (shown && is_same_unit(*scale, *shown)))
            continue;
        const double number = base * scale->factor + scale->offset;
        found.push_back({number, unit, digits_beyond_readable(number)});
    }
    std::stable_sort(found.begin(), found.end(), [](const shown_quantity& a, const shown_quantity& b) {
        return a.digits_more < b.digits_more;
    });
    return found;
}

} // namespace

void write_in_common_units(double val, std::string_view in_units, std::string_view shown_units,
                           const std::string& unit_definitions, std::ostream& out) {
    calculator used;
    const calculator_scope scope(used);
    define_units(everyday_units() + unit_definitions);
    bool is_first = true;
    for (const shown_quantity& row : in_common_units(val, in_units, shown_units)) {
        if (row.digits_more > most_digits_more && !is_first)
            break;
        is_first = false;
        number_buffer buffer;
        out << "  " << format_double(row.number, buffer) << ' ' << row.unit << '\n';
    }
}

} // namespace metrify
