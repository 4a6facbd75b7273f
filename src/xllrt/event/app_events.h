#pragma once

// The events of an application: its own and those of the host.

#include "xllrt/event/event.h"
#include "xllrt/event/event_args.h"
#include "xllrt/event/host_event_number.h"

namespace metrify {

/// An event with a chain of static observers; there is one chain per event class.
template <class Self, class Event>
class CXlChainedEvent : public Event {
  public:
    using StaticObserver = CXlStaticEventObserver<typename Event::Args>;

    /// The head of the chain.
    static StaticObserver*& Chain() {
        static constinit StaticObserver* head = nullptr;
        return head;
    }

    void AttachStaticObservers() { this->AttachChain(Chain()); }
    void DetachStaticObservers() { this->DetachChain(Chain()); }
};

template <class Self, class A>
using CXlAppEvent = CXlChainedEvent<Self, CXlEvent<A>>;

template <class Self, class A, int N>
using CXlHostEvent = CXlChainedEvent<Self, CXlComEvent<A, N>>;

class CXllOpenEvent : public CXlAppEvent<CXllOpenEvent, CXllOpenEventArgs> {};
class CXllCloseEvent : public CXlAppEvent<CXllCloseEvent, CXlEventArgs> {};
class CXlRegisterFunctionsEvent : public CXlAppEvent<CXlRegisterFunctionsEvent, CXlEventArgs> {};
class CXlNewWorkbookEvent
    : public CXlHostEvent<CXlNewWorkbookEvent, CXlWorkbookEventArgs, kEventNewWorkbook> {};
class CXlSelectionChangeEvent
    : public CXlHostEvent<CXlSelectionChangeEvent, CXlRangeEventArgs, kEventSelectionChange> {};
class CXlBeforeDoubleClickEvent
    : public CXlHostEvent<CXlBeforeDoubleClickEvent, CXlCancellableRangeEventArgs, kEventBeforeDoubleClick> {
};
class CXlBeforeRightClickEvent
    : public CXlHostEvent<CXlBeforeRightClickEvent, CXlCancellableRangeEventArgs, kEventBeforeRightClick> {};
class CXlSheetActivateEvent
    : public CXlHostEvent<CXlSheetActivateEvent, CXlWorksheetEventArgs, kEventSheetActivate> {};
class CXlSheetDeactivateEvent
    : public CXlHostEvent<CXlSheetDeactivateEvent, CXlWorksheetEventArgs, kEventSheetDeactivate> {};
class CXlCalculateEvent : public CXlHostEvent<CXlCalculateEvent, CXlWorksheetEventArgs, kEventCalculate> {};
class CXlSheetChangeEvent : public CXlHostEvent<CXlSheetChangeEvent, CXlRangeEventArgs, kEventSheetChange> {};
class CXlWorkbookOpenEvent
    : public CXlHostEvent<CXlWorkbookOpenEvent, CXlWorkbookEventArgs, kEventWorkbookOpen> {};
class CXlWorkbookActivateEvent
    : public CXlHostEvent<CXlWorkbookActivateEvent, CXlWorkbookEventArgs, kEventWorkbookActivate> {};
class CXlWorkbookDeactivateEvent
    : public CXlHostEvent<CXlWorkbookDeactivateEvent, CXlWorkbookEventArgs, kEventWorkbookDeactivate> {};
class CXlWorkbookBeforeCloseEvent
    : public CXlHostEvent<CXlWorkbookBeforeCloseEvent, CXlBeforeCloseEventArgs, kEventWorkbookBeforeClose> {};
class CXlWorkbookBeforeSaveEvent
    : public CXlHostEvent<CXlWorkbookBeforeSaveEvent, CXlBeforeSaveEventArgs, kEventWorkbookBeforeSave> {};
class CXlWorkbookNewSheetEvent
    : public CXlHostEvent<CXlWorkbookNewSheetEvent, CXlWorkbookNewSheetEventArgs, kEventWorkbookNewSheet> {};
class CXlAfterCalculateEvent
    : public CXlHostEvent<CXlAfterCalculateEvent, CXlAfterCalculateEventArgs, kEventAfterCalculate> {};
class CXlWorkbookAfterSaveEvent
    : public CXlHostEvent<CXlWorkbookAfterSaveEvent, CXlAfterSaveEventArgs, kEventWorkbookAfterSave> {};

/// A static observer of an event.
template <class Event>
class CXlEventStaticObserver : public Event::StaticObserver {
  protected:
    CXlEventStaticObserver() : Event::StaticObserver(Event::Chain()) {}
    ~CXlEventStaticObserver() = default;
};

using CXlRegisterFunctionsEventStaticObserver = CXlEventStaticObserver<CXlRegisterFunctionsEvent>;

/// All events of an application.
struct CXlAppEvents {
    CXllOpenEvent open;
    CXllCloseEvent close;
    CXlRegisterFunctionsEvent registerFunctions;
    CXlNewWorkbookEvent newWorkbook;
    CXlSelectionChangeEvent selectionChange;
    CXlBeforeDoubleClickEvent beforeDoubleClick;
    CXlBeforeRightClickEvent beforeRightClick;
    CXlSheetActivateEvent sheetActivate;
    CXlSheetDeactivateEvent sheetDeactivate;
    CXlCalculateEvent calculate;
    CXlSheetChangeEvent sheetChange;
    CXlWorkbookOpenEvent workbookOpen;
    CXlWorkbookActivateEvent workbookActivate;
    CXlWorkbookDeactivateEvent workbookDeactivate;
    CXlWorkbookBeforeCloseEvent workbookBeforeClose;
    CXlWorkbookBeforeSaveEvent workbookBeforeSave;
    CXlWorkbookNewSheetEvent workbookNewSheet;
    CXlAfterCalculateEvent afterCalculate;
    CXlWorkbookAfterSaveEvent workbookAfterSave;

    /// Attaches the static observers that are needed before the add-in is opened.
    void AttachEarly() {
        ForEachEarly([](auto& event) { event.AttachStaticObservers(); });
    }
    /// Attaches all others, at the end of a load.
    void AttachRest() {
        ForEachOther([](auto& event) { event.AttachStaticObservers(); });
    }
    /// Detaches what `AttachRest` has attached, completely or partly.
    void DetachRest() {
        ForEachOther([](auto& event) { event.DetachStaticObservers(); });
    }
    /// Detaches all static observers.
    void DetachAll() {
        ForEachEarly([](auto& event) { event.DetachStaticObservers(); });
        DetachRest();
    }

  private:
    template <class Action>
    void ForEachEarly(Action action) {
        action(open);
        action(registerFunctions);
    }

    template <class Action>
    void ForEachOther(Action action) {
        const auto each = [&action](auto&... events) { (action(events), ...); };
        each(close, newWorkbook, selectionChange, beforeDoubleClick, beforeRightClick, sheetActivate,
             sheetDeactivate, calculate, sheetChange, workbookOpen, workbookActivate, workbookDeactivate,
             workbookBeforeClose, workbookBeforeSave, workbookNewSheet, afterCalculate, workbookAfterSave);
    }
};

} // namespace metrify
