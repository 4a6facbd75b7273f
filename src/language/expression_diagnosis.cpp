#include "language/expression_diagnosis.h"

#include "machine/function_dispatch.h"
#include "machine/variables.h"
#include "units/unit_expression.h"
#include "units/unit_lookup.h"

#include <cstring>

namespace metrify {

namespace {

bool is_defined(std::string_view name) {
    cursor p(name.data(), name.data() + name.size());
    dim_value unit;
    return is_function_name(false, p) || find_var(name) != nullptr || is_unit(false, p, unit);
}

} // namespace

void diagnose_rest_of_expression(const cursor& expptr, text_str*& err) {
    cursor p = expptr;
    unit_scale scale;
    if (parse_unit_expression(p, scale, err)) {
        const std::string_view word(expptr.at, std::strcspn(expptr.at, " \t/*^+-\n"));
        str_clear(&err);
        append(err, "ERROR: Unit assignment error -- value before '", word, "' must be dimensionless.\n");
        return;
    }
    if (report_first_undefined(expptr, err))
        return;
    p = expptr;
    skip_to_statement_end(p);
    append(err, "ERROR: Syntax error or undefined variable near or in '", text_span(expptr, p), "'.\n");
}

bool report_first_undefined(cursor expptr, text_str*& err) {
    skip_blanks_and_comments(expptr);
    if (at_statement_end(expptr)) {
        append(err, "ERROR:  Unexpected end of input.\n");
        return true;
    }
    while (!at_statement_end(expptr)) {
        if (!is_mnemonic(false, expptr)) {
            ++expptr.at;
            skip_blanks(expptr);
            continue;
        }
        const std::string_view name = take_name(expptr);
        if (!is_defined(name)) {
            append(err, "ERROR: '", name, "' undefined.\n");
            return true;
        }
    }
    return false;
}

} // namespace metrify
