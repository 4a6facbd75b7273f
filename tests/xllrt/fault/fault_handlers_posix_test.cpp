#include "host_of_faults.h"
#include "xllrt/fault/fault_handlers.h"

#include <csignal>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <thread>
#include <unistd.h>

namespace {

using namespace metrify;
using namespace metrify::faulting;
using testing::ExitedWithCode;
using testing::KilledBySignal;

// ---- Where a fault goes that is no guard's

/// With guards that have come and gone, and with a treatment that is kept, which stands in front all the
/// time.
class FaultsOutsideGuards : public HostOfFaults, public testing::WithParamInterface<bool> {
  protected:
    static void UseGuards() {
        if (GetParam())
            InstallFaultHandlers();
        UseGuard();
    }
};

INSTANTIATE_TEST_SUITE_P(Treatments, FaultsOutsideGuards, testing::Bool(),
                         [](const auto& kept) { return kept.param ? "kept" : "put_back"; });

TEST_P(FaultsOutsideGuards, a_fault_outside_any_guard_ends_the_process_as_ever) {
    EXPECT_EXIT(
        {
            TreatBy(SIGSEGV, SIG_DFL);
            UseGuards();
            TouchNothing();
        },
        KilledBySignal(SIGSEGV), "");
    EXPECT_EXIT(
        {
            TreatBy(SIGFPE, SIG_DFL);
            UseGuards();
            DivideByZero();
        },
        KilledBySignal(SIGFPE), "");
}

TEST_P(FaultsOutsideGuards, a_fault_on_a_thread_without_guard_is_not_the_guards_of_another) {
    EXPECT_EXIT(
        {
            TreatBy(SIGSEGV, ExitIfItIsOurs);
            CallGuarded([](void*) { std::thread(TouchNothing).join(); }, nullptr);
        },
        ExitedWithCode(42), "");
}

TEST_P(FaultsOutsideGuards, its_handler_gets_a_fault_outside_any_guard_with_all_that_is_known) {
    EXPECT_EXIT(
        {
            TreatBy(SIGSEGV, ExitIfItIsOurs);
            UseGuards();
            TouchNothing();
        },
        ExitedWithCode(42), "");
}

TEST_P(FaultsOutsideGuards, its_handler_of_the_plain_kind_gets_a_fault_outside_any_guard) {
    EXPECT_EXIT(
        {
            TreatBy(SIGFPE, ExitWithSignal);
            UseGuards();
            DivideByZero();
        },
        ExitedWithCode(100 + SIGFPE), "");
}

TEST_P(FaultsOutsideGuards, its_handler_does_not_get_a_fault_inside_a_guard) {
    EXPECT_EXIT(
        {
            TreatBy(SIGSEGV, ExitWithSignal);
            TreatBy(SIGFPE, ExitWithSignal);
            UseGuards();
            _exit(0);
        },
        ExitedWithCode(0), "");
}

TEST_P(FaultsOutsideGuards, its_handler_gets_a_fault_after_an_exception_has_left_the_guard) {
    EXPECT_EXIT(
        {
            TreatBy(SIGSEGV, ExitIfItIsOurs);
            UseGuards();
            try {
                Guarded([] { throw 7; });
            } catch (int) {
                TouchNothing();
            }
        },
        ExitedWithCode(42), "");
}

void* repaired_page = nullptr;

void RepairPage(int /*signal*/) {
    if (mprotect(repaired_page, 1, PROT_READ | PROT_WRITE) != 0)
        _exit(98);
}

TEST_P(FaultsOutsideGuards, its_handler_may_repair_what_was_wrong_and_go_on) {
    EXPECT_EXIT(
        {
            repaired_page = mmap(nullptr, 1, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
            TreatBy(SIGSEGV, RepairPage);
            UseGuards();
            auto* const number = static_cast<volatile int*>(repaired_page);
            *number = 5;
            _exit(*number);
        },
        ExitedWithCode(5), "");
}

TEST_P(FaultsOutsideGuards, a_signal_that_somebody_sent_is_the_hosts_even_inside_a_guard) {
    EXPECT_EXIT(
        {
            TreatBy(SIGSEGV, ExitWithSignal);
            Guarded([] { raise(SIGSEGV); });
        },
        ExitedWithCode(100 + SIGSEGV), "");
    EXPECT_EXIT(
        {
            TreatBy(SIGSEGV, SIG_DFL);
            Guarded([] { raise(SIGSEGV); });
        },
        KilledBySignal(SIGSEGV), "");
}

TEST_P(FaultsOutsideGuards, a_sent_signal_that_it_ignores_stays_ignored) {
    EXPECT_EXIT(
        {
            TreatBy(SIGSEGV, SIG_IGN);
            const std::uint32_t code = Guarded([] { raise(SIGSEGV); });
            raise(SIGSEGV);
            _exit(code == 0 ? 6 : 7);
        },
        ExitedWithCode(6), "");
}

TEST_P(FaultsOutsideGuards, a_fault_cannot_be_ignored) {
    EXPECT_EXIT(
        {
            TreatBy(SIGSEGV, SIG_IGN);
            UseGuards();
            TouchNothing();
        },
        KilledBySignal(SIGSEGV), "");
}

// ---- What an earlier handler may rely on, while a guard is open on another thread

/// Runs the body on a thread without a guard.
void BesideAGuard(void (*body)()) {
    static void (*beside)() = nullptr;
    beside = body;
    Guarded([] { std::thread(beside).join(); });
}

TEST_F(HostOfFaults, its_handler_for_one_time_is_called_once) {
    EXPECT_EXIT(
        {
            struct sigaction treatment {};
            treatment.sa_handler = [](int) { ExitOnFailure(write(2, "once;", 5) == 5, 1); };
            treatment.sa_flags = static_cast<int>(SA_RESETHAND);
            sigaction(SIGSEGV, &treatment, nullptr);
            BesideAGuard(TouchNothing);
        },
        KilledBySignal(SIGSEGV), "^once;$");
}

TEST_F(HostOfFaults, a_handler_for_one_time_that_was_called_is_not_put_back) {
    EXPECT_EXIT(
        {
            struct sigaction treatment {};
            treatment.sa_handler = [](int) {};
            treatment.sa_flags = static_cast<int>(SA_RESETHAND);
            sigaction(SIGSEGV, &treatment, nullptr);
            BesideAGuard([] { raise(SIGSEGV); });
            ExitOnFailure(IsTreatedBy(SIGSEGV, SIG_DFL), 1);
            sigaction(SIGSEGV, &treatment, nullptr);
            UseGuard();
            _exit(IsTreatedBy(SIGSEGV, treatment.sa_handler) ? 0 : 2);
        },
        ExitedWithCode(0), "");
}

/// Exits with 1 for its own signal blocked, 2 for SIGUSR1, 3 for both.
void ExitWithMask(int signal) {
    sigset_t mask;
    pthread_sigmask(SIG_BLOCK, nullptr, &mask);
    _exit(sigismember(&mask, signal) + 2 * sigismember(&mask, SIGUSR1));
}

TEST_F(HostOfFaults, its_handler_runs_with_the_mask_that_it_asked_for) {
    EXPECT_EXIT(
        {
            struct sigaction treatment {};
            treatment.sa_handler = ExitWithMask;
            sigaddset(&treatment.sa_mask, SIGUSR1);
            sigaction(SIGSEGV, &treatment, nullptr);
            BesideAGuard(TouchNothing);
        },
        ExitedWithCode(3), "");
    EXPECT_EXIT(
        {
            struct sigaction treatment {};
            treatment.sa_handler = ExitWithMask;
            treatment.sa_flags = SA_NODEFER;
            sigaddset(&treatment.sa_mask, SIGUSR1);
            sigaction(SIGSEGV, &treatment, nullptr);
            BesideAGuard(TouchNothing);
        },
        ExitedWithCode(2), "");
}

TEST_F(HostOfFaults, the_mask_of_a_thread_is_its_own_again_after_a_handler) {
    EXPECT_EXIT(
        {
            TreatBy(
                SIGSEGV, [](int) {});
            BesideAGuard([] {
                raise(SIGSEGV);
                ExitWithMask(SIGSEGV);
            });
        },
        ExitedWithCode(0), "");
}

} // namespace
