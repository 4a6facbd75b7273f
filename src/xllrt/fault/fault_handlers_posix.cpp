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
constexpr int kForOneTime = static_cast<int>(SA_RESETHAND);

std::size_t IndexOf(int signal) {
    std::size_t i = 0;
    while (kFaultSignals[i] != signal)
        ++i;
    return i;
}

extern "C" void metrify_on_fault(int signal, siginfo_t* info, void* context);

bool IsOurs(const struct sigaction& treatment) {
    return (treatment.sa_flags & SA_SIGINFO) != 0 && treatment.sa_sigaction == metrify_on_fault;
}

// What stood where our handlers are. The table is changed under the lock of the transitions alone, but it is
// read inside handlers, which must not wait for a lock that their own thread may have.
class EarlierTreatments {
  public:
    constexpr EarlierTreatments() = default;
    EarlierTreatments(const EarlierTreatments&) = delete;
    EarlierTreatments& operator=(const EarlierTreatments&) = delete;
    // Somebody may have put ours back that he saw during a guard. It goes with the module at the latest.
    ~EarlierTreatments() {
        for (std::size_t i = 0; i < kFaultSignals.size(); ++i) {
            struct sigaction found {};
            sigaction(kFaultSignals[i], nullptr, &found);
            if (IsOurs(found)) {
                const struct sigaction earlier = Present(i);
                sigaction(kFaultSignals[i], &earlier, nullptr);
            }
        }
    }

    // Puts our handlers in front.
    void PutOursInFront() {
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

    // Puts the earlier handlers back, each where ours still is.
    void PutBack() const {
        for (std::size_t i = 0; i < kFaultSignals.size(); ++i) {
            struct sigaction found {};
            const struct sigaction earlier = Present(i);
            sigaction(kFaultSignals[i], &earlier, &found);
            if (!IsOurs(found))
                sigaction(kFaultSignals[i], &found, nullptr);
        }
    }

    // Of a signal that comes now. A handler for one time is given once, and is the system's default then.
    struct sigaction Take(int signal) {
        const std::size_t i = IndexOf(signal);
        for (;;) {
            const unsigned turn = turn_;
            const bool is_changing = turn % 2 != 0;
            if (is_changing && pthread_equal(changing_thread_, pthread_self()) == 0)
                continue;
            struct sigaction taken = Present(i);
            if (turn == turn_) {
                if ((taken.sa_flags & kForOneTime) != 0 && is_spent_[i].exchange(true))
                    taken.sa_handler = SIG_DFL;
                return taken;
            }
        }
    }

  private:
    // Makes readers of other threads wait while it lives.
    class Change {
      public:
        explicit Change(EarlierTreatments& changed) : changed_(changed) {
            changed_.changing_thread_ = pthread_self();
            ++changed_.turn_;
        }
        Change(const Change&) = delete;
        Change& operator=(const Change&) = delete;
        ~Change() { ++changed_.turn_; }

      private:
        EarlierTreatments& changed_;
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

constinit EarlierTreatments earlier_treatments;
constinit std::atomic<FaultTaker> fault_taker = nullptr;

// The holds of all threads. Their number leaves and reaches 0 under the lock only.
constinit std::mutex transitions;
constinit std::atomic<unsigned> number_of_holds = 0;

// Counts one more or less, if that keeps the number above 0.
bool CountWithoutTransition(unsigned least, unsigned change) {
    unsigned holds = number_of_holds;
    while (holds >= least)
        if (number_of_holds.compare_exchange_weak(holds, holds + change))
            return true;
    return false;
}

// ---- Passing on

// The mask that the system would have set for the handler. It ends with the return from ours.
void BlockAsFor(const struct sigaction& treatment, int signal) {
    sigset_t blocked = treatment.sa_mask;
    if ((treatment.sa_flags & SA_NODEFER) == 0)
        sigaddset(&blocked, signal);
    pthread_sigmask(SIG_BLOCK, &blocked, nullptr);
}

// Does what would have been done without our handler.
void PassOn(int signal, siginfo_t* info, void* context) {
    const struct sigaction earlier = earlier_treatments.Take(signal);
    const bool was_sent = info->si_code <= 0;
    const bool is_handler = earlier.sa_handler != SIG_DFL && earlier.sa_handler != SIG_IGN;
    if (is_handler && (earlier.sa_flags & SA_SIGINFO) != 0) {
        BlockAsFor(earlier, signal);
        earlier.sa_sigaction(signal, info, context);
    } else if (is_handler) {
        BlockAsFor(earlier, signal);
        earlier.sa_handler(signal);
    } else if (!(was_sent && earlier.sa_handler == SIG_IGN)) {
        // Once it is no longer handled, the fault comes again with the return; a sent signal does not.
        sigaction(signal, &earlier, nullptr);
        if (was_sent)
            raise(signal);
    }
}

// Only what may be done in the midst of anything: no memory, no locks.
extern "C" void metrify_on_fault(int signal, siginfo_t* info, void* context) {
    fault_taker.load()(signal, *info);
    PassOn(signal, info, context);
}

} // namespace

FaultHandlerHold::FaultHandlerHold(FaultTaker taker) {
    if (CountWithoutTransition(1, 1U))
        return;
    const std::lock_guard lock(transitions);
    fault_taker = taker;
    if (number_of_holds == 0)
        earlier_treatments.PutOursInFront();
    ++number_of_holds;
}

FaultHandlerHold::~FaultHandlerHold() {
    if (CountWithoutTransition(2, 0U - 1U))
        return;
    const std::lock_guard lock(transitions);
    if (--number_of_holds == 0)
        earlier_treatments.PutBack();
}

} // namespace metrify
