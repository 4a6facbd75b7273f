// The C++ wrapper.

#include "metrify/metrify.hpp"

#include <array>
#include <atomic>
#include <chrono>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

namespace {

using testing::HasSubstr;

// The status and the message of the error that a call throws.
template <class Call>
std::string error_of(Call call) {
    try {
        call();
    } catch (const metrify::error& caught) {
        return std::to_string(caught.status()) + " " + caught.what();
    }
    return "";
}

TEST(wrapper, runs_programs) {
    EXPECT_EQ(metrify::run("1 m + 1 ft; in"), "[  1 ] 1 m + 1 ft; in\n        = 51.3701 in\n\n");
}
TEST(wrapper, converts_as_the_worksheet_function_does) {
    const metrify::cells answer = metrify::convert(3.5, "ft", "m");
    EXPECT_EQ(answer.kind, METRIFY_KIND_NUMBER);
    EXPECT_EQ(answer.number, 1.0668);
    EXPECT_EQ(answer.text, "m\n\n");
    EXPECT_EQ(metrify::convert(1, "kPa").number, 1000);
    EXPECT_EQ(metrify::convert(1, "ft", "s").kind, METRIFY_KIND_ERROR);
}
TEST(wrapper, keeps_a_calculator) {
    metrify::calculator calculator;
    calculator.enter("x = 3 ft");
    metrify::calculator moved = std::move(calculator);
    EXPECT_THAT(moved.enter("x; in"), HasSubstr("= 36 in"));
    moved.reset();
    EXPECT_THAT(moved.enter("x"), HasSubstr("undefined"));
}
TEST(wrapper, throws_when_an_entry_is_interrupted) {
    metrify::calculator calculator;
    std::atomic<bool> has_ended = false;
    std::string error;
    std::thread entering([&] {
        error = error_of([&] { calculator.enter("BesselJ(2000000000, 2000000001)"); });
        has_ended = true;
    });
    while (!has_ended) {
        calculator.interrupt();
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    entering.join();
    EXPECT_EQ(error, "4 the call was interrupted");
}
TEST(wrapper, applies_plans) {
    const metrify::plan plan("kPa", "Pa");
    std::array<double, 2> numbers = {1, 2};
    plan.apply(numbers, numbers);
    EXPECT_EQ(numbers, (std::array<double, 2>{1000, 2000}));
    plan.apply(numbers.data() + 1, -8, numbers.data() + 1, -8, 1);
    EXPECT_EQ(numbers, (std::array<double, 2>{1000, 2000000}));
    EXPECT_EQ(plan(3), 3000);
    EXPECT_EQ(plan.units(), "Pa");
    EXPECT_EQ(metrify::plan("kPa").units(), "kg / m s^2");
}
TEST(wrapper, throws_what_the_language_says) {
    EXPECT_EQ(error_of([] { metrify::plan("ft", "s"); }),
              "1 ERROR IN REQUESTED OUTPUT: 's' is incompatible.\n");
}
TEST(wrapper, throws_on_bad_arguments) {
    EXPECT_EQ(error_of([] { metrify::run(std::string_view("\0", 1)); }), "2 a text contains a zero byte");
    const std::array<double, 2> from = {};
    std::array<double, 1> to = {};
    EXPECT_EQ(error_of([&] { metrify::plan("m", "m").apply(from, to); }),
              "2 the numbers and the results differ in count");
}
TEST(wrapper, lists_and_finds_units_and_functions) {
    EXPECT_EQ(metrify::units().size(), 375U);
    EXPECT_STREQ(metrify::units().front().name, "Gpsi");
    EXPECT_EQ(metrify::find_unit("ft").value().factor, 3.28083989501312);
    EXPECT_FALSE(metrify::find_unit("FT").has_value());
    EXPECT_EQ(metrify::functions().size(), 89U);
    EXPECT_STREQ(metrify::find_function("SIN").value().name, "sin");
    EXPECT_FALSE(metrify::find_function("sine").has_value());
}
TEST(wrapper, has_the_version_of_the_library) {
    EXPECT_EQ(metrify::version(), "0.1.0");
}

} // namespace
