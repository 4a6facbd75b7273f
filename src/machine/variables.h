#pragma once

// The variables of a run. The parser accesses them by name, instructions by entry, solvers by number.

#include "base/named_list.h"
#include "units/dim_value.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace metrify {

struct var_entry {
    std::string name;
    std::uint32_t number; // from 201 on in each run, unique
    dim_value value;      // in the base system
    bool held = false;    // assignments do not change it
};

/// The number of an entry follows from its index in the list.
using variable_store = named_list<var_entry>;

/// Empties the store at a run's start and end; the next variable gets 201. Until then entries do not
/// move.
void free_all_vars();

/// The variable of this name, case included, or null.
var_entry* find_var(std::string_view name);
/// The variable of this number, or null.
var_entry* find_var_by_num(std::uint32_t number);

// A function that does not find the variable appends a message and returns the sentinel in all three
// components.

dim_value getvar_by_name(std::string_view name, text_str*& err);
dim_value getvar_by_num(std::uint32_t number, text_str*& err);
/// 0 for an unknown name.
std::uint32_t varnum_by_name(std::string_view name, text_str*& err);
/// The entry's own name, or null.
const std::string* varname_by_num(std::uint32_t number, text_str*& err);

/// Sets a variable, even if it is held.
void setvar_by_num(std::uint32_t number, const dim_value& value, text_str*& err);

/// Sets whether assignments leave a variable unchanged. The number of an unknown variable is ignored.
void hold_var(std::uint32_t number, bool held);

/// Assigns the whole variable (component 0) or one component (1 to 3). Assigning a component makes the
/// variable a vector and sets the units of the whole vector. A held variable does not change. On return value
/// is the variable's value.
void setvar(var_entry& entry, dim_value& value, int component);
/// The same by name. Creates the variable if necessary, with 0 in the other components. Returns its entry.
var_entry& setvar_by_name(std::string_view name, dim_value& value, int component);

/// The variable of this name; a new one is a scalar 0 without units.
var_entry& find_or_add_var(std::string_view name);

/// Creates a variable; its name must be new.
var_entry& add_var(std::string_view name, const dim_value& value);

/// The variables before a statement, as far as the statement can change them.
struct variables_before {
    bool is_kept = false; // otherwise a statement cannot be undone
    std::size_t count = 0;
    var_entry* target = nullptr; // the variable that the statement assigns, if it existed
    dim_value target_value;
    bool has_all = false;
    std::vector<dim_value> all; // if the statement evaluates the function block, which assigns others
};

/// Keeps the variables before a statement that assigns the target, or no variable if its name is empty.
void keep_variables_before(std::string_view target);
/// Keeps all of them, before the statement evaluates the function block.
void keep_all_variables();
/// Sets the variables to what was kept and removes those added since. If all were kept, none is held any
/// longer: assignments change them again.
void undo_statement();

/// True if a variable may have this name, which must not be that of a unit or a function.
bool is_varname_okay(std::string_view name, text_str*& err);

} // namespace metrify
