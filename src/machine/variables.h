#pragma once

// The variables of a run. The parser reaches one by name, compiled lists by its entry, the solvers by number.

#include "base/named_list.h"
#include "units/dim_value.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace metrify {

struct var_entry {
    std::string name;
    std::uint32_t number; // from 201 on in each run, never used twice
    dim_value value;      // in the base system
    bool held = false;    // an assignment leaves it as it is
};

/// The number of an entry follows from its place in the list.
using variable_store = named_list<var_entry>;

/// Empties the store at a run's start and end; the next variable gets 201. Until then entries stay where they
/// are.
void free_all_vars();

/// The variable of this name, case included, or null.
var_entry* find_var(std::string_view name);
/// The variable of this number, or null.
var_entry* find_var_by_num(std::uint32_t number);

// A reader that finds nothing appends a message and gives the sentinel in all three components.

dim_value getvar_by_name(std::string_view name, text_str*& err);
dim_value getvar_by_num(std::uint32_t number, text_str*& err);
/// 0 for an unknown name.
std::uint32_t varnum_by_name(std::string_view name, text_str*& err);
/// The entry's own name, or null.
const std::string* varname_by_num(std::uint32_t number, text_str*& err);

/// Sets a variable whether it is held or not.
void setvar_by_num(std::uint32_t number, const dim_value& value, text_str*& err);

/// Holds a variable against assignments, or no longer. A number of no variable is passed over.
void hold_var(std::uint32_t number, bool held);

/// Assigns the whole variable (component 0) or one component (1 to 3). A component makes the variable a
/// vector and sets the units of all of it. A variable that is held stays as it is. On return value is what
/// the variable holds.
void setvar(var_entry& entry, dim_value& value, int component);
/// The same by name, creating the variable if need be; the components not assigned are 0 then. Gives its
/// entry.
var_entry& setvar_by_name(std::string_view name, dim_value& value, int component);

/// The variable of this name; a new one is a scalar 0 without units.
var_entry& find_or_add_var(std::string_view name);

/// Creates a variable; its name must not be there yet.
var_entry& add_var(std::string_view name, const dim_value& value);

/// True if a variable may have this name: it is no unit and no function.
bool is_varname_okay(std::string_view name, text_str*& err);

} // namespace metrify
