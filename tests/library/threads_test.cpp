// The library from several threads at the same time.

#include "tests/library/calls.h"
#include "tests/testing.h"

#include <atomic>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace metrify::test;

constexpr int rounds = metrify::is_sanitized ? 50 : 500;

// Runs the body on four threads and counts the calls that return false.
template <class Body>
int failures(Body body) {
    std::atomic<int> failed = 0;
    std::vector<std::thread> threads;
    for (int number = 0; number < 4; ++number)
        threads.emplace_back([&failed, &body, number] {
            for (int round = 0; round < rounds; ++round)
                failed += body(number) ? 0 : 1;
        });
    for (std::thread& thread : threads)
        thread.join();
    return failed;
}

// Enters the lines on a thread while this one interrupts the calculator. The status and the message.
std::string interrupted(const calculator_handle& calculator, const std::string& lines) {
    std::atomic<bool> has_ended = false;
    std::string answer;
    std::thread entering([&] {
        metrify_text* listing = nullptr;
        const metrify_status status =
            metrify_calculator_enter(calculator.get(), lines.data(), lines.size(), &listing);
        answer = std::to_string(status) + " " + metrify_message() + taken(listing);
        has_ended = true;
    });
    // Again and again, since a request before the call has no effect.
    while (!has_ended) {
        metrify_interrupt(calculator.get());
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    entering.join();
    return answer;
}

// Takes several seconds.
constexpr const char* long_assignment = "x = BesselJ(2000000000, 2000000001)";

TEST(library_threads, share_a_plan) {
    const plan_handle plan("kPa", "Pa");
    EXPECT_EQ(failures([&plan](int number) {
                  double x = number;
                  return metrify_plan_apply(plan.get(), &x, 8, &x, 8, 1) == METRIFY_OK &&
                         x == 1000.0 * number;
              }),
              0);
}
TEST(library_threads, have_calculators_of_their_own) {
    std::vector<calculator_handle> calculators(4);
    for (std::size_t i = 0; i < calculators.size(); ++i)
        calculators[i].enter("x = " + std::to_string(i) + " m");
    EXPECT_EQ(failures([&calculators](int number) {
                  const std::string expected = " = " + std::to_string(number) + " m\n";
                  return calculators[static_cast<std::size_t>(number)].enter("x").find(expected) !=
                         std::string::npos;
              }),
              0);
}
TEST(library_threads, use_a_calculator_in_turn) {
    calculator_handle shared;
    shared.enter("x = 0 m");
    for (int number = 1; number <= 4; ++number)
        std::thread([&shared] { shared.enter("x = x + 1 m"); }).join();
    EXPECT_EQ(shared.enter("x"), "[  6 ] x\n        = 4 m\n\n");
}
TEST(library_threads, run_and_convert) {
    EXPECT_EQ(failures([](int number) {
                  const std::string n = std::to_string(number);
                  return listing_of("x = " + n + " m\nx").find(" = " + n + " m\n") != std::string::npos &&
                         converted(number, "kPa", "Pa").number == 1000.0 * number;
              }),
              0);
}
TEST(library_threads, read_the_tables_from_their_first_use) {
    EXPECT_EQ(failures([](int number) {
                  metrify_unit unit = {};
                  metrify_function function = {};
                  const auto index = static_cast<std::size_t>(number);
                  return metrify_unit_at(index, &unit) == METRIFY_OK && unit.name != nullptr &&
                         metrify_function_at(index, &function) == METRIFY_OK && function.name != nullptr;
              }),
              0);
}
TEST(library_threads, have_messages_of_their_own) {
    EXPECT_EQ(failures([](int number) {
                  metrify_unit unit = {};
                  const std::string name = "none" + std::to_string(number);
                  return metrify_unit_find(name.data(), name.size(), &unit) == METRIFY_BAD_ARGUMENT &&
                         "there is no unit '" + name + "'" == metrify_message();
              }),
              0);
}
TEST(library_threads, do_not_see_the_message_of_another) {
    metrify_run("1", 1, nullptr);
    std::thread([] {
        EXPECT_STREQ(metrify_message(), "");
        listing_of("1");
    }).join();
    EXPECT_STREQ(metrify_message(), "the pointer to the result is null");
}
TEST(library_threads, interrupt_the_first_entry_of_another) {
    const calculator_handle calculator;
    EXPECT_EQ(interrupted(calculator, long_assignment), "4 the call was interrupted");
}
TEST(library_threads, interrupt_an_entry_and_keep_the_variables_before_it) {
    calculator_handle calculator;
    calculator.enter("x = 1 m");
    EXPECT_EQ(interrupted(calculator, long_assignment), "4 the call was interrupted");
    EXPECT_NE(calculator.enter("x").find("] x\n        = 1 m\n\n"), std::string::npos);
}
TEST(library_threads, interrupt_an_entry_between_two_statements) {
    calculator_handle calculator;
    calculator.enter("x = 1 m");
    std::string many;
    for (int i = 0; i < 100'000; ++i)
        many += "x = x + 1 m\n";
    EXPECT_EQ(interrupted(calculator, many), "4 the call was interrupted");
    // Each statement that has been run has added 1 to the number of statements and to x.
    const std::string listing = calculator.enter("x");
    const int statements = std::stoi(listing.substr(listing.find_first_of("0123456789")));
    EXPECT_GE(statements, 2);
    EXPECT_NE(listing.find("] x\n        = " + std::to_string(statements - 1) + " m\n\n"), std::string::npos)
        << listing;
}
TEST(library_threads, interrupt_an_entry_after_a_reset) {
    calculator_handle calculator;
    calculator.enter("x = 1 m");
    EXPECT_EQ(metrify_calculator_reset(calculator.get()), METRIFY_OK);
    EXPECT_EQ(interrupted(calculator, long_assignment), "4 the call was interrupted");
}
TEST(library_threads, interrupt_no_later_entry) {
    calculator_handle calculator;
    metrify_interrupt(calculator.get());
    EXPECT_EQ(calculator.enter("1 m"), "[  1 ] 1 m\n        = 1 m\n\n");
    metrify_interrupt(nullptr);
}

} // namespace
