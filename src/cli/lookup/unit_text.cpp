#include "cli/lookup/unit_text.h"

#include "base/cursor.h"
#include "units/unit_expression.h"
#include "units/unit_rendering.h"

#include <cmath>

namespace metrify {

std::optional<unit_scale> read_unit_text(std::string_view text) {
    const std::string terminated(text);
    cursor expptr(terminated.c_str());
    unit_scale scale;
    work_text err;
    if (!parse_unit_expression(expptr, scale, err.str) || !err.view().empty())
        return std::nullopt;
    skip_blanks(expptr);
    if (!at_text_end(expptr))
        return std::nullopt;
    return scale;
}

bool is_same_unit(const unit_scale& a, const unit_scale& b) {
    return same_units_strict(a.dim, b.dim) && a.offset == b.offset &&
           std::fabs(a.factor / b.factor - 1.0) < 1e-9;
}

std::string base_unit_text(const exponents& dim) {
    work_text text;
    work_text err;
    render_units(system_MKS, dim, text.str, err.str);
    return text.view().empty() ? "1" : std::string(text.view());
}

} // namespace metrify
