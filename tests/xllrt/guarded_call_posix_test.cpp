#include "xllrt/guarded_call.h"

#include <cfenv>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

using namespace metrify;
using testing::ExitedWithCode;
using testing::KilledBySignal;

// What the compiler must not know.
constexpr std::uintptr_t kUnmappedAddress = 64;
volatile std::uintptr_t unmapped_address = kUnmappedAddress;
volatile int zero = 0;
volatile bool goes_on = true;

void TouchNothing() {
    *reinterpret_cast<volatile int*>(unmapped_address) = 1;
}

void DivideByZero() {
    volatile int number = 1;
    number = number / zero;
}

[[gnu::noinline]] int Descend(int depth) {
    volatile char room[64];
    room[0] = static_cast<char>(depth);
    const int below = goes_on ? Descend(depth + 1) : 0;
    return below + room[0];
}

std::uint32_t Guarded(void (*body)()) {
    return CallGuarded([](void* context) { (*static_cast<void (**)()>(context))(); }, &body);
}

// ---- The host: each in a process of its own, where no guard has been before

class HostOfFaults : public testing::Test {
  protected:
    void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

void TreatBy(int signal, void (*handler)(int)) {
    struct sigaction treatment {};
    treatment.sa_handler = handler;
    sigaction(signal, &treatment, nullptr);
}

void TreatBy(int signal, void (*handler)(int, siginfo_t*, void*)) {
    struct sigaction treatment {};
    treatment.sa_sigaction = handler;
    treatment.sa_flags = SA_SIGINFO;
    sigaction(signal, &treatment, nullptr);
}

void ExitWithSignal(int signal) {
    _exit(100 + signal);
}

void ExitIfItIsOurs(int signal, siginfo_t* info, void* context) {
    const bool is_ours =
        signal == SIGSEGV && context && info->si_addr == reinterpret_cast<void*>(kUnmappedAddress);
    _exit(is_ours ? 42 : 43);
}

/// A fault in a guard, so that there has been one.
void UseGuard() {
    if (Guarded(TouchNothing) != kFaultAccessViolation ||
        Guarded(DivideByZero) != kFaultIntegerDivideByZero) {
        _exit(99);
    }
}

TEST_F(HostOfFaults, a_fault_outside_any_guard_ends_the_process_as_ever) {
    EXPECT_EXIT(
        {
            TreatBy(SIGSEGV, SIG_DFL);
            UseGuard();
            TouchNothing();
        },
        KilledBySignal(SIGSEGV), "");
    EXPECT_EXIT(
        {
            TreatBy(SIGFPE, SIG_DFL);
            UseGuard();
            DivideByZero();
        },
        KilledBySignal(SIGFPE), "");
}

TEST_F(HostOfFaults, a_fault_on_a_thread_without_guard_is_not_the_guards_of_another) {
    EXPECT_EXIT(
        {
            TreatBy(SIGSEGV, ExitIfItIsOurs);
            CallGuarded([](void*) { std::thread(TouchNothing).join(); }, nullptr);
        },
        ExitedWithCode(42), "");
}

TEST_F(HostOfFaults, its_handler_gets_a_fault_outside_any_guard_with_all_that_is_known) {
    EXPECT_EXIT(
        {
            TreatBy(SIGSEGV, ExitIfItIsOurs);
            UseGuard();
            TouchNothing();
        },
        ExitedWithCode(42), "");
}

TEST_F(HostOfFaults, its_handler_of_the_plain_kind_gets_a_fault_outside_any_guard) {
    EXPECT_EXIT(
        {
            TreatBy(SIGFPE, ExitWithSignal);
            UseGuard();
            DivideByZero();
        },
        ExitedWithCode(100 + SIGFPE), "");
}

TEST_F(HostOfFaults, its_handler_does_not_get_a_fault_inside_a_guard) {
    EXPECT_EXIT(
        {
            TreatBy(SIGSEGV, ExitWithSignal);
            TreatBy(SIGFPE, ExitWithSignal);
            UseGuard();
            _exit(0);
        },
        ExitedWithCode(0), "");
}

TEST_F(HostOfFaults, its_handler_gets_a_fault_after_an_exception_has_left_the_guard) {
    EXPECT_EXIT(
        {
            TreatBy(SIGSEGV, ExitIfItIsOurs);
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
    if (mprotect(repaired_page, 1, PROT_READ | PROT_WRITE) != 0) {
        _exit(98);
    }
}

TEST_F(HostOfFaults, its_handler_may_repair_what_was_wrong_and_go_on) {
    EXPECT_EXIT(
        {
            repaired_page = mmap(nullptr, 1, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
            TreatBy(SIGSEGV, RepairPage);
            UseGuard();
            auto* const number = static_cast<volatile int*>(repaired_page);
            *number = 5;
            _exit(*number);
        },
        ExitedWithCode(5), "");
}

TEST_F(HostOfFaults, a_signal_that_somebody_sent_is_the_hosts_even_inside_a_guard) {
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

TEST_F(HostOfFaults, a_sent_signal_that_it_ignores_stays_ignored) {
    EXPECT_EXIT(
        {
            TreatBy(SIGSEGV, SIG_IGN);
            const std::uint32_t code = Guarded([] { raise(SIGSEGV); });
            raise(SIGSEGV);
            _exit(code == 0 ? 6 : 7);
        },
        ExitedWithCode(6), "");
}

TEST_F(HostOfFaults, a_fault_cannot_be_ignored) {
    EXPECT_EXIT(
        {
            TreatBy(SIGSEGV, SIG_IGN);
            UseGuard();
            TouchNothing();
        },
        KilledBySignal(SIGSEGV), "");
}

// ---- Faults that are made in other ways here

TEST(GuardedCallOfThisSystem, an_address_that_there_cannot_be_is_an_access_violation) {
    static volatile std::uintptr_t address = std::uintptr_t{1} << 63;
    EXPECT_EQ(Guarded([] { *reinterpret_cast<volatile int*>(address) = 1; }), 0xC0000005U);
}

TEST(GuardedCallOfThisSystem, a_page_behind_the_end_of_its_file_gives_the_code_of_an_in_page_error) {
    std::FILE* file = std::tmpfile();
    ASSERT_TRUE(file);
    static volatile int* page = nullptr;
    void* const memory = mmap(nullptr, 1, PROT_READ | PROT_WRITE, MAP_SHARED, fileno(file), 0);
    ASSERT_NE(memory, MAP_FAILED);
    page = static_cast<volatile int*>(memory);
    EXPECT_EQ(Guarded([] { *page = 1; }), 0xC0000006U);
    munmap(memory, 1);
    std::fclose(file);
}

TEST(GuardedCallOfThisSystem, traps_of_floating_point_numbers_give_their_codes) {
    static volatile double number = 1.0;
    static volatile double nothing = 0.0;
    static volatile double huge = 1e308;
    static volatile double tiny = 1e-308;
    const auto trapped = [](int exceptions, void (*body)()) {
        std::fenv_t before;
        std::fegetenv(&before);
        std::feclearexcept(FE_ALL_EXCEPT);
        feenableexcept(exceptions);
        const std::uint32_t code = Guarded(body);
        std::fesetenv(&before);
        return code;
    };
    EXPECT_EQ(trapped(FE_DIVBYZERO, [] { number = number / nothing; }), 0xC000008EU);
    EXPECT_EQ(trapped(FE_INVALID, [] { number = nothing / nothing; }), 0xC0000090U);
    EXPECT_EQ(trapped(FE_OVERFLOW, [] { number = huge * huge; }), 0xC0000091U);
    EXPECT_EQ(trapped(FE_UNDERFLOW, [] { number = tiny * tiny; }), 0xC0000093U);
    EXPECT_EQ(trapped(FE_INEXACT, [] { number = huge + number; }), 0xC000008FU);
}

TEST(GuardedCallOfThisSystem, a_stack_exhausted_by_small_calls_gives_its_code_again_and_again) {
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(Guarded([] { Descend(0); }), 0xC00000FDU) << round;
    }
}

TEST(GuardedCallOfThisSystem, a_stack_for_handlers_that_a_thread_has_already_is_left_to_it) {
    std::vector<char> room(std::size_t{64} * 1024);
    std::uint32_t code = 0;
    stack_t present{};
    std::thread([&] {
        stack_t before{};
        sigaltstack(nullptr, &before);
        stack_t own{};
        own.ss_sp = room.data();
        own.ss_size = room.size();
        sigaltstack(&own, nullptr);
        code = Guarded([] { Descend(0); });
        sigaltstack(nullptr, &present);
        sigaltstack(&before, nullptr);
    }).join();
    EXPECT_EQ(code, 0xC00000FDU);
    EXPECT_EQ(present.ss_sp, room.data());
    EXPECT_EQ(present.ss_size, room.size());
}

TEST(GuardedCallOfThisSystem, leaves_the_set_of_blocked_signals_as_it_was) {
    const auto blocked = [] {
        sigset_t set;
        sigemptyset(&set);
        pthread_sigmask(SIG_BLOCK, nullptr, &set);
        std::vector<int> members;
        for (int signal = 1; signal < SIGRTMIN; ++signal) {
            members.push_back(sigismember(&set, signal));
        }
        return members;
    };
    const std::vector<int> before = blocked();
    EXPECT_EQ(Guarded(TouchNothing), 0xC0000005U);
    EXPECT_EQ(blocked(), before);
}

} // namespace
