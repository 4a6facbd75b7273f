#pragma once

// A host with its own handlers of faults. It ends its process, so each test runs in a process of its own, in
// which no guard was opened before.

#include "faulting_code.h"

#include <array>
#include <csignal>
#include <gtest/gtest.h>
#include <unistd.h>

namespace metrify::faulting {

class HostOfFaults : public testing::Test {
  protected:
    void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

inline void TreatBy(int signal, void (*handler)(int)) {
    struct sigaction treatment {};
    treatment.sa_handler = handler;
    sigaction(signal, &treatment, nullptr);
}

inline void TreatBy(int signal, void (*handler)(int, siginfo_t*, void*)) {
    struct sigaction treatment {};
    treatment.sa_sigaction = handler;
    treatment.sa_flags = SA_SIGINFO;
    sigaction(signal, &treatment, nullptr);
}

inline void ExitWithSignal(int signal) {
    _exit(100 + signal);
}

inline void ExitIfItIsOurs(int signal, siginfo_t* info, void* context) {
    const bool is_ours =
        signal == SIGSEGV && context && info->si_addr == reinterpret_cast<void*>(kUnmappedAddress);
    _exit(is_ours ? 42 : 43);
}

/// Causes a fault in a guard.
inline void UseGuard() {
    if (Guarded(TouchNothing) != kFaultAccessViolation || Guarded(DivideByZero) != kFaultIntegerDivideByZero)
        _exit(99);
}

// ---- The installed handlers

inline constexpr std::array<int, 4> kFaultSignals = {SIGSEGV, SIGBUS, SIGFPE, SIGILL};

inline struct sigaction Present(int signal) {
    struct sigaction present {};
    sigaction(signal, nullptr, &present);
    return present;
}

inline bool IsTreatedBy(int signal, void (*handler)(int)) {
    return Present(signal).sa_handler == handler;
}

inline void TreatAllBy(void (*handler)(int)) {
    for (const int signal : kFaultSignals)
        TreatBy(signal, handler);
}

inline bool AreAllTreatedBy(void (*handler)(int)) {
    bool are_all = true;
    for (const int signal : kFaultSignals)
        are_all = are_all && IsTreatedBy(signal, handler);
    return are_all;
}

inline void ExitOnFailure(bool is_right, int code) {
    if (!is_right)
        _exit(code);
}

} // namespace metrify::faulting
