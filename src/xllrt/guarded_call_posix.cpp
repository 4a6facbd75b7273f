#include "xllrt/guarded_call.h"
#include "xllrt/thread_slot.h"

#include <array>
#include <csetjmp>
#include <csignal>
#include <cstddef>
#include <memory>
#include <new>
#include <pthread.h>
#include <sys/mman.h>

namespace metrify {

namespace {

// Big enough for a handler under every sanitizer.
constexpr std::size_t kAlternateStackSize = std::size_t{64} * 1024;

// How far from the end of the stack an access is still one of a stack that has grown too long.
constexpr std::size_t kOverflowReach = std::size_t{64} * 1024;

constexpr std::array<int, 4> kFaultSignals = {SIGSEGV, SIGBUS, SIGFPE, SIGILL};

// ---- What a thread needs

// One open guard, on the stack of its call.
struct FaultScope {
    FaultScope* earlier;
    volatile std::uint32_t code;
    sigjmp_buf resume;
};

// A stack for handlers, since an exhausted one has no room for them. The host's own is left in place.
class AlternateStack {
  public:
    AlternateStack() {
        stack_t present{};
        if (sigaltstack(nullptr, &present) != 0 || (present.ss_flags & SS_DISABLE) == 0) {
            return;
        }
        void* memory =
            mmap(nullptr, kAlternateStackSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (memory == MAP_FAILED) {
            return;
        }
        memory_ = memory;
        stack_t ours{};
        ours.ss_sp = memory_;
        ours.ss_size = kAlternateStackSize;
        sigaltstack(&ours, nullptr);
    }
    AlternateStack(const AlternateStack&) = delete;
    AlternateStack& operator=(const AlternateStack&) = delete;
    ~AlternateStack() {
        if (!memory_) {
            return;
        }
        stack_t present{};
        if (sigaltstack(nullptr, &present) == 0 && present.ss_sp == memory_) {
            stack_t none{};
            none.ss_flags = SS_DISABLE;
            sigaltstack(&none, nullptr);
        }
        munmap(memory_, kAlternateStackSize);
    }

  private:
    void* memory_ = nullptr;
};

// The lowest address of this thread's stack; 0 if it is not known.
std::uintptr_t LowEndOfStack() {
    pthread_attr_t attributes;
    if (pthread_getattr_np(pthread_self(), &attributes) != 0) {
        return 0;
    }
    void* low = nullptr;
    std::size_t size = 0;
    pthread_attr_getstack(&attributes, &low, &size);
    pthread_attr_destroy(&attributes);
    return reinterpret_cast<std::uintptr_t>(low);
}

struct ThreadGuard {
    FaultScope* innermost = nullptr;
    std::uintptr_t low_end_of_stack = LowEndOfStack();
    AlternateStack alternate_stack;
};

// Read by the handlers, so it must not be memory that a first access allocates.
constinit ThreadSlot slot;

void DestroyGuard(void* guard) {
    const std::unique_ptr<ThreadGuard> last(static_cast<ThreadGuard*>(guard));
}

// ---- Signals

bool IsStackOverflow(const siginfo_t& info, const ThreadGuard& guard) {
    const auto address = reinterpret_cast<std::uintptr_t>(info.si_addr);
    return guard.low_end_of_stack != 0 && address + kOverflowReach >= guard.low_end_of_stack &&
           address < guard.low_end_of_stack + kOverflowReach;
}

std::uint32_t ArithmeticFault(int signal_code) {
    switch (signal_code) {
    case FPE_INTDIV:
        return kFaultIntegerDivideByZero;
    case FPE_INTOVF:
        return kFaultIntegerOverflow;
    case FPE_FLTDIV:
        return kFaultFloatDivideByZero;
    case FPE_FLTOVF:
        return kFaultFloatOverflow;
    case FPE_FLTUND:
        return kFaultFloatUnderflow;
    case FPE_FLTRES:
        return kFaultFloatInexact;
    default:
        return kFaultFloatInvalid;
    }
}

std::uint32_t FaultOf(int signal, const siginfo_t& info, const ThreadGuard& guard) {
    switch (signal) {
    case SIGFPE:
        return ArithmeticFault(info.si_code);
    case SIGILL:
        return kFaultIllegalInstruction;
    case SIGBUS:
        return kFaultInPageError;
    default:
        return IsStackOverflow(info, guard) ? kFaultStackOverflow : kFaultAccessViolation;
    }
}

extern "C" void metrify_on_fault(int signal, siginfo_t* info, void* context);

// The handlers of the process, with what they stand in front of.
class FaultHandlers {
  public:
    FaultHandlers() {
        if (!slot.Allocate(DestroyGuard)) {
            throw std::bad_alloc();
        }
        struct sigaction ours {};
        ours.sa_sigaction = metrify_on_fault;
        // The jump out of the handler does not restore a mask, so none is set.
        ours.sa_flags = SA_SIGINFO | SA_ONSTACK | SA_NODEFER;
        for (std::size_t i = 0; i < kFaultSignals.size(); ++i) {
            sigaction(kFaultSignals[i], &ours, &earlier_[i]);
        }
    }
    FaultHandlers(const FaultHandlers&) = delete;
    FaultHandlers& operator=(const FaultHandlers&) = delete;
    // When the module goes, so do its handlers.
    ~FaultHandlers() {
        for (std::size_t i = 0; i < kFaultSignals.size(); ++i) {
            struct sigaction present {};
            sigaction(kFaultSignals[i], nullptr, &present);
            if (present.sa_sigaction == metrify_on_fault) {
                sigaction(kFaultSignals[i], &earlier_[i], nullptr);
            }
        }
        slot.Release();
    }

    // Does what would have been done without our handler.
    void PassOn(int signal, siginfo_t* info, void* context) const {
        const struct sigaction& earlier = EarlierOf(signal);
        const bool was_sent = info->si_code <= 0;
        if ((earlier.sa_flags & SA_SIGINFO) != 0) {
            earlier.sa_sigaction(signal, info, context);
        } else if (earlier.sa_handler != SIG_DFL && earlier.sa_handler != SIG_IGN) {
            earlier.sa_handler(signal);
        } else if (!(was_sent && earlier.sa_handler == SIG_IGN)) {
            // Once it is no longer handled, the fault comes again with the return; a sent signal does not.
            sigaction(signal, &earlier, nullptr);
            if (was_sent) {
                raise(signal);
            }
        }
    }

  private:
    const struct sigaction& EarlierOf(int signal) const {
        std::size_t i = 0;
        while (kFaultSignals[i] != signal) {
            ++i;
        }
        return earlier_[i];
    }

    std::array<struct sigaction, kFaultSignals.size()> earlier_{};
};

const FaultHandlers& Handlers() {
    static const FaultHandlers handlers;
    return handlers;
}

// Only what may be done in the midst of anything: no memory, no locks.
extern "C" void metrify_on_fault(int signal, siginfo_t* info, void* context) {
    const auto* guard = static_cast<const ThreadGuard*>(slot.Get());
    // A signal that somebody sent is no fault of the code that it meets.
    if (guard && guard->innermost && info->si_code > 0) {
        guard->innermost->code = FaultOf(signal, *info, *guard);
        siglongjmp(guard->innermost->resume, 1);
    }
    Handlers().PassOn(signal, info, context);
}

ThreadGuard& GuardOfThisThread() {
    Handlers();
    if (void* guard = slot.Get()) {
        return *static_cast<ThreadGuard*>(guard);
    }
    auto guard = std::make_unique<ThreadGuard>();
    if (!slot.Set(guard.get())) {
        throw std::bad_alloc();
    }
    return *guard.release();
}

// Makes a scope the innermost one while it lives, also when an exception passes.
class ScopeLink {
  public:
    ScopeLink(ThreadGuard& guard, FaultScope& scope) : guard_(guard) {
        scope.earlier = guard.innermost;
        guard.innermost = &scope;
    }
    ScopeLink(const ScopeLink&) = delete;
    ScopeLink& operator=(const ScopeLink&) = delete;
    ~ScopeLink() { guard_.innermost = guard_.innermost->earlier; }

  private:
    ThreadGuard& guard_;
};

} // namespace

std::uint32_t CallGuarded(void (*body)(void*), void* context) {
    FaultScope scope;
    const ScopeLink link(GuardOfThisThread(), scope);
    if (sigsetjmp(scope.resume, 0) != 0) {
        return scope.code;
    }
    body(context);
    return 0;
}

} // namespace metrify
