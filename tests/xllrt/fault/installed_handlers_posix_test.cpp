#include "host_of_faults.h"
#include "tests/xllrt/app/add_in_fixture.h"
#include "xllrt/fault/fault_handlers.h"

#include <csignal>
#include <future>
#include <gtest/gtest.h>
#include <thread>
#include <unistd.h>

namespace {

using namespace metrify;
using namespace metrify::faulting;
using testing::ExitedWithCode;

TEST_F(HostOfFaults, its_handlers_are_restored_after_a_guard) {
    EXPECT_EXIT(
        {
            TreatAllBy(ExitWithSignal);
            UseGuard();
            ExitOnFailure(AreAllTreatedBy(ExitWithSignal), 1);
            Guarded([] {});
            ExitOnFailure(AreAllTreatedBy(ExitWithSignal), 2);
            try {
                Guarded([] { throw 7; });
            } catch (int) {
                ExitOnFailure(AreAllTreatedBy(ExitWithSignal), 3);
            }
            _exit(0);
        },
        ExitedWithCode(0), "");
}

TEST_F(HostOfFaults, its_handlers_are_restored_after_the_outermost_of_nested_guards) {
    EXPECT_EXIT(
        {
            TreatAllBy(ExitWithSignal);
            Guarded([] {
                UseGuard();
                ExitOnFailure(!IsTreatedBy(SIGSEGV, ExitWithSignal), 1);
                ExitOnFailure(Guarded(TouchNothing) == kFaultAccessViolation, 2);
            });
            _exit(AreAllTreatedBy(ExitWithSignal) ? 0 : 3);
        },
        ExitedWithCode(0), "");
}

TEST_F(HostOfFaults, its_handler_is_restored_with_its_flags_and_its_mask) {
    EXPECT_EXIT(
        {
            struct sigaction treatment {};
            treatment.sa_handler = ExitWithSignal;
            treatment.sa_flags = static_cast<int>(SA_RESETHAND) | SA_ONSTACK;
            sigaddset(&treatment.sa_mask, SIGUSR1);
            sigaction(SIGFPE, &treatment, nullptr);
            UseGuard();
            const struct sigaction present = Present(SIGFPE);
            constexpr int kFlags = static_cast<int>(SA_RESETHAND) | SA_ONSTACK | SA_NODEFER | SA_SIGINFO;
            _exit(present.sa_handler == ExitWithSignal && (present.sa_flags & kFlags) == treatment.sa_flags &&
                          sigismember(&present.sa_mask, SIGUSR1) == 1 &&
                          sigismember(&present.sa_mask, SIGUSR2) == 0
                      ? 0
                      : 1);
        },
        ExitedWithCode(0), "");
}

TEST_F(HostOfFaults, its_handlers_are_restored_after_the_last_guard_of_several_threads) {
    EXPECT_EXIT(
        {
            TreatAllBy(ExitWithSignal);
            static std::promise<void> other_is_in;
            static std::promise<void> other_may_go;
            std::thread other([] {
                Guarded([] {
                    other_is_in.set_value();
                    other_may_go.get_future().wait();
                });
            });
            other_is_in.get_future().wait();
            UseGuard();
            ExitOnFailure(!IsTreatedBy(SIGSEGV, ExitWithSignal), 1);
            other_may_go.set_value();
            other.join();
            _exit(AreAllTreatedBy(ExitWithSignal) ? 0 : 2);
        },
        ExitedWithCode(0), "");
}

TEST_F(HostOfFaults, the_second_guard_works_after_a_handler_was_installed_between_two) {
    EXPECT_EXIT(
        {
            UseGuard();
            TreatAllBy(ExitWithSignal);
            UseGuard();
            _exit(AreAllTreatedBy(ExitWithSignal) ? 0 : 1);
        },
        ExitedWithCode(0), "");
}

TEST_F(HostOfFaults, a_handler_that_is_installed_inside_a_guard_stays) {
    EXPECT_EXIT(
        {
            Guarded([] { TreatBy(SIGSEGV, ExitWithSignal); });
            ExitOnFailure(IsTreatedBy(SIGSEGV, ExitWithSignal), 1);
            UseGuard();
            TouchNothing();
        },
        ExitedWithCode(100 + SIGSEGV), "");
}

TEST_F(HostOfFaults, a_guards_handler_that_is_restored_after_the_guard_does_not_keep_faults) {
    EXPECT_EXIT(
        {
            TreatBy(SIGSEGV, ExitWithSignal);
            static struct sigaction seen {};
            Guarded([] { seen = Present(SIGSEGV); });
            sigaction(SIGSEGV, &seen, nullptr);
            UseGuard();
            ExitOnFailure(IsTreatedBy(SIGSEGV, ExitWithSignal), 1);
            sigaction(SIGSEGV, &seen, nullptr);
            TouchNothing();
        },
        ExitedWithCode(100 + SIGSEGV), "");
}

// ---- Installed handlers, as while an add-in is open

TEST_F(HostOfFaults, installed_handlers_stay_between_guards_until_they_are_restored) {
    EXPECT_EXIT(
        {
            TreatAllBy(ExitWithSignal);
            InstallFaultHandlers();
            InstallFaultHandlers();
            UseGuard();
            ExitOnFailure(!IsTreatedBy(SIGSEGV, ExitWithSignal), 1);
            RestoreFaultHandlers();
            ExitOnFailure(AreAllTreatedBy(ExitWithSignal), 2);
            RestoreFaultHandlers();
            ExitOnFailure(AreAllTreatedBy(ExitWithSignal), 3);
            UseGuard();
            _exit(0);
        },
        ExitedWithCode(0), "");
}

TEST_F(HostOfFaults, handlers_that_are_restored_inside_a_guard_last_until_its_end) {
    EXPECT_EXIT(
        {
            TreatAllBy(ExitWithSignal);
            InstallFaultHandlers();
            const std::uint32_t code = Guarded([] {
                RestoreFaultHandlers();
                TouchNothing();
            });
            _exit(code == kFaultAccessViolation && AreAllTreatedBy(ExitWithSignal) ? 0 : 1);
        },
        ExitedWithCode(0), "");
}

struct sigaction passed_on_to {};

TEST_F(HostOfFaults, guards_work_with_a_later_handler_that_passes_faults_on) {
    EXPECT_EXIT(
        {
            InstallFaultHandlers();
            passed_on_to = Present(SIGSEGV);
            TreatBy(
                SIGSEGV, [](int signal, siginfo_t* info,
                            void* context) { passed_on_to.sa_sigaction(signal, info, context); });
            _exit(Guarded(TouchNothing) == kFaultAccessViolation ? 0 : 1);
        },
        ExitedWithCode(0), "");
}

class AddInInHostOfFaults : public AddInTest {
  protected:
    void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

TEST_F(AddInInHostOfFaults, installs_the_handlers_while_it_is_open) {
    EXPECT_EXIT(
        {
            TreatAllBy(ExitWithSignal);
            RecordingApp application(host);
            OpenAddIn();
            UseGuard();
            ExitOnFailure(!IsTreatedBy(SIGSEGV, ExitWithSignal), 1);
            CloseAddIn();
            UseGuard();
            _exit(AreAllTreatedBy(ExitWithSignal) ? 0 : 2);
        },
        ExitedWithCode(0), "");
}

TEST_F(AddInInHostOfFaults, installs_no_handlers_if_it_cannot_be_opened) {
    EXPECT_EXIT(
        {
            TreatAllBy(ExitWithSignal);
            RecordingApp application(host);
            application.open_result = 0;
            OpenAddIn();
            _exit(AreAllTreatedBy(ExitWithSignal) ? 0 : 1);
        },
        ExitedWithCode(0), "");
}

TEST_F(AddInInHostOfFaults, restores_the_handlers_when_its_module_is_unloaded_without_being_closed) {
    EXPECT_EXIT(
        {
            TreatAllBy(ExitWithSignal);
            RecordingApp application(host);
            OpenAddIn();
            ProcessEntry(nullptr, ProcessReason::detach);
            _exit(AreAllTreatedBy(ExitWithSignal) ? 0 : 1);
        },
        ExitedWithCode(0), "");
}

} // namespace
