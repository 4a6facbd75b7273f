#include "faulting_code.h"
#include "xllrt/fault/se_translator.h"

#include <atomic>
#include <cstddef>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace metrify;
using namespace metrify::faulting;
using testing::Each;

// ---- Faults that the compiler must neither foresee nor remove

volatile bool goes_on = true;

void ReadNothing() {
    static_cast<void>(*reinterpret_cast<volatile int*>(unmapped_address));
}

void DivideWithRemainderByZero() {
    volatile long long number = 1;
    number = number % zero;
}

// Uses the stack in large frames and writes to them from the top down. So the fault occurs while the previous
// frame has space left, which its handling needs where the system reserves none. The redzone of a sanitizer
// at the bottom of a frame would be written first, in memory of other code.
[[gnu::noinline, gnu::no_sanitize_address]] int Descend(int depth) {
    constexpr std::size_t kSize = std::size_t{1024} * 1024;
    constexpr std::size_t kStep = 512;
    volatile char block[kSize];
    for (std::size_t end = kSize; end > 0; end -= kStep)
        block[end - 1] = static_cast<char>(depth);
    const int below = goes_on ? Descend(depth + 1) : 0;
    return below + block[0];
}

void ExhaustStack() {
    Descend(0);
}

// ---- Guards

/// Starts that many threads, which wait for each other, and returns the result of each.
template <class Body>
std::vector<std::vector<std::uint32_t>> OnThreads(int count, Body body) {
    std::vector<std::vector<std::uint32_t>> given(static_cast<std::size_t>(count));
    std::atomic<int> awaited = count;
    std::vector<std::thread> threads;
    for (int i = 0; i < count; ++i) {
        threads.emplace_back([&, i] {
            --awaited;
            while (awaited > 0)
                std::this_thread::yield();
            given[static_cast<std::size_t>(i)] = body(i);
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    return given;
}

TEST(GuardedCall, without_a_fault_it_returns_0_and_has_called_the_body_once_with_its_context) {
    int calls = 0;
    EXPECT_EQ(CallGuarded([](void* context) { ++*static_cast<int*>(context); }, &calls), 0U);
    EXPECT_EQ(calls, 1);
}

TEST(GuardedCall, a_write_to_an_unmapped_address_gives_the_code_of_an_access_violation) {
    EXPECT_EQ(Guarded(TouchNothing), 0xC0000005U);
}

TEST(GuardedCall, a_read_from_an_unmapped_address_gives_the_code_of_an_access_violation) {
    EXPECT_EQ(Guarded(ReadNothing), 0xC0000005U);
}

TEST(GuardedCall, an_integer_division_by_zero_gives_its_code) {
    EXPECT_EQ(Guarded(DivideByZero), 0xC0000094U);
    EXPECT_EQ(Guarded(DivideWithRemainderByZero), 0xC0000094U);
}

TEST(GuardedCall, an_illegal_instruction_gives_its_code) {
    EXPECT_EQ(Guarded([] { __builtin_trap(); }), 0xC000001DU);
}

TEST(GuardedCall, a_stack_overflow_gives_its_code_repeatedly) {
    for (int round = 0; round < 3; ++round)
        EXPECT_EQ(Guarded(ExhaustStack), 0xC00000FDU) << round;
    EXPECT_EQ(Guarded(TouchNothing), 0xC0000005U) << "other faults are distinguished afterwards";
    EXPECT_EQ(Guarded([] {}), 0U);
}

TEST(GuardedCall, a_stack_overflow_of_another_thread_gives_its_code_repeatedly) {
    const auto given = OnThreads(2, [](int) {
        return std::vector{Guarded(ExhaustStack), Guarded(ExhaustStack), Guarded(ExhaustStack)};
    });
    EXPECT_THAT(given, Each(std::vector<std::uint32_t>(3, 0xC00000FDU)));
}

TEST(GuardedCall, many_faults_one_after_the_other_each_give_their_code) {
    for (int round = 0; round < 1000; ++round) {
        ASSERT_EQ(Guarded(TouchNothing), 0xC0000005U) << round;
        ASSERT_EQ(Guarded(DivideByZero), 0xC0000094U) << round;
    }
}

TEST(GuardedCall, effects_before_the_fault_remain_and_nothing_after_it_is_executed) {
    volatile int step = 0;
    EXPECT_EQ(Guarded([&] {
                  step = 1;
                  TouchNothing();
                  step = 2;
              }),
              0xC0000005U);
    EXPECT_EQ(step, 1);
}

TEST(GuardedCall, exceptions_pass_through) {
    EXPECT_THROW(Guarded([] { throw std::out_of_range("far"); }), std::out_of_range);
    EXPECT_THROW(Guarded([] { throw 7; }), int);
    EXPECT_EQ(Guarded(TouchNothing), 0xC0000005U) << "the next one works";
}

TEST(GuardedCall, exceptions_may_be_thrown_and_caught_inside) {
    std::string caught;
    EXPECT_EQ(Guarded([&] {
                  try {
                      throw std::runtime_error("inside");
                  } catch (const std::runtime_error& exception) {
                      caught = exception.what();
                  }
                  TouchNothing();
              }),
              0xC0000005U);
    EXPECT_EQ(caught, "inside");
}

TEST(GuardedCall, a_fault_is_not_caught_by_a_catch_all_inside) {
    volatile bool is_caught = false;
    EXPECT_EQ(Guarded([&] {
                  try {
                      TouchNothing();
                  } catch (...) {
                      is_caught = true;
                  }
              }),
              0xC0000005U);
    EXPECT_FALSE(is_caught);
}

TEST(NestedGuards, a_fault_is_handled_by_the_innermost_and_the_outer_call_continues) {
    std::uint32_t inner = 0;
    bool goes_on_outside = false;
    const std::uint32_t outer = Guarded([&] {
        inner = Guarded(DivideByZero);
        goes_on_outside = true;
    });
    EXPECT_EQ(inner, 0xC0000094U);
    EXPECT_EQ(outer, 0U);
    EXPECT_TRUE(goes_on_outside);
}

TEST(NestedGuards, the_outer_one_works_after_a_fault_in_the_inner_one) {
    volatile std::uint32_t inner = 0;
    const std::uint32_t outer = Guarded([&] {
        inner = Guarded(DivideByZero);
        TouchNothing();
    });
    EXPECT_EQ(inner, 0xC0000094U);
    EXPECT_EQ(outer, 0xC0000005U);
}

TEST(NestedGuards, the_outer_one_works_after_an_inner_one_without_fault) {
    volatile std::uint32_t inner = 1;
    const std::uint32_t outer = Guarded([&] {
        inner = Guarded([] {});
        TouchNothing();
    });
    EXPECT_EQ(inner, 0U);
    EXPECT_EQ(outer, 0xC0000005U);
}

TEST(NestedGuards, the_outer_one_works_after_an_exception_has_left_the_inner_one) {
    volatile bool is_caught = false;
    const std::uint32_t outer = Guarded([&] {
        try {
            Guarded([] { throw std::runtime_error("out"); });
        } catch (const std::runtime_error&) {
            is_caught = true;
        }
        DivideByZero();
    });
    EXPECT_TRUE(is_caught);
    EXPECT_EQ(outer, 0xC0000094U);
}

TEST(NestedGuards, a_guard_that_was_ended_by_a_fault_ends_those_inside) {
    // A fault between the guards is handled by the middle one, although the innermost was open before.
    volatile std::uint32_t middle = 0;
    const std::uint32_t outer = Guarded([&] {
        middle = Guarded([] {
            Guarded(DivideByZero);
            TouchNothing();
        });
        DivideByZero();
    });
    EXPECT_EQ(middle, 0xC0000005U);
    EXPECT_EQ(outer, 0xC0000094U);
}

TEST(NestedGuards, a_stack_overflow_is_handled_by_the_innermost_too) {
    volatile std::uint32_t inner = 0;
    const std::uint32_t outer = Guarded([&] {
        inner = Guarded(ExhaustStack);
        TouchNothing();
    });
    EXPECT_EQ(inner, 0xC00000FDU);
    EXPECT_EQ(outer, 0xC0000005U);
}

class GuardsOfThreads : public testing::TestWithParam<int> {};

TEST_P(GuardsOfThreads, each_gets_the_codes_of_its_own_faults) {
    constexpr std::size_t kRounds = 300;
    const auto given = OnThreads(GetParam(), [](int thread) {
        std::vector<std::uint32_t> codes;
        for (std::size_t round = 0; round < kRounds; ++round)
            codes.push_back(Guarded(thread % 2 == 0 ? TouchNothing : DivideByZero));
        return codes;
    });
    for (std::size_t thread = 0; thread < given.size(); ++thread) {
        const std::uint32_t code = thread % 2 == 0 ? 0xC0000005U : 0xC0000094U;
        EXPECT_EQ(given[thread], std::vector<std::uint32_t>(kRounds, code)) << "thread " << thread;
    }
}

TEST_P(GuardsOfThreads, nest_separately_in_each) {
    constexpr int kRounds = 100;
    const auto given = OnThreads(GetParam(), [](int thread) {
        std::vector<std::uint32_t> codes;
        for (int round = 0; round < kRounds; ++round) {
            const bool is_even = (thread + round) % 2 == 0;
            volatile std::uint32_t inner = 0;
            const std::uint32_t outer = Guarded([&] {
                inner = Guarded(is_even ? TouchNothing : DivideByZero);
                (is_even ? DivideByZero : TouchNothing)();
            });
            // Always the same pair, in either order.
            codes.push_back(is_even ? inner : outer);
            codes.push_back(is_even ? outer : inner);
        }
        return codes;
    });
    std::vector<std::uint32_t> expected;
    for (int round = 0; round < kRounds; ++round)
        expected.insert(expected.end(), {0xC0000005U, 0xC0000094U});
    EXPECT_THAT(given, Each(expected));
}

INSTANTIATE_TEST_SUITE_P(Counts, GuardsOfThreads, testing::Values(2, 8));

TEST(SeTranslatorScope, a_fault_is_thrown_with_its_code_and_message) {
    const CXlSeTranslatorScope translator;
    try {
        translator.Run([] { TouchNothing(); });
        FAIL() << "nothing thrown";
    } catch (const CXlStructuredException& exception) {
        EXPECT_EQ(exception.Code(), 0xC0000005U);
        EXPECT_STREQ(exception.what(), "'C' exception 0xC0000005");
        EXPECT_EQ(exception.WideMessage(), u"'C' exception 0xC0000005");
    }
}

TEST(SeTranslatorScope, runs_a_plain_function) {
    const CXlSeTranslatorScope translator;
    EXPECT_THROW(translator.Run(DivideByZero), CXlStructuredException);
}

TEST(SeTranslatorScope, other_exceptions_and_normal_returns_are_unaffected) {
    const CXlSeTranslatorScope translator;
    bool is_called = false;
    EXPECT_NO_THROW(translator.Run([&] { is_called = true; }));
    EXPECT_TRUE(is_called);
    EXPECT_THROW(translator.Run([] { throw std::out_of_range("far"); }), std::out_of_range);
}

TEST(SeTranslatorScope, the_outer_one_works_again_after_an_inner_one) {
    const CXlSeTranslatorScope outer;
    volatile std::uint32_t inner_code = 0;
    std::uint32_t outer_code = 0;
    try {
        outer.Run([&] {
            try {
                const CXlSeTranslatorScope inner;
                inner.Run([] { DivideByZero(); });
            } catch (const CXlStructuredException& exception) {
                inner_code = exception.Code();
            }
            TouchNothing();
        });
    } catch (const CXlStructuredException& exception) {
        outer_code = exception.Code();
    }
    EXPECT_EQ(inner_code, 0xC0000094U);
    EXPECT_EQ(outer_code, 0xC0000005U);
}

TEST(SeTranslatorScope, what_an_inner_one_throws_may_leave_the_outer_one) {
    const CXlSeTranslatorScope outer;
    try {
        outer.Run([] {
            const CXlSeTranslatorScope inner;
            inner.Run([] { DivideByZero(); });
        });
        FAIL() << "nothing thrown";
    } catch (const CXlStructuredException& exception) {
        EXPECT_EQ(exception.Code(), 0xC0000094U);
    }
}

} // namespace
