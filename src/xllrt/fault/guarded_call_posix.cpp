#include "xllrt/fault/fault_handlers.h"
#include "xllrt/fault/fault_handlers_posix.h"
#include "xllrt/fault/guarded_call.h"
#include "xllrt/platform/thread_slot.h"

#include <atomic>
#include <csetjmp>
#include <csignal>
#include <cstddef>
#include <memory>
#include <new>
#include <optional>
#include <pthread.h>
#include <sys/mman.h>

namespace metrify {

namespace {

// Large enough for a handler under every sanitizer.
constexpr std::size_t kAlternateStackSize = std::size_t{64} * 1024;

// An access within this distance of the end of the stack is a stack overflow.
constexpr std::size_t kOverflowReach = std::size_t{64} * 1024;

// ---- State of a thread

// One open guard, on the stack of its call.
struct FaultScope {
    FaultScope* earlier;
    volatile std::uint32_t code;
    sigjmp_buf resume;
};

// A stack for handlers, which cannot run on an exhausted stack. If the host has installed one, that is used.
class AlternateStack {
  public:
    AlternateStack() {
        stack_t present{};
        if (sigaltstack(nullptr, &present) != 0 || (present.ss_flags & SS_DISABLE) == 0)
            return;
        void* memory =
            mmap(nullptr, kAlternateStackSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (memory == MAP_FAILED)
            return;
        memory_ = memory;
        stack_t ours{};
        ours.ss_sp = memory_;
        ours.ss_size = kAlternateStackSize;
        sigaltstack(&ours, nullptr);
    }
    AlternateStack(const AlternateStack&) = delete;
    AlternateStack& operator=(const AlternateStack&) = delete;
    ~AlternateStack() {
        if (!memory_)
            return;
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
    if (pthread_getattr_np(pthread_self(), &attributes) != 0)
        return 0;
    void* low = nullptr;
    std::size_t size = 0;
    pthread_attr_getstack(&attributes, &low, &size);
    pthread_attr_destroy(&attributes);
    return reinterpret_cast<std::uintptr_t>(low);
}

struct ThreadGuard {
    FaultScope* innermost = nullptr;
    std::optional<FaultHandlerHold> handlers;
    std::uintptr_t low_end_of_stack = LowEndOfStack();
    AlternateStack alternate_stack;
};

// Read inside a handler, so the first access must not allocate it.
constinit ThreadSlot guard_slot;

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

// Jumps back into the innermost guard of this thread, if there is one. A signal that was sent is no fault of
// the code that it interrupts.
void TakeFault(int signal, const siginfo_t& info) {
    const auto* guard = static_cast<const ThreadGuard*>(guard_slot.Get());
    if (guard && guard->innermost && info.si_code > 0) {
        guard->innermost->code = FaultOf(signal, info, *guard);
        siglongjmp(guard->innermost->resume, 1);
    }
}

// ---- Guards

// The slot is freed when the module is unloaded.
class GuardSlot {
  public:
    GuardSlot() {
        if (!guard_slot.Allocate(DestroyGuard))
            throw std::bad_alloc();
    }
    GuardSlot(const GuardSlot&) = delete;
    GuardSlot& operator=(const GuardSlot&) = delete;
    ~GuardSlot() { guard_slot.Release(); }
};

ThreadGuard& GuardOfThisThread() {
    static const GuardSlot allocated;
    if (void* guard = guard_slot.Get())
        return *static_cast<ThreadGuard*>(guard);
    auto guard = std::make_unique<ThreadGuard>();
    if (!guard_slot.Set(guard.get()))
        throw std::bad_alloc();
    return *guard.release();
}

// Those of an open add-in. Emptied when the add-in closes, before the module is unloaded.
std::optional<FaultHandlerHold>& InstalledHandlers() {
    static std::optional<FaultHandlerHold> installed;
    return installed;
}

// All threads read this for each guard, so it is written only when the handlers change.
constinit std::atomic<bool> are_handlers_installed = false;

// Makes a scope the innermost one while it exists, also when an exception passes. The outermost scope of a
// thread installs the handlers.
class ScopeLink {
  public:
    ScopeLink(ThreadGuard& guard, FaultScope& scope) : guard_(guard) {
        scope.earlier = guard.innermost;
        if (!scope.earlier && !are_handlers_installed)
            guard.handlers.emplace(TakeFault);
        guard.innermost = &scope;
    }
    ScopeLink(const ScopeLink&) = delete;
    ScopeLink& operator=(const ScopeLink&) = delete;
    ~ScopeLink() {
        guard_.innermost = guard_.innermost->earlier;
        if (!guard_.innermost)
            guard_.handlers.reset();
    }

  private:
    ThreadGuard& guard_;
};

} // namespace

void InstallFaultHandlers() {
    if (!InstalledHandlers()) {
        InstalledHandlers().emplace(TakeFault);
        are_handlers_installed = true;
    }
}

void RestoreFaultHandlers() {
    are_handlers_installed = false;
    // The add-in may be closed by one of its own commands, inside a guard.
    auto* const guard = static_cast<ThreadGuard*>(guard_slot.Get());
    if (InstalledHandlers() && guard && guard->innermost && !guard->handlers)
        guard->handlers.emplace(TakeFault);
    InstalledHandlers().reset();
}

std::uint32_t CallGuarded(void (*body)(void*), void* context) {
    FaultScope scope;
    const ScopeLink link(GuardOfThisThread(), scope);
    if (sigsetjmp(scope.resume, 0) != 0)
        return scope.code;
    body(context);
    return 0;
}

} // namespace metrify
