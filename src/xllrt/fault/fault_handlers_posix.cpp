#include "xllrt/fault/fault_handlers_posix.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <mutex>
#include <pthread.h>

namespace metrify {

namespace {

constexpr std::array<int, 4> kFaultSignals = {SIGSEGV, SIGBUS, SIGFPE, SIGILL};

// The flag is the sign bit of the field that holds it.
constexpr int kOneShot = static_cast<int>(SA_RESETHAND);

std::size_t IndexOf(int signal) {
    std::size_t i = 0;
    while (kFaultSignals[i] != signal)
        ++i;
    return i;
}

extern "C" void metrify_on_fault(int signal, siginfo_t* info, void* context);

bool IsOurs(const struct sigaction& action) {
    return (action.sa_flags & SA_SIGINFO) != 0 && action.sa_sigaction == metrify_on_fault;
}

// The handlers that ours replaced. The table is changed under the lock of the transitions only, but it is
// read inside handlers, which must not wait for a lock that their own thread may hold.
class EarlierHandlers {
  public:
    constexpr EarlierHandlers() = default;
    EarlierHandlers(const EarlierHandlers&) = delete;
    EarlierHandlers& operator=(const EarlierHandlers&) = delete;

    // Installs our handlers and keeps those that they replace.
    void InstallOurs() {
        struct sigaction ours {};
        ours.sa_sigaction = metrify_on_fault;
        // The jump out of the handler does not restore a mask, so none is set.
        ours.sa_flags = SA_SIGINFO | SA_ONSTACK | SA_NODEFER;
        const Change change(*this);
        for (std::size_t i = 0; i < kFaultSignals.size(); ++i) {
            struct sigaction found {};
            sigaction(kFaultSignals[i], &ours, &found);
            if (!IsOurs(found)) {
                earlier_[i] = found;
                is_spent_[i] = false;
            }
        }
    }

    // Restores the earlier handlers, each where ours is still installed.
    void Restore() const {
        for (std::size_t i = 0; i < kFaultSignals.size(); ++i) {
            struct sigaction found {};
            const struct sigaction earlier = Present(i);
            sigaction(kFaultSignals[i], &earlier, &found);
            if (!IsOurs(found))
                sigaction(kFaultSignals[i], &found, nullptr);
        }
    }

    // The handler for a signal that arrived now. A one-shot handler is returned once; after that it is the
    // system's default.
    struct sigaction Take(int signal) {
        const std::size_t i = IndexOf(signal);
        for (;;) {
            const unsigned turn = turn_;
            const bool is_changing = turn % 2 != 0;
            if (is_changing && pthread_equal(changing_thread_, pthread_self()) == 0)
                continue;
            struct sigaction taken = Present(i);
            if (turn == turn_) {
                if ((taken.sa_flags & kOneShot) != 0 && is_spent_[i].exchange(true))
                    taken.sa_handler = SIG_DFL;
                return taken;
            }
        }
    }

  private:
    // Makes readers in other threads wait while it exists.
    class Change {
      public:
        explicit Change(EarlierHandlers& changed) : changed_(changed) {
            changed_.changing_thread_ = pthread_self();
            ++changed_.turn_;
        }
        Change(const Change&) = delete;
        Change& operator=(const Change&) = delete;
        ~Change() { ++changed_.turn_; }

      private:
        EarlierHandlers& changed_;
    };

    struct sigaction Present(std::size_t i) const {
        struct sigaction present = earlier_[i];
        if (is_spent_[i])
            present.sa_handler = SIG_DFL;
        return present;
    }

    std::array<struct sigaction, kFaultSignals.size()> earlier_{};
    std::array<std::atomic<bool>, kFaultSignals.size()> is_spent_{};
    std::atomic<unsigned> turn_ = 0;
    std::atomic<pthread_t> changing_thread_ = 0;
};

constinit EarlierHandlers earlier_handlers;

// Other code may have restored our handler, which it saw during a guard. It must not outlive the module.
class RestoreAtUnload {
  public:
    RestoreAtUnload() = default;
    RestoreAtUnload(const RestoreAtUnload&) = delete;
    RestoreAtUnload& operator=(const RestoreAtUnload&) = delete;
    ~RestoreAtUnload() { earlier_handlers.Restore(); }
};

constinit std::atomic<FaultTaker> fault_taker = nullptr;

// The number of holds in all threads. It changes from and to 0 under the lock only.
constinit std::mutex transitions;
constinit std::atomic<unsigned> number_of_holds = 0;

// Adds `change` if there are at least `least` holds.
bool CountWithoutTransition(unsigned least, unsigned change) {
    unsigned holds = number_of_holds;
    while (holds >= least)
        if (number_of_holds.compare_exchange_weak(holds, holds + change))
            return true;
    return false;
}

// ---- Passing on

// Sets the mask that the system would have set for the handler, until ours returns.
void BlockAsFor(const struct sigaction& action, int signal) {
    sigset_t blocked = action.sa_mask;
    if ((action.sa_flags & SA_NODEFER) == 0)
        sigaddset(&blocked, signal);
    pthread_sigmask(SIG_BLOCK, &blocked, nullptr);
}

// Does what would have happened without our handler.
void PassOn(int signal, siginfo_t* info, void* context) {
    const struct sigaction earlier = earlier_handlers.Take(signal);
    const bool was_sent = info->si_code <= 0;
    const bool is_handler = earlier.sa_handler != SIG_DFL && earlier.sa_handler != SIG_IGN;
    if (is_handler && (earlier.sa_flags & SA_SIGINFO) != 0) {
        BlockAsFor(earlier, signal);
        earlier.sa_sigaction(signal, info, context);
    } else if (is_handler) {
        BlockAsFor(earlier, signal);
        earlier.sa_handler(signal);
    } else if (!(was_sent && earlier.sa_handler == SIG_IGN)) {
        // Without a handler the fault occurs again after the return; a sent signal does not.
        sigaction(signal, &earlier, nullptr);
        if (was_sent)
            raise(signal);
    }
}

// Async-signal-safe: allocates no memory and takes no locks.
extern "C" void metrify_on_fault(int signal, siginfo_t* info, void* context) {
    fault_taker.load()(signal, *info);
    PassOn(signal, info, context);
}

} // namespace

FaultHandlerHold::FaultHandlerHold(FaultTaker taker) {
    if (CountWithoutTransition(1, 1U))
        return;
    const std::lock_guard lock(transitions);
    static const RestoreAtUnload at_unload;
    fault_taker = taker;
    if (number_of_holds == 0)
        earlier_handlers.InstallOurs();
    ++number_of_holds;
}

FaultHandlerHold::~FaultHandlerHold() {
    if (CountWithoutTransition(2, 0U - 1U))
        return;
    const std::lock_guard lock(transitions);
    if (--number_of_holds == 0)
        earlier_handlers.Restore();
}

} // namespace metrify
