#include "machine/variables.h"

#include "machine/calculator.h"
#include "machine/function_dispatch.h"
#include "units/unit_lookup.h"

namespace metrify {

namespace {

constexpr std::uint32_t number_before_first = 200;

variable_store& var_list() {
    return current_calculator().variables;
}

dim_value undefined_value() {
    dim_value value;
    value.comp.fill(infinity_sentinel);
    return value;
}

void report_unknown_name(std::string_view name, text_str*& err) {
    // The text can have trailing blanks.
    append(err, "ERROR:  '");
    err = str_append_until_any(&err, name, " \t");
    append(err, "' undefined.\n");
}

void report_unknown_number(std::string_view before, std::uint32_t number, std::string_view after,
                           text_str*& err) {
    append(err, before);
    append(err, static_cast<int>(number));
    append(err, after);
}

} // namespace

void free_all_vars() {
    var_list().clear();
}

var_entry* find_var(std::string_view name) {
    return var_list().find(name);
}

var_entry* find_var_by_num(std::uint32_t number) {
    variable_store& list = var_list();
    const std::uint32_t index = number - number_before_first - 1;
    return number > number_before_first && index < list.size() ? &list[index] : nullptr;
}

dim_value getvar_by_name(std::string_view name, text_str*& err) {
    if (const var_entry* entry = find_var(name))
        return entry->value;
    report_unknown_name(name, err);
    return undefined_value();
}

dim_value getvar_by_num(std::uint32_t number, text_str*& err) {
    if (const var_entry* entry = find_var_by_num(number))
        return entry->value;
    report_unknown_number("ERROR:  Variable number ", number, " undefined.\n", err);
    return undefined_value();
}

std::uint32_t varnum_by_name(std::string_view name, text_str*& err) {
    if (const var_entry* entry = find_var(name))
        return entry->number;
    report_unknown_name(name, err);
    return 0;
}

const std::string* varname_by_num(std::uint32_t number, text_str*& err) {
    if (const var_entry* entry = find_var_by_num(number))
        return &entry->name;
    report_unknown_number("ERROR:  var num '", number, "' undefined.\n", err);
    return nullptr;
}

void setvar_by_num(std::uint32_t number, const dim_value& value, text_str*& err) {
    if (var_entry* entry = find_var_by_num(number))
        entry->value = value;
    else
        report_unknown_number("ERROR:  var num '", number, "' undefined in setvar_by_num.\n", err);
}

void hold_var(std::uint32_t number, bool held) {
    if (var_entry* entry = find_var_by_num(number))
        entry->held = held;
}

void setvar(var_entry& entry, dim_value& value, int component) {
    dim_value& stored = entry.value;
    if (entry.held) {
        value = stored;
        return;
    }
    if (component == 0) {
        stored.kind = value.kind;
        stored.comp = value.comp;
    } else {
        stored.kind = 1;
        stored.comp[static_cast<std::size_t>(component - 1)] = value.comp[0];
    }
    stored.dim = value.dim;
    value = stored;
}

var_entry& setvar_by_name(std::string_view name, dim_value& value, int component) {
    var_entry& entry = find_or_add_var(name);
    setvar(entry, value, component);
    return entry;
}

var_entry& find_or_add_var(std::string_view name) {
    var_entry* entry = find_var(name);
    return entry != nullptr ? *entry : add_var(name, {});
}

var_entry& add_var(std::string_view name, const dim_value& value) {
    variable_store& list = var_list();
    const auto number = static_cast<std::uint32_t>(number_before_first + 1 + list.size());
    return list.add({std::string(name), number, value, false});
}

// Copying all variables before each statement would make the time of a run grow with the square of its
// length.
void keep_variables_before(std::string_view target) {
    variables_before& before = current_calculator().before_statement;
    if (!before.is_kept)
        return;
    before.count = var_list().size();
    before.has_all = false;
    before.target = find_var(target);
    if (before.target != nullptr)
        before.target_value = before.target->value;
}

void keep_all_variables() {
    variables_before& before = current_calculator().before_statement;
    if (!before.is_kept || before.has_all)
        return;
    before.has_all = true;
    before.all.resize(before.count);
    for (std::size_t i = 0; i < before.count; ++i)
        before.all[i] = var_list()[i].value;
}

void undo_statement() {
    const variables_before& before = current_calculator().before_statement;
    if (!before.is_kept)
        return;
    variable_store& list = var_list();
    list.shrink_to(before.count);
    for (std::size_t i = 0; before.has_all && i < before.count; ++i) {
        list[i].value = before.all[i];
        list[i].held = false;
    }
    if (before.target != nullptr)
        before.target->value = before.target_value;
}

bool is_varname_okay(std::string_view name, text_str*& err) {
    if (!str_is_empty(err))
        return false;
    cursor p(name.data(), name.data() + name.size());
    dim_value unit;
    function_ref function;
    if (is_unit(false, p, unit)) {
        append(err, "ERROR: Variable name '", name, "' matches a base unit.\n");
        return false;
    }
    if (lookup_function(p, function)) {
        append(err, "ERROR: Variable name '", name, "' matches a pre-programmed function.\n");
        return false;
    }
    return true;
}

} // namespace metrify
