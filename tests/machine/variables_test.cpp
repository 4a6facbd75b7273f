#include "machine/variables.h"
#include "tests/testing.h"
#include "units/user_units.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using namespace metrify;

class variables : public testing::Test {
  protected:
    variables() { forget(); }
    ~variables() override { forget(); }

    static void forget() {
        free_all_vars();
        free_user_units();
        reset_user_units();
    }

    // The variable's value after the assignment, and the returned value.
    static dim_value assigned(const char* name, dim_value value, int component) {
        const var_entry& entry = setvar_by_name(name, value, component);
        EXPECT_TRUE(equal(value, entry.value)) << described(value);
        EXPECT_EQ(&entry, find_var(name));
        return entry.value;
    }

    // Returns and clears the text of err.
    std::string message() {
        std::string text(err.view());
        str_clear(&err.str);
        return text;
    }

    work_text err;
};

void expect_equal(const dim_value& got, const dim_value& expected) {
    EXPECT_TRUE(equal(got, expected)) << described(got);
}

const dim_value undefined = {0, {infinity_sentinel, infinity_sentinel, infinity_sentinel}, in_plain};

TEST_F(variables, have_numbers_from_201_on) {
    EXPECT_EQ(add_var("x", scalar(1)).number, 201u);
    EXPECT_EQ(add_var("y", scalar(2)).number, 202u);
    EXPECT_EQ(varnum_by_name("x", err.str), 201u);
    EXPECT_EQ(varnum_by_name("y", err.str), 202u);
    EXPECT_EQ(message(), "");
}

TEST_F(variables, have_numbers_from_201_on_again_once_the_store_has_been_emptied) {
    add_var("x", scalar(1));
    free_all_vars();
    EXPECT_EQ(find_var("x"), nullptr);
    EXPECT_EQ(add_var("y", scalar(1)).number, 201u);
}

TEST_F(variables, keep_their_number_when_they_are_assigned_anew) {
    assigned("x", scalar(1), 0);
    assigned("y", scalar(1), 0);
    assigned("x", scalar(2), 0);
    EXPECT_EQ(varnum_by_name("x", err.str), 201u);
    assigned("z", scalar(2), 0);
    EXPECT_EQ(varnum_by_name("z", err.str), 203u);
}

TEST_F(variables, are_distinguished_by_case_and_by_the_whole_name) {
    add_var("x", scalar(1));
    add_var("X", scalar(2));
    add_var("xx", scalar(3));
    expect_equal(find_var("x")->value, scalar(1));
    expect_equal(find_var("X")->value, scalar(2));
    expect_equal(find_var("xx")->value, scalar(3));
    EXPECT_EQ(find_var("xX"), nullptr);
    EXPECT_EQ(find_var(""), nullptr);
}

TEST_F(variables, are_read_by_name_and_by_number) {
    add_var("x", vector(1, 2, 3, in_N));
    expect_equal(getvar_by_name("x", err.str), vector(1, 2, 3, in_N));
    expect_equal(getvar_by_num(201, err.str), vector(1, 2, 3, in_N));
    const std::string* name = varname_by_num(201, err.str);
    ASSERT_NE(name, nullptr);
    EXPECT_EQ(*name, "x");
    EXPECT_EQ(name, &find_var("x")->name); // the entry's own, no copy
    EXPECT_EQ(message(), "");
}

TEST_F(variables, that_are_unknown_by_name_read_as_the_sentinel_with_a_message) {
    expect_equal(getvar_by_name("x", err.str), undefined);
    EXPECT_EQ(message(), "ERROR:  'x' undefined.\n");
    EXPECT_EQ(varnum_by_name("x", err.str), 0u);
    EXPECT_EQ(message(), "ERROR:  'x' undefined.\n");
}

TEST_F(variables, are_quoted_up_to_the_first_blank_or_tab) {
    getvar_by_name("x  + 2", err.str);
    EXPECT_EQ(message(), "ERROR:  'x' undefined.\n");
    varnum_by_name("foo\tbar", err.str);
    EXPECT_EQ(message(), "ERROR:  'foo' undefined.\n");
}

TEST_F(variables, that_are_unknown_by_number_read_as_the_sentinel_with_a_message) {
    add_var("x", scalar(1));
    for (const std::uint32_t number : {0U, 1U, 200U, 202U, 1000000U}) {
        expect_equal(getvar_by_num(number, err.str), undefined);
        EXPECT_EQ(message(), "ERROR:  Variable number " + std::to_string(number) + " undefined.\n");
        EXPECT_EQ(varname_by_num(number, err.str), nullptr);
        EXPECT_EQ(message(), "ERROR:  var num '" + std::to_string(number) + "' undefined.\n");
        setvar_by_num(number, scalar(1), err.str);
        EXPECT_EQ(message(),
                  "ERROR:  var num '" + std::to_string(number) + "' undefined in setvar_by_num.\n");
    }
}

TEST_F(variables, append_their_messages) {
    err.append("one,");
    getvar_by_name("x", err.str);
    EXPECT_EQ(message(), "one,ERROR:  'x' undefined.\n");
}

TEST_F(variables, are_replaced_by_number) {
    add_var("x", scalar(1, in_m));
    setvar_by_num(201, vector(1, 2, 3, in_s), err.str);
    EXPECT_EQ(message(), "");
    expect_equal(find_var("x")->value, vector(1, 2, 3, in_s));
}

// Assignment of a whole variable.

TEST_F(variables, are_created_by_an_assignment) {
    expect_equal(assigned("x", vector(1, 2, 3, in_m), 0), vector(1, 2, 3, in_m));
}

TEST_F(variables, may_change_their_units) {
    assigned("x", scalar(3, in_m), 0);
    expect_equal(assigned("x", scalar(2, in_s), 0), scalar(2, in_s));
}

TEST_F(variables, change_from_vector_to_scalar_and_back) {
    assigned("x", vector(1, 2, 3, in_m), 0);
    expect_equal(assigned("x", scalar(4, in_m), 0), scalar(4, in_m));
    expect_equal(assigned("x", vector(5, 6, 7, in_m), 0), vector(5, 6, 7, in_m));
}

// Assignment of a component.

TEST_F(variables, take_a_component_into_a_vector) {
    assigned("x", vector(1, 2, 3, in_m), 0);
    expect_equal(assigned("x", scalar(7, in_m), 1), vector(7, 2, 3, in_m));
    expect_equal(assigned("x", scalar(8, in_m), 2), vector(7, 8, 3, in_m));
    expect_equal(assigned("x", scalar(9, in_m), 3), vector(7, 8, 9, in_m));
}

TEST_F(variables, become_a_vector_with_the_scalar_as_first_component) {
    assigned("x", scalar(5), 0);
    expect_equal(assigned("x", scalar(7), 2), vector(5, 7, 0));
    assigned("y", scalar(5), 0);
    expect_equal(assigned("y", scalar(7), 1), vector(7, 0, 0));
    assigned("z", scalar(5), 0);
    expect_equal(assigned("z", scalar(7), 3), vector(5, 0, 7));
}

TEST_F(variables, that_are_unknown_have_zeros_beside_an_assigned_component) {
    expect_equal(assigned("x", scalar(7, in_m), 1), vector(7, 0, 0, in_m));
    expect_equal(assigned("y", scalar(7, in_m), 2), vector(0, 7, 0, in_m));
    expect_equal(assigned("z", scalar(7, in_m), 3), vector(0, 0, 7, in_m));
}

TEST_F(variables, take_the_units_of_an_assigned_component_as_a_whole) {
    assigned("x", vector(1, 2, 3, in_m), 0);
    expect_equal(assigned("x", scalar(7, in_s), 2), vector(1, 7, 3, in_s));
}

TEST_F(variables, take_the_first_component_of_a_vector_assigned_to_a_component) {
    expect_equal(assigned("x", vector(7, 8, 9), 2), vector(0, 7, 0));
    expect_equal(assigned("x", vector(4, 5, 6), 3), vector(0, 7, 4));
}

TEST_F(variables, stay_where_they_are_while_the_store_grows) {
    std::vector<const var_entry*> entries;
    for (int i = 0; i < 5000; ++i)
        entries.push_back(&add_var("v" + std::to_string(i), scalar(i)));
    for (int i = 0; i < 5000; ++i) {
        const var_entry* entry = entries[static_cast<std::size_t>(i)];
        ASSERT_EQ(find_var("v" + std::to_string(i)), entry);
        ASSERT_EQ(entry->number, 201u + static_cast<unsigned>(i));
        ASSERT_EQ(entry->value.comp[0], i);
    }
}

TEST_F(variables, may_have_names_of_any_length) {
    const std::string name = "x" + repeated("y", 100000);
    add_var(name, scalar(1));
    add_var(name + "z", scalar(2));
    expect_equal(getvar_by_name(name, err.str), scalar(1));
    expect_equal(getvar_by_name(name + "z", err.str), scalar(2));
}

// Names.

TEST_F(variables, may_not_have_the_name_of_a_unit) {
    EXPECT_FALSE(is_varname_okay("m", err.str));
    EXPECT_EQ(message(), "ERROR: Variable name 'm' matches a base unit.\n");
    EXPECT_FALSE(is_varname_okay("ft", err.str));
    EXPECT_EQ(message(), "ERROR: Variable name 'ft' matches a base unit.\n");
}

TEST_F(variables, may_not_have_the_name_of_a_user_unit) {
    EXPECT_TRUE(is_varname_okay("foo", err.str));
    store_user_unit("foo", scalar(3, in_m), err.str);
    EXPECT_FALSE(is_varname_okay("foo", err.str));
    EXPECT_EQ(message(), "ERROR: Variable name 'foo' matches a base unit.\n");
}

TEST_F(variables, may_not_have_the_name_of_a_function_in_any_case) {
    for (const std::string name : {"sin", "Sin", "SIN"}) {
        EXPECT_FALSE(is_varname_okay(name, err.str));
        EXPECT_EQ(message(), "ERROR: Variable name '" + name + "' matches a pre-programmed function.\n");
    }
}

TEST_F(variables, may_have_any_other_name) {
    for (const char* name : {"x", "M", "mm_", "sinx", "Ft", "x1", "MKS", "end", "begin"})
        EXPECT_TRUE(is_varname_okay(name, err.str)) << name;
    EXPECT_EQ(message(), "");
}

TEST_F(variables, have_no_further_message_after_another) {
    err.append("one");
    EXPECT_FALSE(is_varname_okay("x", err.str));
    EXPECT_FALSE(is_varname_okay("m", err.str));
    EXPECT_EQ(message(), "one");
}

TEST_F(variables, may_have_the_name_of_one_that_is_there) {
    add_var("x", scalar(1));
    EXPECT_TRUE(is_varname_okay("x", err.str));
}

} // namespace
