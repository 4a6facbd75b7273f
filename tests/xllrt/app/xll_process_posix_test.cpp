// The slot of the thread states, of which a process has a limited number.

#include "add_in_fixture.h"
#include "xllrt/platform/module_handle.h"

#include <pthread.h>

namespace {

using namespace metrify;

// Allocates all remaining slots and frees them in the destructor.
class AllSlots {
  public:
    AllSlots() {
        pthread_key_t key = 0;
        while (pthread_key_create(&key, nullptr) == 0)
            keys_.push_back(key);
    }
    AllSlots(const AllSlots&) = delete;
    AllSlots& operator=(const AllSlots&) = delete;
    ~AllSlots() {
        for (const pthread_key_t key : keys_)
            pthread_key_delete(key);
    }

    std::size_t count() const { return keys_.size(); }

  private:
    std::vector<pthread_key_t> keys_;
};

class ProcessSlotTest : public AddInTest {
  protected:
    ~ProcessSlotTest() override { AllocateThreadStates(); }
};

TEST_F(ProcessSlotTest, a_module_without_a_slot_is_refused_and_the_application_is_not_notified) {
    RecordingApp app(host);
    ProcessEntry(&app, ProcessReason::detach);
    host.TakeCalls();
    {
        const AllSlots slots;
        EXPECT_EQ(ProcessEntry(&app, ProcessReason::attach), 0);
    }
    EXPECT_TRUE(host.TakeCalls().empty());
    EXPECT_EQ(ModuleHandle(), nullptr);
    EXPECT_EQ(ProcessEntry(&app, ProcessReason::attach), 1) << "the entry is open again";
}

TEST_F(ProcessSlotTest, a_detach_gives_the_slot_back) {
    RecordingApp app(host);
    ProcessEntry(&app, ProcessReason::attach);
    const std::size_t left = AllSlots().count();
    ProcessEntry(&app, ProcessReason::detach);
    EXPECT_EQ(AllSlots().count(), left + 1);
    ProcessEntry(&app, ProcessReason::attach);
    EXPECT_EQ(AllSlots().count(), left);
}

} // namespace
