#pragma once

// Events and their observers. A static observer links itself into a chain when it is constructed; the
// application attaches the chain to the event later.

#include <algorithm>
#include <cstddef>
#include <vector>

namespace metrify {

/// An observer of an event with arguments `A`.
template <class A>
class CXlEventObserver {
  public:
    virtual void Notify(A& args) = 0;

  protected:
    CXlEventObserver() = default;
    CXlEventObserver(const CXlEventObserver&) = default;
    CXlEventObserver& operator=(const CXlEventObserver&) = default;
    ~CXlEventObserver() = default;
};

/// An observer that is in a chain during its lifetime.
template <class A>
class CXlStaticEventObserver : public CXlEventObserver<A> {
  public:
    /// Inserts itself at the head of the chain.
    explicit CXlStaticEventObserver(CXlStaticEventObserver*& head) : next_(head), head_(head) {
        if (next_)
            next_->previous_ = this;
        head_ = this;
    }
    CXlStaticEventObserver(const CXlStaticEventObserver&) = delete;
    CXlStaticEventObserver& operator=(const CXlStaticEventObserver&) = delete;

    CXlStaticEventObserver* Next() const { return next_; }

  protected:
    ~CXlStaticEventObserver() {
        (previous_ ? previous_->next_ : head_) = next_;
        if (next_)
            next_->previous_ = previous_;
    }

  private:
    CXlStaticEventObserver* next_;
    CXlStaticEventObserver* previous_ = nullptr;
    CXlStaticEventObserver*& head_;
};

/// An event and its observers, which it doesn't own.
template <class A>
class CXlEvent {
  public:
    using Args = A;
    using Observer = CXlEventObserver<A>;

  protected:
    virtual void OnFirstObserver() {}
    virtual void OnNoObservers() {}

  public:
    virtual ~CXlEvent() = default;

    CXlEvent() = default;
    CXlEvent(const CXlEvent&) = delete;
    CXlEvent& operator=(const CXlEvent&) = delete;

    void AddObserver(Observer* observer) {
        if (observers_.empty())
            OnFirstObserver();
        observers_.push_back(observer);
    }

    /// Removes the first occurrence of the observer; does nothing if there is none.
    void RemoveObserver(Observer* observer) {
        const auto found = std::find(observers_.begin(), observers_.end(), observer);
        if (found == observers_.end())
            return;
        const auto index = static_cast<std::size_t>(found - observers_.begin());
        observers_.erase(found);
        for (Walk* walk = walk_; walk; walk = walk->outer)
            if (index < walk->next)
                --walk->next;
        if (observers_.empty())
            OnNoObservers();
    }

    void AttachChain(CXlStaticEventObserver<A>* head) {
        for (; head; head = head->Next())
            AddObserver(head);
    }

    void DetachChain(CXlStaticEventObserver<A>* head) {
        for (; head; head = head->Next())
            RemoveObserver(head);
    }

    /// Notifies the observers in order. An exception from one of them ends the loop. An observer may remove
    /// observers, as the unloading of the add-in does: those are not notified any more.
    void Notify(A& args) const {
        Walk walk(walk_);
        while (walk.next < observers_.size())
            observers_[walk.next++]->Notify(args);
    }

  private:
    // A notification in progress; an observer may start another one.
    struct Walk {
        explicit Walk(Walk*& innermost) : outer(innermost), innermost_(innermost) { innermost_ = this; }
        Walk(const Walk&) = delete;
        Walk& operator=(const Walk&) = delete;
        ~Walk() { innermost_ = outer; }

        std::size_t next = 0; // index of the next observer
        Walk* outer;

      private:
        Walk*& innermost_;
    };

    std::vector<Observer*> observers_;
    mutable Walk* walk_ = nullptr;
};

/// Switches an event of the host on or off for the current application.
void EnableHostEvent(int number, bool on);

/// An event of the host, which is switched on only while it has observers.
template <class A, int N>
class CXlComEvent : public CXlEvent<A> {
  protected:
    void OnFirstObserver() override { EnableHostEvent(N, true); }
    void OnNoObservers() override { EnableHostEvent(N, false); }
};

} // namespace metrify
