#include "base/interruption.h"

#include <gtest/gtest.h>
#include <thread>

namespace {

using namespace metrify;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

int asked = 0;
bool answer = false;

bool ask() noexcept {
    ++asked;
    return answer;
}

class interruption_question_test : public testing::Test {
  protected:
    interruption_question_test() {
        asked = 0;
        answer = false;
    }
    // Takes long steps for a time, or until one of them is told to end.
    static bool run_for(milliseconds time) {
        const steady_clock::time_point end = steady_clock::now() + time;
        bool is_ended = false;
        while (!is_ended && steady_clock::now() < end)
            is_ended = is_interrupted_at_long_step();
        return is_ended;
    }
};

TEST_F(interruption_question_test, is_asked_after_50_milliseconds_and_then_again) {
    interruption stop;
    const interruption_scope obeys(stop, ask);
    const steady_clock::time_point begin = steady_clock::now();
    while (asked < 1)
        EXPECT_FALSE(is_interrupted_at_long_step());
    EXPECT_GE(steady_clock::now() - begin, milliseconds(50));
    while (asked < 3)
        EXPECT_FALSE(is_interrupted_at_long_step());
    EXPECT_GE(steady_clock::now() - begin, milliseconds(150));
}

TEST_F(interruption_question_test, ends_the_run_by_the_answer_true) {
    interruption stop;
    const interruption_scope obeys(stop, ask);
    answer = true;
    EXPECT_TRUE(run_for(milliseconds(2000)));
    EXPECT_EQ(asked, 1);
    EXPECT_TRUE(stop.is_requested());
    EXPECT_TRUE(is_interrupted());
    EXPECT_TRUE(run_for(milliseconds(2000)));
    EXPECT_EQ(asked, 1);
}

TEST_F(interruption_question_test, is_not_asked_by_is_interrupted) {
    interruption stop;
    const interruption_scope obeys(stop, ask);
    answer = true;
    is_interrupted_at_long_step();
    std::this_thread::sleep_for(milliseconds(60));
    for (int i = 0; i < 1000; ++i)
        EXPECT_FALSE(is_interrupted());
    EXPECT_EQ(asked, 0);
}

TEST_F(interruption_question_test, is_that_of_the_innermost_scope) {
    interruption outer;
    const interruption_scope obeys(outer, ask);
    answer = true;
    interruption inner;
    {
        const interruption_scope obeys_inner(inner);
        EXPECT_FALSE(run_for(milliseconds(120)));
        EXPECT_EQ(asked, 0);
    }
    EXPECT_TRUE(run_for(milliseconds(2000)));
    EXPECT_FALSE(inner.is_requested());
}

TEST_F(interruption_question_test, is_not_asked_once_the_run_is_to_end) {
    interruption stop;
    const interruption_scope obeys(stop, ask);
    stop.request();
    EXPECT_TRUE(run_for(milliseconds(120)));
    EXPECT_TRUE(is_interrupted_at(4096));
    EXPECT_EQ(asked, 0);
}

// A short run does not read the clock: only each sixteenth long step does.
TEST_F(interruption_question_test, is_not_asked_before_the_second_reading_of_the_clock) {
    interruption stop;
    const interruption_scope obeys(stop, ask);
    const auto take_steps = [](int count) {
        for (int i = 0; i < count; ++i)
            is_interrupted_at_long_step();
    };
    take_steps(15);
    std::this_thread::sleep_for(milliseconds(60));
    take_steps(16);
    EXPECT_EQ(asked, 0);
    std::this_thread::sleep_for(milliseconds(60));
    take_steps(1);
    EXPECT_EQ(asked, 1);
}

} // namespace
