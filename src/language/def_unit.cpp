#include "language/def_unit.h"

#include "language/expression.h"
#include "machine/function_dispatch.h"
#include "machine/operand_stack.h"
#include "machine/variables.h"
#include "units/unit_rendering.h"
#include "units/unit_table.h"
#include "units/user_units.h"

namespace metrify {

namespace {

bool name_is_taken(std::string_view name, std::string_view by_what, text_str*& err) {
    append(err, "ERROR: New unit name '");
    append(err, name);
    append(err, by_what);
    return false;
}

// The message has neither the name nor the closing quote.
void report_illegal_name(text_str*& err) {
    append(err, "ERROR: Illegal new unit name '.\n");
}

// The first argument: the new unit's name.
bool read_unit_name(cursor& expptr, std::string_view& name, text_str*& err) {
    if (!is_mnemonic(false, expptr)) {
        report_illegal_name(err);
        return false;
    }
    name = take_name(expptr);
    return check_new_unit_name(name, err);
}

// The second argument: the new unit's value. Writes the answer.
void read_unit_value(cursor& expptr, std::string_view name, text_str*& out, text_str*& err) {
    compile_ctx ctx;
    const bool is_read = compile_rhs(expptr, ctx, err);
    if (fails_as_interrupted(err) || !str_is_empty(err))
        return;
    if (!is_read || ctx.stack.depth() == 0) {
        append(err, "ERROR: Could not process second argument.\n");
        return;
    }
    dim_value value;
    pop_value(value, ctx);
    store_user_unit(name, value, err);
    if (!str_is_empty(err))
        return;
    append(out, " User defined unit '", name, "' ");
    print_value_in_default_units(out, value, err, true);
    append(out, "\n");
}

} // namespace

bool check_new_unit_name(std::string_view name, text_str*& err) {
    if (!str_is_empty(err))
        return false;
    cursor p(name.data(), name.data() + name.size());
    if (find_unit(p) != nullptr)
        return name_is_taken(name, "' matches an existing base unit.\n", err);
    if (is_function_name(false, p))
        return name_is_taken(name, "' matches a pre-programmed function.\n", err);
    if (find_var(name) != nullptr)
        return name_is_taken(name, "' matches an existing variable name.\n", err);
    return true;
}

// arguments := "(" [ name ] { "," [ value ] } ")"
// A missing value is no error: DefUnit(x) does nothing and writes nothing.
void define_user_unit(cursor& expptr, text_str*& out, text_str*& err) {
    str_clear(&err);
    skip_blanks_and_comments(expptr);
    if (!accept_char(true, '(', expptr))
        return;
    std::string_view name;
    int argument = 1;
    for (;;) {
        skip_blanks_and_comments(expptr);
        if (accept_char(true, ')', expptr))
            return;
        if (accept_char(true, ',', expptr)) {
            ++argument;
        } else if (argument == 1) {
            if (!read_unit_name(expptr, name, err))
                return;
        } else {
            if (argument > 2)
                append(err, " Cant get here");
            else if (name.empty())
                report_illegal_name(err);
            else
                read_unit_value(expptr, name, out, err);
            return;
        }
    }
}

} // namespace metrify
