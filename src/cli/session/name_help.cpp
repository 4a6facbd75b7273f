#include "cli/session/name_help.h"

#include "base/number_text.h"
#include "base/text_str.h"
#include "functions/function_help.h"
#include "units/unit_rendering.h"
#include "units/unit_table.h"

#include <algorithm>

namespace metrify {

namespace {

// The value of one unit in units of the base system. The offset of a temperature scale is not part of it.
std::string help_on_unit(const unit_entry& unit) {
    number_buffer buffer;
    work_text dimension;
    work_text error;
    render_units(system_MKS, unit.dim, dimension.str, error.str);
    std::string text = "1 " + std::string(unit.name) + " = ";
    text.append(format_double(1.0 / unit.factor, buffer));
    if (!dimension.view().empty())
        text.append(1, ' ').append(dimension.view());
    return text + "\n";
}

} // namespace

std::string help_on(std::string_view name, const session& calculator) {
    const std::vector<std::string> defined = calculator.defined_names();
    if (std::find(defined.begin(), defined.end(), name) != defined.end())
        return std::string(name) + " is defined in this session.\n";
    for (const unit_entry& unit : all_units())
        if (unit.name == name)
            return help_on_unit(unit);
    if (const function_row* function = find_function_help(name))
        return help_entry(*function);
    return "There is no unit, function or variable '" + std::string(name) + "'.\n";
}

} // namespace metrify
