// Observers, chains and the events that hold them.

#include "recording_integration.h"
#include "xllrt/app/xll_app.h"
#include "xllrt/event/app_events.h"
#include "xllrt/fault/exceptions.h"

#include <functional>
#include <gmock/gmock.h>

namespace metrify {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Notes = std::vector<std::string>;

// An event that records the addition of its first and the removal of its last observer.
class RecordingEvent final : public CXlEvent<CXlEventArgs> {
  public:
    Notes notes;

  protected:
    void OnFirstObserver() override { notes.emplace_back("first"); }
    void OnNoObservers() override { notes.emplace_back("none"); }
};

class RecordingObserver final : public CXlEventObserver<CXlEventArgs> {
  public:
    RecordingObserver(Notes& notes, std::string name) : notes_(notes), name_(std::move(name)) {}
    void Notify(CXlEventArgs& /*args*/) override { notes_.push_back(name_); }

  private:
    Notes& notes_;
    std::string name_;
};

class RecordingStaticObserver final : public CXlStaticEventObserver<CXlEventArgs> {
  public:
    RecordingStaticObserver(CXlStaticEventObserver*& head, Notes& notes, std::string name)
        : CXlStaticEventObserver(head), notes_(notes), name_(std::move(name)) {}
    void Notify(CXlEventArgs& /*args*/) override { notes_.push_back(name_); }

  private:
    Notes& notes_;
    std::string name_;
};

class ThrowingObserver final : public CXlEventObserver<CXlEventArgs> {
  public:
    void Notify(CXlEventArgs& /*args*/) override { throw CXlRuntimeException(std::string("no")); }
};

Notes Notified(const CXlEvent<CXlEventArgs>& event, Notes& notes) {
    notes.clear();
    CXlEventArgs args;
    event.Notify(args);
    return notes;
}

// ---- Observers of one event

TEST(CXlEvent, observers_are_notified_in_the_order_in_which_they_were_added) {
    RecordingEvent event;
    Notes notes;
    RecordingObserver a(notes, "a");
    RecordingObserver b(notes, "b");
    event.AddObserver(&b);
    event.AddObserver(&a);
    EXPECT_THAT(Notified(event, notes), ElementsAre("b", "a"));
}

TEST(CXlEvent, the_first_observer_is_announced_and_a_second_is_not) {
    RecordingEvent event;
    Notes notes;
    RecordingObserver a(notes, "a");
    RecordingObserver b(notes, "b");
    event.AddObserver(&a);
    event.AddObserver(&b);
    EXPECT_THAT(event.notes, ElementsAre("first"));
}

TEST(CXlEvent, removing_the_last_observer_is_announced_and_removing_the_first_of_two_is_not) {
    RecordingEvent event;
    Notes notes;
    RecordingObserver a(notes, "a");
    RecordingObserver b(notes, "b");
    event.AddObserver(&a);
    event.AddObserver(&b);
    event.notes.clear();
    event.RemoveObserver(&a);
    EXPECT_THAT(event.notes, IsEmpty());
    event.RemoveObserver(&b);
    EXPECT_THAT(event.notes, ElementsAre("none"));
}

TEST(CXlEvent, the_first_observer_is_announced_before_it_is_in_the_list) {
    // An exception at that point leaves the list empty.
    class Refusing final : public CXlEvent<CXlEventArgs> {
      protected:
        void OnFirstObserver() override { throw CXlRuntimeException(std::string("no")); }
    };
    Refusing event;
    Notes notes;
    RecordingObserver a(notes, "a");
    EXPECT_THROW(event.AddObserver(&a), CXlRuntimeException);
    EXPECT_THAT(Notified(event, notes), IsEmpty());
}

TEST(CXlEvent, removing_an_object_that_is_not_an_observer_changes_nothing_and_announces_nothing) {
    RecordingEvent event;
    Notes notes;
    RecordingObserver a(notes, "a");
    RecordingObserver stranger(notes, "stranger");
    event.AddObserver(&a);
    event.notes.clear();
    event.RemoveObserver(&stranger);
    EXPECT_THAT(event.notes, IsEmpty());
    EXPECT_THAT(Notified(event, notes), ElementsAre("a"));
}

TEST(CXlEvent, removing_from_an_event_without_observers_announces_nothing) {
    RecordingEvent event;
    Notes notes;
    RecordingObserver a(notes, "a");
    event.RemoveObserver(&a);
    EXPECT_THAT(event.notes, IsEmpty());
}

TEST(CXlEvent, an_observer_added_twice_is_notified_twice_and_removed_once) {
    RecordingEvent event;
    Notes notes;
    RecordingObserver a(notes, "a");
    RecordingObserver b(notes, "b");
    event.AddObserver(&a);
    event.AddObserver(&b);
    event.AddObserver(&a);
    EXPECT_THAT(Notified(event, notes), ElementsAre("a", "b", "a"));
    event.RemoveObserver(&a);
    EXPECT_THAT(Notified(event, notes), ElementsAre("b", "a"));
}

TEST(CXlEvent, an_exception_from_an_observer_ends_the_notification) {
    RecordingEvent event;
    Notes notes;
    RecordingObserver a(notes, "a");
    ThrowingObserver throwing;
    RecordingObserver b(notes, "b");
    event.AddObserver(&a);
    event.AddObserver(&throwing);
    event.AddObserver(&b);
    CXlEventArgs args;
    EXPECT_THROW(event.Notify(args), CXlRuntimeException);
    EXPECT_THAT(notes, ElementsAre("a"));
}

// ---- Observers that change the list during a notification

class ActingObserver final : public CXlEventObserver<CXlEventArgs> {
  public:
    ActingObserver(Notes& notes, std::function<void()> act) : notes_(notes), act_(std::move(act)) {}
    void Notify(CXlEventArgs& /*args*/) override {
        notes_.emplace_back("acting");
        act_();
    }

  private:
    Notes& notes_;
    std::function<void()> act_;
};

TEST(CXlEvent, an_observer_that_removes_itself_skips_no_other_one) {
    RecordingEvent event;
    Notes notes;
    RecordingObserver a(notes, "a");
    RecordingObserver b(notes, "b");
    CXlEventObserver<CXlEventArgs>* self = nullptr;
    ActingObserver acting(notes, [&] { event.RemoveObserver(self); });
    self = &acting;
    event.AddObserver(&a);
    event.AddObserver(&acting);
    event.AddObserver(&b);
    EXPECT_THAT(Notified(event, notes), ElementsAre("a", "acting", "b"));
    EXPECT_THAT(Notified(event, notes), ElementsAre("a", "b"));
}

TEST(CXlEvent, an_observer_destroyed_by_an_earlier_one_is_not_notified) {
    RecordingEvent event;
    Notes notes;
    auto destroyed = std::make_unique<RecordingObserver>(notes, "destroyed");
    RecordingObserver last(notes, "last");
    ActingObserver acting(notes, [&] {
        event.RemoveObserver(destroyed.get());
        destroyed.reset();
    });
    event.AddObserver(&acting);
    event.AddObserver(destroyed.get());
    event.AddObserver(&last);
    EXPECT_THAT(Notified(event, notes), ElementsAre("acting", "last"));
}

TEST(CXlEvent, removing_all_observers_ends_the_notification) {
    RecordingEvent event;
    Notes notes;
    RecordingObserver a(notes, "a");
    RecordingObserver b(notes, "b");
    CXlEventObserver<CXlEventArgs>* self = nullptr;
    ActingObserver acting(notes, [&] {
        for (CXlEventObserver<CXlEventArgs>* observer :
             {static_cast<decltype(self)>(&a), self, static_cast<decltype(self)>(&b)})
            event.RemoveObserver(observer);
    });
    self = &acting;
    event.AddObserver(&a);
    event.AddObserver(&acting);
    event.AddObserver(&b);
    EXPECT_THAT(Notified(event, notes), ElementsAre("a", "acting"));
    EXPECT_THAT(event.notes, ElementsAre("first", "none"));
}

TEST(CXlEvent, a_removal_counts_for_the_outer_of_two_notifications) {
    RecordingEvent event;
    Notes notes;
    RecordingObserver a(notes, "a");
    RecordingObserver b(notes, "b");
    int depth = 0;
    ActingObserver acting(notes, [&] {
        if (++depth == 1) {
            CXlEventArgs args;
            event.Notify(args);
        } else {
            event.RemoveObserver(&a);
        }
    });
    event.AddObserver(&a);
    event.AddObserver(&acting);
    event.AddObserver(&b);
    EXPECT_THAT(Notified(event, notes), ElementsAre("a", "acting", "a", "acting", "b", "b"));
}

// ---- Chains of static observers

TEST(CXlStaticEventObserver, observers_of_a_chain_are_notified_in_the_reverse_order_of_their_construction) {
    CXlStaticEventObserver<CXlEventArgs>* head = nullptr;
    Notes notes;
    const RecordingStaticObserver a(head, notes, "a");
    const RecordingStaticObserver b(head, notes, "b");
    RecordingEvent event;
    event.AttachChain(head);
    EXPECT_THAT(Notified(event, notes), ElementsAre("b", "a"));
    EXPECT_THAT(event.notes, ElementsAre("first"));
}

TEST(CXlStaticEventObserver, a_detached_chain_is_not_notified) {
    CXlStaticEventObserver<CXlEventArgs>* head = nullptr;
    Notes notes;
    const RecordingStaticObserver a(head, notes, "a");
    const RecordingStaticObserver b(head, notes, "b");
    RecordingEvent event;
    event.AttachChain(head);
    event.DetachChain(head);
    EXPECT_THAT(Notified(event, notes), IsEmpty());
    EXPECT_THAT(event.notes, ElementsAre("first", "none"));
}

TEST(CXlStaticEventObserver, a_destroyed_observer_leaves_its_chain_at_any_position) {
    for (int which = 0; which < 3; ++which) {
        CXlStaticEventObserver<CXlEventArgs>* head = nullptr;
        Notes notes;
        std::vector<std::unique_ptr<RecordingStaticObserver>> observers;
        for (const char* name : {"a", "b", "c"})
            observers.push_back(std::make_unique<RecordingStaticObserver>(head, notes, name));
        observers.erase(observers.begin() + which);
        RecordingEvent event;
        event.AttachChain(head);
        const std::vector<Notes> expected{{"c", "b"}, {"c", "a"}, {"b", "a"}};
        EXPECT_EQ(Notified(event, notes), expected[static_cast<std::size_t>(which)]);
    }
}

TEST(CXlStaticEventObserver, the_last_observer_leaves_an_empty_chain) {
    CXlStaticEventObserver<CXlEventArgs>* head = nullptr;
    Notes notes;
    {
        const RecordingStaticObserver a(head, notes, "a");
        EXPECT_NE(head, nullptr);
    }
    EXPECT_EQ(head, nullptr);
}

TEST(CXlStaticEventObserver, every_event_has_a_separate_chain) {
    Notes notes;
    const RecordingStaticObserver closing(CXllCloseEvent::Chain(), notes, "close");
    CXlAppEvents events;
    events.AttachEarly();
    events.AttachRest();
    EXPECT_THAT(Notified(events.registerFunctions, notes), IsEmpty());
    EXPECT_THAT(Notified(events.close, notes), ElementsAre("close"));
    events.DetachAll();
    EXPECT_THAT(Notified(events.close, notes), IsEmpty());
}

// ---- Attaching the chains

TEST(CXlAppEvents, opening_and_registering_are_attached_early_and_the_others_are_not) {
    Notes notes;
    const RecordingStaticObserver registering(CXlRegisterFunctionsEvent::Chain(), notes, "register");
    const RecordingStaticObserver closing(CXllCloseEvent::Chain(), notes, "close");
    CXlAppEvents events;
    events.AttachEarly();
    EXPECT_THAT(Notified(events.registerFunctions, notes), ElementsAre("register"));
    EXPECT_THAT(Notified(events.close, notes), IsEmpty());
    events.AttachRest();
    EXPECT_THAT(Notified(events.registerFunctions, notes), ElementsAre("register"));
    EXPECT_THAT(Notified(events.close, notes), ElementsAre("close"));
    events.DetachAll();
}

} // namespace
} // namespace metrify
