// Plans and tables through the C interface.

#include "tests/library/calls.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <set>
#include <vector>

namespace {

using namespace metrify::test;

constexpr std::ptrdiff_t one_number = sizeof(double);

TEST(library_plan, converts_in_full_precision) {
    const plan_handle plan("degC", "degF");
    ASSERT_EQ(plan.status(), METRIFY_OK);
    EXPECT_NEAR(metrify_plan_convert(plan.get(), 100.123456789012), 212.2222222202216, 1e-11);
    EXPECT_STREQ(metrify_plan_units(plan.get()), "degF");
}
TEST(library_plan, converts_to_default_units_without_a_request) {
    const plan_handle plan("kPa", "");
    EXPECT_EQ(metrify_plan_convert(plan.get(), 2.5), 2500);
    EXPECT_STREQ(metrify_plan_units(plan.get()), "kg / m s^2");
}
TEST(library_plan, reports_the_message_of_the_language) {
    const plan_handle incompatible("ft", "s");
    EXPECT_EQ(incompatible.status(), METRIFY_REFUSED);
    EXPECT_EQ(incompatible.message(), "ERROR IN REQUESTED OUTPUT: 's' is incompatible.\n");
    EXPECT_EQ(incompatible.get(), nullptr);
    EXPECT_EQ(plan_handle("ft", "xyz").message(), "ERROR IN REQUESTED OUTPUT: 'xyz' not recognized.\n");
    EXPECT_EQ(plan_handle("xyz", "ft").status(), METRIFY_REFUSED);
}
TEST(library_plan, converts_an_array) {
    const plan_handle plan("kPa", "Pa");
    const std::vector<double> from = {0, 1, -2.5, 4, 5, 6, 7, 8, 9, 10, 11};
    std::vector<double> to(from.size());
    ASSERT_EQ(metrify_plan_apply(plan.get(), from.data(), one_number, to.data(), one_number, from.size()),
              METRIFY_OK);
    EXPECT_EQ(to, (std::vector<double>{0, 1000, -2500, 4000, 5000, 6000, 7000, 8000, 9000, 10000, 11000}));
}
TEST(library_plan, steps_through_arrays_by_bytes) {
    const plan_handle plan("kPa", "Pa");
    const std::array<double, 6> from = {1, 10, 2, 20, 3, 30};
    std::array<double, 4> to = {-1, -1, -1, -1};
    ASSERT_EQ(metrify_plan_apply(plan.get(), from.data(), 2 * one_number, to.data() + 3, -one_number, 3),
              METRIFY_OK);
    EXPECT_EQ(to, (std::array<double, 4>{-1, 3000, 2000, 1000}));
    ASSERT_EQ(metrify_plan_apply(plan.get(), from.data() + 5, 0, to.data(), one_number, 2), METRIFY_OK);
    EXPECT_EQ(to, (std::array<double, 4>{30000, 30000, 2000, 1000}));
}
TEST(library_plan, converts_in_place) {
    const plan_handle plan("kPa", "Pa");
    std::array<double, 3> numbers = {1, 2, 3};
    ASSERT_EQ(metrify_plan_apply(plan.get(), numbers.data(), one_number, numbers.data(), one_number, 3),
              METRIFY_OK);
    EXPECT_EQ(numbers, (std::array<double, 3>{1000, 2000, 3000}));
}
TEST(library_plan, rejects_bad_arguments) {
    const plan_handle plan("kPa", "Pa");
    double x = 1;
    EXPECT_EQ(metrify_plan_apply(nullptr, &x, 8, &x, 8, 1), METRIFY_BAD_ARGUMENT);
    EXPECT_STREQ(metrify_message(), "the plan is null");
    EXPECT_EQ(metrify_plan_apply(plan.get(), nullptr, 8, &x, 8, 1), METRIFY_BAD_ARGUMENT);
    EXPECT_STREQ(metrify_message(), "the numbers are null");
    EXPECT_EQ(metrify_plan_apply(plan.get(), &x, 8, nullptr, 8, 1), METRIFY_BAD_ARGUMENT);
    EXPECT_EQ(metrify_plan_apply(plan.get(), &x, 4, &x, 8, 1), METRIFY_BAD_ARGUMENT);
    EXPECT_STREQ(metrify_message(), "a stride is not a multiple of the size of a number");
    EXPECT_EQ(metrify_plan_apply(plan.get(), &x, 8, &x, -12, 1), METRIFY_BAD_ARGUMENT);
    EXPECT_EQ(x, 1);
    EXPECT_EQ(metrify_plan_apply(plan.get(), nullptr, 8, nullptr, 8, 0), METRIFY_OK);
    EXPECT_EQ(metrify_plan_new("m", 1, "m", 1, nullptr), METRIFY_BAD_ARGUMENT);
    EXPECT_EQ(plan_handle(std::string_view("m\0m", 3), "m").status(), METRIFY_BAD_ARGUMENT);
    EXPECT_EQ(plan_handle("m", std::string_view("m\0m", 3)).status(), METRIFY_BAD_ARGUMENT);
}
TEST(library_plan, of_a_null_handle_gives_nothing) {
    EXPECT_TRUE(std::isnan(metrify_plan_convert(nullptr, 1)));
    EXPECT_STREQ(metrify_plan_units(nullptr), "");
    metrify_plan_free(nullptr);
}

TEST(library_units, have_their_factor_and_exponents) {
    metrify_unit foot = {};
    ASSERT_EQ(metrify_unit_find("ft", 2, &foot), METRIFY_OK);
    EXPECT_STREQ(foot.name, "ft");
    EXPECT_EQ(foot.factor, 3.28083989501312);
    EXPECT_EQ(foot.offset, 0);
    EXPECT_EQ(std::vector<double>(std::begin(foot.exponents), std::end(foot.exponents)),
              (std::vector<double>{0, 0, 0, 1, 0, 0, 0, 0}));
}
TEST(library_units, are_375_with_different_names) {
    std::set<std::string> names;
    ASSERT_EQ(metrify_unit_count(), 375U);
    for (std::size_t i = 0; i < metrify_unit_count(); ++i) {
        metrify_unit unit = {};
        ASSERT_EQ(metrify_unit_at(i, &unit), METRIFY_OK);
        names.insert(unit.name);
    }
    EXPECT_EQ(names.size(), 375U);
}
TEST(library_units, of_temperature_alone_have_an_offset) {
    std::vector<std::string> with_offset;
    for (std::size_t i = 0; i < metrify_unit_count(); ++i) {
        metrify_unit unit = {};
        ASSERT_EQ(metrify_unit_at(i, &unit), METRIFY_OK);
        if (unit.offset != 0)
            with_offset.push_back(std::string(unit.name) + " " + std::to_string(unit.offset));
    }
    std::sort(with_offset.begin(), with_offset.end());
    EXPECT_EQ(with_offset, (std::vector<std::string>{"degC -273.150000", "degF -459.670000"}));
}
TEST(library_units, are_found_by_the_exact_name_alone) {
    metrify_unit unit = {};
    EXPECT_EQ(metrify_unit_find("FT", 2, &unit), METRIFY_BAD_ARGUMENT);
    EXPECT_STREQ(metrify_message(), "there is no unit 'FT'");
    EXPECT_EQ(metrify_unit_find("ft ", 3, &unit), METRIFY_BAD_ARGUMENT);
    EXPECT_EQ(metrify_unit_find("ft", 1, &unit), METRIFY_BAD_ARGUMENT);
    EXPECT_EQ(metrify_unit_find("f\0t", 3, &unit), METRIFY_BAD_ARGUMENT);
    EXPECT_EQ(metrify_unit_find("ft", 2, nullptr), METRIFY_BAD_ARGUMENT);
}
TEST(library_units, end_at_their_count) {
    metrify_unit unit = {};
    EXPECT_EQ(metrify_unit_at(375, &unit), METRIFY_BAD_ARGUMENT);
    EXPECT_STREQ(metrify_message(), "the index is too large");
    EXPECT_EQ(metrify_unit_at(0, nullptr), METRIFY_BAD_ARGUMENT);
}

TEST(library_dimensions, are_named_by_their_base_unit) {
    std::string names;
    for (std::size_t i = 0; i < METRIFY_DIMENSIONS; ++i)
        names.append(metrify_dimension_name(i)).append(" ");
    EXPECT_EQ(names, "rad s kg m degK mol degKdiff C ");
    EXPECT_EQ(metrify_dimension_name(8), nullptr);
}
TEST(library_dimensions, have_the_order_of_the_exponents) {
    for (std::size_t i = 0; i < METRIFY_DIMENSIONS; ++i) {
        metrify_unit unit = {};
        const std::string name = metrify_dimension_name(i);
        ASSERT_EQ(metrify_unit_find(name.data(), name.size(), &unit), METRIFY_OK) << name;
        EXPECT_EQ(unit.exponents[i], 1) << name;
        EXPECT_EQ(unit.factor, 1) << name;
    }
}

TEST(library_functions, have_their_description) {
    metrify_function function = {};
    ASSERT_EQ(metrify_function_find("ATAN2", 5, &function), METRIFY_OK);
    EXPECT_STREQ(function.name, "atan2");
    EXPECT_STREQ(function.chapter, "Trigonometry");
    for (const char* text : {function.arguments, function.help, function.gives, function.domain,
                             function.example, function.answer})
        EXPECT_STRNE(text, "");
}
TEST(library_functions, are_89) {
    EXPECT_EQ(metrify_function_count(), 89U);
    metrify_function function = {};
    ASSERT_EQ(metrify_function_at(0, &function), METRIFY_OK);
    EXPECT_STREQ(function.chapter, "Trigonometry");
    ASSERT_EQ(metrify_function_at(88, &function), METRIFY_OK);
    EXPECT_STREQ(function.chapter, "Elliptic integrals and functions");
    EXPECT_EQ(metrify_function_at(89, &function), METRIFY_BAD_ARGUMENT);
    EXPECT_STREQ(metrify_message(), "the index is too large");
}
TEST(library_functions, report_an_unknown_name) {
    metrify_function function = {};
    EXPECT_EQ(metrify_function_find("sine", 4, &function), METRIFY_BAD_ARGUMENT);
    EXPECT_STREQ(metrify_message(), "there is no function 'sine'");
    EXPECT_EQ(metrify_function_find("sin", 3, nullptr), METRIFY_BAD_ARGUMENT);
    EXPECT_EQ(metrify_function_at(0, nullptr), METRIFY_BAD_ARGUMENT);
}

// The status that a call returned, which must be METRIFY_BAD_ARGUMENT, and its message.
std::string reason(metrify_status status) {
    return status == METRIFY_BAD_ARGUMENT ? metrify_message() : "another status";
}

TEST(library_messages, tell_that_there_is_no_place_for_the_result) {
    const std::string expected = "the pointer to the result is null";
    EXPECT_EQ(reason(metrify_unit_at(0, nullptr)), expected);
    EXPECT_EQ(reason(metrify_unit_find("ft", 2, nullptr)), expected);
    EXPECT_EQ(reason(metrify_function_at(0, nullptr)), expected);
    EXPECT_EQ(reason(metrify_function_find("sin", 3, nullptr)), expected);
    EXPECT_EQ(reason(metrify_plan_new("m", 1, "m", 1, nullptr)), expected);
    EXPECT_EQ(reason(metrify_convert(1, "m", 1, "m", 1, nullptr)), expected);
}
TEST(library_messages, tell_what_is_wrong_with_a_text) {
    metrify_unit unit = {};
    metrify_function function = {};
    metrify_cells* cells = nullptr;
    EXPECT_EQ(reason(metrify_unit_find("f\0t", 3, &unit)), "a text contains a zero byte");
    EXPECT_EQ(reason(metrify_unit_find(nullptr, 2, &unit)), "a text is null");
    EXPECT_EQ(reason(metrify_function_find("s\0n", 3, &function)), "a text contains a zero byte");
    EXPECT_EQ(reason(metrify_function_find(nullptr, 3, &function)), "a text is null");
    EXPECT_EQ(reason(metrify_convert(1, "m", 1, nullptr, 1, &cells)), "a text is null");
    EXPECT_EQ(reason(metrify_convert(1, "m\0", 2, nullptr, 1, &cells)), "a text contains a zero byte");
    EXPECT_EQ(reason(plan_handle(std::string_view("m\0m", 3), "m").status()), "a text contains a zero byte");
    EXPECT_EQ(reason(plan_handle("m", std::string_view("m\0m", 3)).status()), "a text contains a zero byte");
}

TEST(library, has_a_version) {
    EXPECT_STREQ(metrify_version(), "0.1.0");
}

} // namespace
