// The state of the runtime for a thread.

#include "oper_fixture.h"

#include <thread>

namespace {

using namespace metrify;

class ThreadState : public OperTest {};

TEST_F(ThreadState, a_thread_begins_with_a_missing_value_and_an_unset_static_result) {
    EXPECT_TRUE(ThisThreadState().missing.IsType(xltypeMissing));
    EXPECT_EQ(ThisThreadState().staticResult.State(), 0);
}

TEST_F(ThreadState, a_thread_keeps_its_state_until_it_is_destroyed) {
    ThisThreadState().staticResult.SetText("abc");
    EXPECT_EQ(ThisThreadState().staticResult.State(), 80);
    DestroyThreadState();
    EXPECT_EQ(ThisThreadState().staticResult.State(), 0);
}

TEST_F(ThreadState, each_thread_has_its_own) {
    ThisThreadState().staticResult.SetNumber(2.5);
    std::uint16_t state_elsewhere = 1;
    std::thread([&] {
        state_elsewhere = ThisThreadState().staticResult.State();
        DestroyThreadState();
    }).join();
    EXPECT_EQ(state_elsewhere, 0);
}

} // namespace
