#include "faulting_code.h"

#include <cfenv>
#include <csignal>
#include <cstdio>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

using namespace metrify;
using namespace metrify::faulting;

volatile bool goes_on = true;

[[gnu::noinline]] int Descend(int depth) {
    volatile char block[64];
    block[0] = static_cast<char>(depth);
    const int below = goes_on ? Descend(depth + 1) : 0;
    return below + block[0];
}

TEST(GuardedCallOnPosix, an_impossible_address_is_an_access_violation) {
    static volatile std::uintptr_t address = std::uintptr_t{1} << 63;
    EXPECT_EQ(Guarded([] { *reinterpret_cast<volatile int*>(address) = 1; }), 0xC0000005U);
}

TEST(GuardedCallOnPosix, a_page_after_the_end_of_its_file_gives_the_code_of_an_in_page_error) {
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

TEST(GuardedCallOnPosix, traps_of_floating_point_numbers_give_their_codes) {
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
    EXPECT_EQ(trapped(
                  FE_DIVBYZERO, [] { number = number / nothing; }),
              0xC000008EU);
    EXPECT_EQ(trapped(
                  FE_INVALID, [] { number = nothing / nothing; }),
              0xC0000090U);
    EXPECT_EQ(trapped(
                  FE_OVERFLOW, [] { number = huge * huge; }),
              0xC0000091U);
    EXPECT_EQ(trapped(
                  FE_UNDERFLOW, [] { number = tiny * tiny; }),
              0xC0000093U);
    EXPECT_EQ(trapped(FE_INEXACT, [] { number = huge + number; }), 0xC000008FU);
}

TEST(GuardedCallOnPosix, an_integer_overflow_gives_its_code) {
    // No instruction of this processor causes it, so this thread gets the signal as from such a processor.
    const std::uint32_t code = Guarded([] {
        siginfo_t overflow{};
        overflow.si_signo = SIGFPE;
        overflow.si_code = FPE_INTOVF;
        syscall(SYS_rt_tgsigqueueinfo, getpid(), gettid(), SIGFPE, &overflow);
    });
    EXPECT_EQ(code, 0xC0000095U);
}

TEST(GuardedCallOnPosix, a_stack_overflow_by_small_calls_gives_its_code_repeatedly) {
    for (int round = 0; round < 3; ++round)
        EXPECT_EQ(Guarded([] { Descend(0); }), 0xC00000FDU) << round;
}

TEST(GuardedCallOnPosix, an_alternate_stack_that_a_thread_has_already_is_kept) {
    std::vector<char> block(std::size_t{64} * 1024);
    std::uint32_t code = 0;
    stack_t present{};
    std::thread([&] {
        stack_t before{};
        sigaltstack(nullptr, &before);
        stack_t own{};
        own.ss_sp = block.data();
        own.ss_size = block.size();
        sigaltstack(&own, nullptr);
        code = Guarded([] { Descend(0); });
        sigaltstack(nullptr, &present);
        sigaltstack(&before, nullptr);
    }).join();
    EXPECT_EQ(code, 0xC00000FDU);
    EXPECT_EQ(present.ss_sp, block.data());
    EXPECT_EQ(present.ss_size, block.size());
}

TEST(GuardedCallOnPosix, leaves_the_set_of_blocked_signals_unchanged) {
    const auto blocked = [] {
        sigset_t set;
        sigemptyset(&set);
        pthread_sigmask(SIG_BLOCK, nullptr, &set);
        std::vector<int> members;
        for (int signal = 1; signal < SIGRTMIN; ++signal)
            members.push_back(sigismember(&set, signal));
        return members;
    };
    const std::vector<int> before = blocked();
    EXPECT_EQ(Guarded(TouchNothing), 0xC0000005U);
    EXPECT_EQ(blocked(), before);
}

} // namespace
