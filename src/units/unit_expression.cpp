#include "units/unit_expression.h"

#include "base/nesting.h"
#include "base/numeric_utilities.h"
#include "units/unit_lookup.h"

#include <cmath>
#include <string_view>

namespace metrify {

namespace {

constexpr double offset_degC = -273.15;
constexpr double offset_degF = -459.67;
constexpr std::string_view overflow_message = "ERROR:  Numerical over or underflow.\n";

/// State shared by the rules of one parse.
struct unit_parse {
    int unit_count = 0; // simple units read so far, including those in parentheses
    int temp_kind = 0;  // 1 if the latest temperature is degC, 2 if degF; never reset
    int nesting = 0;
    unit_fault fault = unit_fault::none;
};

unit_scale unit_of_one() {
    unit_scale scale;
    scale.factor = 1.0;
    return scale;
}

template <class... Parts>
void fail(unit_parse& parse, text_str*& err, const Parts&... message) {
    parse.fault = unit_fault::other;
    append(err, message...);
}

void fail_nesting(unit_parse& parse, text_str*& err) {
    parse.fault = unit_fault::nesting;
    report_nesting(err);
}

bool is_unit_expression(cursor& expptr, unit_scale& out, unit_parse& parse, bool nested, text_str*& err);

// Each level of a nested exponent adds its own message. An exponent nested too deeply gets the message for
// that alone.
void append_bad_exponent(unit_parse& parse, text_str*& err, std::string_view unit, std::string_view ending) {
    if (parse.fault != unit_fault::nesting)
        fail(parse, err, "ERROR: Bad exponent for unit '", unit, ending);
}

bool is_unit_exponent(cursor& expptr, double& result, unit_parse& parse, std::string_view unit,
                      text_str*& err);

// "(" { exponent } ")", after the opening parenthesis: the product of the exponents.
void read_exponent_product(cursor& expptr, double& result, unit_parse& parse, std::string_view unit,
                           text_str*& err) {
    for (;;) {
        double factor = 1.0;
        if (!is_unit_exponent(expptr, factor, parse, unit, err)) {
            if (str_is_empty(err))
                append_bad_exponent(parse, err, unit, "'.\n");
            return;
        }
        result *= factor;
        skip_blanks_and_comments(expptr);
        if (accept_char(true, ')', expptr))
            return;
    }
}

// "/" exponent, after the slash.
void read_exponent_divisor(cursor& expptr, double& result, unit_parse& parse, std::string_view unit,
                           text_str*& err) {
    double divisor = 1.0;
    if (!is_unit_exponent(expptr, divisor, parse, unit, err))
        append_bad_exponent(parse, err, unit, "' following '/'.\n");
    else if (divisor == 0.0)
        fail(parse, err, "ERROR: Divide by zero in exponent for unit '", unit, "'.\n");
    else
        result = 1.0 / divisor;
}

// exponent := number | "(" { exponent } ")" | "*" exponent | "/" exponent
// False without a message at a statement's end.
bool is_unit_exponent(cursor& expptr, double& result, unit_parse& parse, std::string_view unit,
                      text_str*& err) {
    const cursor entry = expptr;
    const nesting_level level(parse.nesting);
    result = 1.0;
    skip_blanks_and_comments(expptr);
    if (at_statement_end(expptr)) {
        expptr = entry;
        return false;
    }
    if (level.is_too_deep()) {
        fail_nesting(parse, err);
    } else if (accept_char(true, '(', expptr)) {
        read_exponent_product(expptr, result, parse, unit, err);
    } else if (scan_number(true, expptr, result)) {
        return true;
    } else if (accept_char(true, '*', expptr)) {
        if (!is_unit_exponent(expptr, result, parse, unit, err))
            append_bad_exponent(parse, err, unit, "' following '*'.\n");
    } else if (accept_char(true, '/', expptr)) {
        read_exponent_divisor(expptr, result, parse, unit, err);
    } else {
        append_bad_exponent(parse, err, unit, "'.\n");
    }
    if (str_is_empty(err))
        return true;
    result = 1.0;
    expptr = entry;
    return false;
}

// [ "^" exponent ], with any blanks before it; without a caret the exponent is 1. False with a message in
// err.
bool get_unit_exponent(cursor& expptr, double& exponent, unit_parse& parse, std::string_view unit,
                       text_str*& err) {
    exponent = 1.0;
    cursor p = expptr;
    skip_blanks_and_comments(p);
    if (at_statement_end(p) || !accept_char(true, '^', p))
        return true;
    expptr = p;
    if (!is_unit_exponent(expptr, exponent, parse, unit, err) && str_is_empty(err))
        fail(parse, err, "ERROR: Bad units exponent.\n");
    return str_is_empty(err);
}

// name, recording a temperature that has an offset. False without a message if it is not a unit.
bool is_generalized_unit(cursor& expptr, dim_value& unit, std::string_view& name, unit_parse& parse) {
    if (!is_unit(true, expptr, unit, &name))
        return false;
    if (name == "degC")
        parse.temp_kind = 1;
    else if (name == "degF")
        parse.temp_kind = 2;
    return true;
}

// name [ "^" exponent ], multiplied into the target.
bool is_exponentiated_base_unit(cursor& expptr, unit_scale& target, unit_parse& parse, text_str*& err) {
    dim_value unit;
    std::string_view name;
    double exponent = 1.0;
    if (!is_generalized_unit(expptr, unit, name, parse) ||
        !get_unit_exponent(expptr, exponent, parse, name, err))
        return false;
    ++parse.unit_count;
    if (exponent == 1.0) {
        target.factor *= unit.comp[0];
    } else {
        target.factor *= std::pow(unit.comp[0], exponent);
        unit.dim *= exponent;
    }
    target.dim += unit.dim;
    if (is_not_finite(target.factor)) {
        fail(parse, err, overflow_message);
        return false;
    }
    return true;
}

// "(" expression ")", after the opening parenthesis. Reads no exponent: a "^" is left to the expression
// parser.
bool is_paren_unit(cursor& expptr, unit_scale& target, unit_parse& parse, text_str*& err) {
    const nesting_level level(parse.nesting);
    if (level.is_too_deep()) {
        fail_nesting(parse, err);
        return false;
    }
    const int count_before = parse.unit_count;
    unit_scale term;
    if (!is_unit_expression(expptr, term, parse, true, err) || parse.unit_count == count_before)
        return false;
    skip_blanks_and_comments(expptr);
    if (!accept_char(true, ')', expptr)) {
        fail(parse, err, "ERROR:  Bad parenthesis.\n");
        return false;
    }
    target.factor = term.factor;
    target.dim = term.dim;
    return true;
}

// [ factor ], which is missing only at a statement's end.
bool is_exponentiated_base_unit_paren_or_null(cursor& expptr, unit_scale& target, unit_parse& parse,
                                              text_str*& err) {
    const cursor entry = expptr;
    skip_blanks_and_comments(expptr);
    if (at_statement_end(expptr))
        return true;
    const bool found = accept_char(true, '(', expptr)
                           ? is_paren_unit(expptr, target, parse, err)
                           : is_exponentiated_base_unit(expptr, target, parse, err);
    if (!found)
        expptr = entry;
    return found;
}

// A factor, or a bare "*" or "/" in its place: an expression may begin with a slash.
bool is_unit_mult(cursor& expptr, unit_scale& target, unit_parse& parse, bool& div_flag, text_str*& err) {
    const cursor entry = expptr;
    skip_blanks_and_comments(expptr);
    if (accept_char(true, '*', expptr)) {
        skip_blanks_and_comments(expptr);
        return true;
    }
    if (accept_char(true, '/', expptr)) {
        div_flag = true;
        skip_blanks_and_comments(expptr);
        return true;
    }
    if (is_exponentiated_base_unit_paren_or_null(expptr, target, parse, err) && str_is_empty(err))
        return true;
    expptr = entry;
    return false;
}

void multiply_scale(unit_scale& out, const unit_scale& term) {
    out.factor *= term.factor;
    out.dim += term.dim;
}

void divide_scale(unit_scale& out, const unit_scale& term) {
    out.factor /= term.factor;
    out.dim -= term.dim;
}

enum class parse_step { continues, ends, fails };

// [ "*" | "/" ] factor, after a factor. On ends and fails the caller restores the cursor.
parse_step take_next_factor(cursor& expptr, unit_scale& out, unit_parse& parse, bool& div_flag,
                            text_str*& err) {
    unit_scale term = unit_of_one();
    const bool slash = *expptr == '/';
    const bool star = *expptr == '*';
    if (slash || star)
        ++expptr.at;
    if (!is_unit_mult(expptr, term, parse, div_flag, err))
        return slash || star ? parse_step::ends
                             : parse_step::fails; // the operator is left to the expression parser
    if (slash && term.factor == 0.0) {
        fail(parse, err, overflow_message);
        return parse_step::fails;
    }
    // Once a slash has been read, every later factor is in the denominator.
    div_flag = div_flag || slash;
    if (div_flag)
        divide_scale(out, term);
    else
        multiply_scale(out, term);
    if (is_not_finite(out.factor)) {
        fail(parse, err, overflow_message);
        return parse_step::fails;
    }
    return parse_step::continues;
}

// { [ "*" | "/" ] factor }
bool is_more_unit_mult_or_null(cursor& expptr, unit_scale& out, unit_parse& parse, bool& div_flag,
                               text_str*& err) {
    for (;;) {
        const cursor entry = expptr;
        skip_blanks_and_comments(expptr);
        if (at_statement_end(expptr))
            return true;
        const parse_step result = take_next_factor(expptr, out, parse, div_flag, err);
        if (result != parse_step::continues) {
            expptr = entry;
            return result == parse_step::ends;
        }
    }
}

// Only a single temperature unit has an offset.
double offset_of(const unit_parse& parse, bool nested, bool div_flag) {
    if (nested || parse.unit_count != 1 || div_flag || parse.temp_kind == 0)
        return 0.0;
    return parse.temp_kind == 1 ? offset_degC : offset_degF;
}

bool is_lone_slash(cursor p) {
    skip_blanks_and_comments(p);
    if (!accept_char(true, '/', p))
        return false;
    skip_blanks_and_comments(p);
    return at_statement_end(p);
}

// expression := factor { [ "*" | "/" ] factor }
bool is_unit_expression(cursor& expptr, unit_scale& out, unit_parse& parse, bool nested, text_str*& err) {
    if (is_lone_slash(expptr)) {
        fail(parse, err, "ERROR: Math expression incomplete.\n");
        return false;
    }
    out = unit_of_one();
    str_clear(&err);
    parse.fault = unit_fault::none;
    bool div_flag = false;
    const cursor entry = expptr;
    if (!nested) {
        skip_blanks_and_comments(expptr);
        if (!accept_char(true, '*', expptr))
            expptr = entry;
    }
    const bool complete = is_unit_mult(expptr, out, parse, div_flag, err) &&
                          is_more_unit_mult_or_null(expptr, out, parse, div_flag, err) && str_is_empty(err);
    out.offset = offset_of(parse, nested, div_flag);
    if (complete || parse.unit_count > 0)
        return true;
    expptr = entry;
    return false;
}

} // namespace

bool parse_unit_expression(cursor& expptr, unit_scale& out, text_str*& err, unit_fault& fault) {
    unit_parse parse;
    const bool is_read = is_unit_expression(expptr, out, parse, false, err);
    fault = parse.fault;
    return is_read;
}

bool parse_unit_expression(cursor& expptr, unit_scale& out, text_str*& err) {
    unit_fault fault = unit_fault::none;
    return parse_unit_expression(expptr, out, err, fault);
}

} // namespace metrify
