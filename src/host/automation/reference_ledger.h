#pragma once

// Counts the objects of a host and the references to them.

#include <atomic>

namespace metrify::host {

class ReferenceLedger {
  public:
    void NoteObject(int change) { objects_ += change; }
    void NoteReference(int change) { references_ += change; }

    int objects() const { return objects_; }
    /// The total of references to all objects, including those of the host.
    int references() const { return references_; }

  private:
    std::atomic<int> objects_ = 0;
    std::atomic<int> references_ = 0;
};

} // namespace metrify::host
