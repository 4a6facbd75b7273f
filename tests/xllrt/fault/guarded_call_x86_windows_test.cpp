#ifdef __i386__

// The thread's chain of exception handlers, whose head is at fs:0: a guard is a link of it only while its
// call lasts. A link that remained would refer to a dead frame at the thread's next exception.

#include "faulting_code.h"

#include <gtest/gtest.h>
#include <stdexcept>

namespace {

using namespace metrify;
using namespace metrify::faulting;

const void* FirstHandler() {
    const void* first = nullptr;
    asm volatile("movl %%fs:0, %0" : "=r"(first) : : "memory");
    return first;
}

class ChainOfHandlers : public testing::Test {
  protected:
    // A link that one test leaves must not be taken for the initial state of the next.
    void TearDown() override { asm volatile("movl %0, %%fs:0" : : "r"(before_) : "memory"); }

    const void* const before_ = FirstHandler();
};

TEST_F(ChainOfHandlers, starts_with_the_guard_during_the_call) {
    const void* inside = nullptr;
    Guarded([&] { inside = FirstHandler(); });
    EXPECT_NE(inside, before_);
}

TEST_F(ChainOfHandlers, is_unchanged_after_a_call_without_fault) {
    EXPECT_EQ(Guarded([] {}), 0U);
    EXPECT_EQ(FirstHandler(), before_);
}

TEST_F(ChainOfHandlers, is_unchanged_after_a_fault) {
    EXPECT_EQ(Guarded(TouchNothing), 0xC0000005U);
    EXPECT_EQ(FirstHandler(), before_);
}

TEST_F(ChainOfHandlers, is_unchanged_after_an_exception) {
    EXPECT_THROW(Guarded([] { throw std::runtime_error("out"); }), std::runtime_error);
    EXPECT_EQ(FirstHandler(), before_);
}

TEST_F(ChainOfHandlers, is_that_of_the_outer_guard_after_a_fault_in_an_inner_one) {
    const void* outer = nullptr;
    const void* after_inner = nullptr;
    Guarded([&] {
        outer = FirstHandler();
        Guarded(DivideByZero);
        after_inner = FirstHandler();
    });
    EXPECT_EQ(after_inner, outer);
    EXPECT_EQ(FirstHandler(), before_);
}

} // namespace

#endif
