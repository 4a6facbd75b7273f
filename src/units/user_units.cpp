#include "units/user_units.h"

#include "units/unit_state.h"

namespace metrify {

namespace {

user_unit_store& store() {
    return current_unit_state().user_units;
}

} // namespace

void reset_user_units() {
    store().serial = 700;
}

void free_user_units() {
    user_unit_store& state = store();
    if (state.units.empty())
        return;
    state.units.clear();
    ++state.generation;
}

unsigned user_unit_generation() {
    return store().generation;
}

bool find_user_unit(cursor& expptr, dim_value& out) {
    named_list<user_unit>& units = store().units;
    if (units.empty())
        return false;
    cursor p = expptr;
    skip_blanks_and_comments(p);
    if (!is_mnemonic(false, p))
        return false;
    const user_unit* unit = units.find(take_name(p));
    if (unit == nullptr)
        return false;
    out = unit->value;
    expptr = p;
    return true;
}

void store_user_unit(std::string_view name, const dim_value& value, text_str*& err) {
    if (value.comp[0] == 0.0) {
        err = str_append_text(&err, "ERROR: Cannot define a unit with value zero.\n");
        return;
    }
    user_unit_store& state = store();
    const dim_value stored = {0, {value.comp[0], 0.0, 0.0}, value.dim};
    ++state.generation;
    if (user_unit* known = state.units.find(name))
        known->value = stored;
    else
        state.units.add({std::string(name), ++state.serial, stored});
}

} // namespace metrify
