#pragma once

// The account of the objects a host gives out, and of the references to them.

#include <atomic>

namespace metrify::host {

class ReferenceLedger {
  public:
    void NoteObject(int change) { objects_ += change; }
    void NoteReference(int change) { references_ += change; }

    int objects() const { return objects_; }
    /// The references to all objects together, those of the host's own among them.
    int references() const { return references_; }

  private:
    std::atomic<int> objects_ = 0;
    std::atomic<int> references_ = 0;
};

} // namespace metrify::host
