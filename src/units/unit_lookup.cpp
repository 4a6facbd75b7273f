#include "units/unit_lookup.h"

#include "units/unit_table.h"
#include "units/user_units.h"

namespace metrify {

bool lookup_unit(cursor& expptr, dim_value& out) {
    const cursor entry = expptr;
    if (find_user_unit(expptr, out)) {
        out.comp[0] = 1.0 / out.comp[0]; // a user unit stores its value, the table the factor
        if (out.comp[0] == 0.0)
            expptr = entry; // an infinite unit has no factor
        return out.comp[0] != 0.0;
    }
    const unit_entry* unit = find_unit(expptr);
    if (unit == nullptr) {
        dim_clear(out);
        return false;
    }
    out = {0, {unit->factor, 0.0, 0.0}, unit->dim};
    return true;
}

bool is_unit(bool advance, cursor& expptr, dim_value& out, std::string_view* name) {
    const cursor entry = expptr;
    skip_blanks_and_comments(expptr);
    if (at_statement_end(expptr)) {
        expptr = entry;
        dim_clear(out);
        return false;
    }
    const cursor start = expptr;
    const bool found = lookup_unit(expptr, out);
    if (found && name != nullptr)
        *name = text_span(start, expptr);
    if (!found || !advance)
        expptr = entry;
    return found;
}

} // namespace metrify
