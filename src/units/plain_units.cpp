#include "units/plain_units.h"

#include "base/cursor.h"
#include "units/unit_expression.h"

#include <algorithm>

namespace metrify {

namespace {

// A unit expression with blanks. Statement ends, comments and continuations have other meanings than units.
bool is_unit_character(char c) {
    return is_name_char(c) || is_blank(c) || std::string_view("%^*/()+-.").find(c) != std::string_view::npos;
}

} // namespace

bool parse_plain_units(std::string_view text, unit_scale& out) {
    if (!std::all_of(text.begin(), text.end(), is_unit_character))
        return false;
    work_text terminated;
    terminated.append(text);
    work_text err;
    cursor p(terminated.str->text);
    return parse_unit_expression(p, out, err.str) && str_is_empty(err.str) && at_text_end(p);
}

} // namespace metrify
