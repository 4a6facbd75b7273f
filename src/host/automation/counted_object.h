#pragma once

// The base of the host's objects: reference counting and simulated failures.

#include "host/automation/reference_ledger.h"
#include "host/state/fault_switch.h"
#include "integration/com/com_ptr.h"

#include <atomic>
#include <memory>

namespace metrify::host {

/// State shared by all objects, which it outlives.
struct ObjectContext {
    std::shared_ptr<ReferenceLedger> ledger = std::make_shared<ReferenceLedger>();
    /// Null after the host has ended.
    FaultSwitch* faults = nullptr;

    bool IsCallFailing() const { return faults && faults->IsCallFailing(); }
};

/// An object with these interfaces, created with one reference. The first interface is its identity.
template <class First, class... Others>
class CountedObject : public First, public Others... {
  public:
    explicit CountedObject(std::shared_ptr<ObjectContext> context) : context_(std::move(context)) {
        context_->ledger->NoteObject(1);
        context_->ledger->NoteReference(1);
    }
    CountedObject(const CountedObject&) = delete;
    CountedObject& operator=(const CountedObject&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) final {
        if (!object)
            return E_POINTER;
        *object = nullptr;
        if (IsCallFailing())
            return E_FAIL;
        if (iid == __uuidof(IUnknown))
            *object = static_cast<First*>(this);
        else if (!(Answer<First>(iid, object) || ... || Answer<Others>(iid, object)))
            return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }

    ULONG STDMETHODCALLTYPE AddRef() final {
        context_->ledger->NoteReference(1);
        return ++references_;
    }

    ULONG STDMETHODCALLTYPE Release() final {
        context_->ledger->NoteReference(-1);
        const ULONG left = --references_;
        if (left == 0)
            delete this;
        return left;
    }

  protected:
    virtual ~CountedObject() { context_->ledger->NoteObject(-1); }

    bool IsCallFailing() const { return context_->IsCallFailing(); }
    const std::shared_ptr<ObjectContext>& Context() const { return context_; }

  private:
    template <class Interface>
    bool Answer(REFIID iid, void** object) {
        if (iid != __uuidof(Interface))
            return false;
        *object = static_cast<Interface*>(this);
        return true;
    }

    std::shared_ptr<ObjectContext> context_;
    std::atomic<ULONG> references_ = 1;
};

/// Creates an object and owns its first reference.
template <class Object, class... Arguments>
ComPtr<Object> MakeObject(Arguments&&... arguments) {
    return ComPtr<Object>::Take(new Object(std::forward<Arguments>(arguments)...));
}

} // namespace metrify::host
