#include "language/def_unit.h"
#include "machine/variables.h"
#include "tests/testing.h"
#include "units/unit_lookup.h"
#include "units/unit_system.h"
#include "units/user_units.h"

#include <gtest/gtest.h>
#include <string>

namespace {

using namespace metrify;

class user_units : public testing::Test {
  protected:
    user_units() { clear(); }
    ~user_units() override { clear(); }

    static void clear() {
        reset_unit_state();
        free_all_vars();
        free_user_units();
        reset_user_units();
    }

    /// Runs the statement from after its keyword and returns the answer, or the message.
    static std::string define(const char* arguments) {
        work_text out;
        work_text err;
        cursor p(arguments);
        define_user_unit(p, out.str, err.str);
        return err.view().empty() ? std::string(out.view()) : std::string(err.view());
    }
    static std::string name_check(std::string_view name) {
        work_text err;
        const bool may_be_used = check_new_unit_name(name, err.str);
        EXPECT_EQ(may_be_used, err.view().empty()) << name;
        return std::string(err.view());
    }
    static bool is_known(const char* name) {
        cursor p(name);
        dim_value out;
        return find_user_unit(p, out);
    }
    static dim_value value_of(const char* name) {
        cursor p(name);
        dim_value out;
        EXPECT_TRUE(find_user_unit(p, out)) << name;
        return out;
    }

    work_text err;
};

TEST_F(user_units, are_found_by_their_whole_name) {
    store_user_unit("foo", scalar(0.9144, in_m), err.str);
    const char* text = "foo + 1";
    cursor p(text);
    dim_value out;
    EXPECT_TRUE(find_user_unit(p, out));
    EXPECT_EQ(p.at, text + 3);
    EXPECT_EQ(out.comp[0], 0.9144);
    EXPECT_EQ(out.dim, in_m);
    for (const char* other : {"fo", "fooo", "Foo", "foo_1", "foo2", ""})
        EXPECT_FALSE(is_known(other)) << other;
}

TEST_F(user_units, are_found_after_blanks) {
    store_user_unit("foo", scalar(2, in_m), err.str);
    const char* text = "  \tfoo";
    cursor p(text);
    dim_value out;
    EXPECT_TRUE(find_user_unit(p, out));
    EXPECT_EQ(p.at, text + 6);
}

TEST_F(user_units, leave_the_cursor_unchanged_if_not_found) {
    store_user_unit("foo", scalar(2, in_m), err.str);
    const char* text = "  bar";
    cursor p(text);
    dim_value out;
    EXPECT_FALSE(find_user_unit(p, out));
    EXPECT_EQ(p.at, text);
}

TEST_F(user_units, have_the_value_of_the_last_definition) {
    store_user_unit("foo", scalar(3, in_m), err.str);
    store_user_unit("foo", scalar(2, in_s), err.str);
    EXPECT_EQ(value_of("foo").comp[0], 2.0);
    EXPECT_EQ(value_of("foo").dim, in_s);
}

TEST_F(user_units, keep_the_first_component_of_a_vector) {
    store_user_unit("foo", vector(4, 5, 6, in_m), err.str);
    EXPECT_EQ(value_of("foo").kind, 0);
    EXPECT_EQ(value_of("foo").comp, (std::array<double, 3>{4, 0, 0}));
    store_user_unit("foo", vector(7, 8, 9, in_m), err.str);
    EXPECT_EQ(value_of("foo").kind, 0);
    EXPECT_EQ(value_of("foo").comp, (std::array<double, 3>{7, 0, 0}));
}

TEST_F(user_units, are_not_stored_with_a_value_of_zero) {
    store_user_unit("foo", scalar(0, in_m), err.str);
    EXPECT_EQ(err.view(), "ERROR: Cannot define a unit with value zero.\n");
    EXPECT_FALSE(is_known("foo"));
    str_clear(&err.str);
    store_user_unit("foo", vector(0, 1, 2, in_m), err.str);
    EXPECT_EQ(err.view(), "ERROR: Cannot define a unit with value zero.\n");
    EXPECT_FALSE(is_known("foo"));
}

TEST_F(user_units, keep_their_value_when_a_zero_is_refused) {
    store_user_unit("foo", scalar(3, in_m), err.str);
    store_user_unit("foo", scalar(0, in_s), err.str);
    EXPECT_EQ(value_of("foo").comp[0], 3.0);
    EXPECT_EQ(value_of("foo").dim, in_m);
}

TEST_F(user_units, are_gone_when_freed) {
    store_user_unit("foo", scalar(3, in_m), err.str);
    store_user_unit("bar", scalar(3, in_m), err.str);
    free_user_units();
    EXPECT_FALSE(is_known("foo"));
    EXPECT_FALSE(is_known("bar"));
    store_user_unit("foo", scalar(5, in_m), err.str);
    EXPECT_EQ(value_of("foo").comp[0], 5.0);
}

TEST_F(user_units, can_be_many) {
    for (int i = 0; i < 20000; ++i)
        store_user_unit("unit" + std::to_string(i), scalar(i + 1, in_m), err.str);
    EXPECT_EQ(value_of("unit0").comp[0], 1.0);
    EXPECT_EQ(value_of("unit12345").comp[0], 12346.0);
    EXPECT_EQ(value_of("unit19999").comp[0], 20000.0);
}

TEST_F(user_units, change_their_generation_with_each_definition_and_when_freed) {
    const unsigned none = user_unit_generation();
    store_user_unit("foo", scalar(3, in_m), err.str);
    const unsigned one = user_unit_generation();
    EXPECT_NE(one, none);
    store_user_unit("foo", scalar(2, in_s), err.str);
    const unsigned again = user_unit_generation();
    EXPECT_NE(again, one);
    free_user_units();
    EXPECT_NE(user_unit_generation(), again);
}

// Names.

TEST_F(user_units, may_not_have_a_base_units_name) {
    EXPECT_EQ(name_check("m"), "ERROR: New unit name 'm' matches an existing base unit.\n");
    EXPECT_EQ(name_check("Torrs"), "ERROR: New unit name 'Torrs' matches an existing base unit.\n");
}

TEST_F(user_units, may_not_have_a_functions_name_in_any_case) {
    EXPECT_EQ(name_check("sin"), "ERROR: New unit name 'sin' matches a pre-programmed function.\n");
    EXPECT_EQ(name_check("SIN"), "ERROR: New unit name 'SIN' matches a pre-programmed function.\n");
    EXPECT_EQ(name_check("Number"), "ERROR: New unit name 'Number' matches a pre-programmed function.\n");
}

TEST_F(user_units, may_not_have_a_variables_name) {
    add_var("foo", scalar(1));
    EXPECT_EQ(name_check("foo"), "ERROR: New unit name 'foo' matches an existing variable name.\n");
    EXPECT_EQ(name_check("Foo"), "");
}

TEST_F(user_units, may_have_the_name_of_a_user_unit) {
    store_user_unit("foo", scalar(3, in_m), err.str);
    EXPECT_EQ(name_check("foo"), "");
}

TEST_F(user_units, may_have_any_other_name) {
    for (const char* name : {"foo", "Meter", "m2", "sinx", "a_1"})
        EXPECT_EQ(name_check(name), "") << name;
}

TEST_F(user_units, have_no_valid_name_while_an_error_is_set) {
    err.append("ERROR: earlier.\n");
    EXPECT_FALSE(check_new_unit_name("foo", err.str));
    EXPECT_FALSE(check_new_unit_name("m", err.str));
    EXPECT_EQ(err.view(), "ERROR: earlier.\n");
}

// The statement.

// A foot is the inverse of 3.28083989501312, so lengths in feet miss round numbers by some 1e-15.
TEST_F(user_units, are_defined_by_a_name_and_a_value) {
    EXPECT_EQ(define("(yd2, 3 ft)"), " User defined unit 'yd2'  = 0.9144 m\n");
    EXPECT_NEAR(value_of("yd2").comp[0], 0.9144, 1e-14);
}

TEST_F(user_units, can_have_any_exponents) {
    EXPECT_EQ(define("(foo, 3 kg m / s^2)"), " User defined unit 'foo'  = 3 kg m / s^2\n");
    EXPECT_EQ(value_of("foo").dim, in_N);
    EXPECT_EQ(define("(dozen, 12)"), " User defined unit 'dozen'  = 12 \n");
    EXPECT_EQ(value_of("dozen").dim, in_plain);
}

TEST_F(user_units, can_be_defined_by_an_expression) {
    add_var("x", scalar(2, in_m));
    EXPECT_EQ(define(" ( foo , (x + 1 m) * 2 ) "), " User defined unit 'foo'  = 6 m\n");
    EXPECT_EQ(define("(baz, -x)"), " User defined unit 'baz'  = -2 m\n");
}

TEST_F(user_units, are_shown_in_default_units) {
    set_unit_system(system_cgs);
    EXPECT_EQ(define("(foo, 3 ft)"), " User defined unit 'foo'  = 91.44 cm\n");
}

TEST_F(user_units, are_not_defined_without_a_list_or_a_value_and_no_message_is_written) {
    for (const char* text : {"", " foo", "; m", "()", "( )", "(x)", "(x,)", "(,)"}) {
        EXPECT_EQ(define(text), "") << text;
        EXPECT_FALSE(is_known("x"));
    }
}

TEST_F(user_units, are_not_defined_with_a_malformed_name) {
    for (const char* text : {"(2x, 3 ft)", "(_x, 3 ft)", "((, 3)", "(, 3)", "(", "(;"})
        EXPECT_EQ(define(text), "ERROR: Illegal new unit name '.\n") << text;
}

TEST_F(user_units, are_not_defined_with_a_name_that_is_taken) {
    add_var("x", scalar(2, in_m));
    EXPECT_EQ(define("(m, 2 ft)"), "ERROR: New unit name 'm' matches an existing base unit.\n");
    EXPECT_EQ(define("(sin, 2)"), "ERROR: New unit name 'sin' matches a pre-programmed function.\n");
    EXPECT_EQ(define("(x, 2)"), "ERROR: New unit name 'x' matches an existing variable name.\n");
}

TEST_F(user_units, are_not_defined_by_text_that_is_no_expression) {
    EXPECT_EQ(define("(foo, ])"), "ERROR: Could not process second argument.\n");
    EXPECT_FALSE(is_known("foo"));
}

TEST_F(user_units, pass_on_the_message_of_their_value) {
    EXPECT_EQ(define("(foo, 3 m + 2 s)"), "ERROR:  Adding incompatible units: 'm' AND 's'.\n");
    EXPECT_EQ(define("(foo, bar)"), "ERROR: 'bar' undefined.\n");
    EXPECT_FALSE(is_known("foo"));
}

TEST_F(user_units, are_not_defined_as_zero) {
    EXPECT_EQ(define("(foo, 0 m)"), "ERROR: Cannot define a unit with value zero.\n");
    EXPECT_FALSE(is_known("foo"));
}

TEST_F(user_units, are_redefined_by_a_second_statement) {
    EXPECT_EQ(define("(foo, 3 ft)"), " User defined unit 'foo'  = 0.9144 m\n");
    EXPECT_EQ(define("(foo, 2 ft)"), " User defined unit 'foo'  = 0.6096 m\n");
    EXPECT_NEAR(value_of("foo").comp[0], 0.6096, 1e-14);
}

TEST_F(user_units, can_be_defined_by_their_own_earlier_value) {
    EXPECT_EQ(define("(foo, 3 m)"), " User defined unit 'foo'  = 3 m\n");
    EXPECT_EQ(define("(foo, 2 foo)"), " User defined unit 'foo'  = 6 m\n");
}

TEST_F(user_units, use_the_last_of_several_names) {
    EXPECT_EQ(define("(x y, 3)"), " User defined unit 'y'  = 3 \n");
    EXPECT_FALSE(is_known("x"));
}

TEST_F(user_units, are_defined_also_if_the_list_is_not_closed) {
    EXPECT_EQ(define("(foo, 3 ft"), " User defined unit 'foo'  = 0.9144 m\n");
    EXPECT_TRUE(is_known("foo"));
}

} // namespace
