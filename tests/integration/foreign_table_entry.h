#pragma once

// Entries of other programs in the running object table.

#include "integration/com/com_ptr.h"

#include <objbase.h>

namespace metrify::host {

/// Registers an object under a name during its lifetime.
class ForeignTableEntry {
  public:
    ForeignTableEntry(const wchar_t* name, IUnknown* object) {
        ComPtr<IMoniker> moniker;
        CreateFileMoniker(name, moniker.Receive());
        GetRunningObjectTable(0, table_.Receive());
        table_->Register(ROTFLAGS_REGISTRATIONKEEPSALIVE, object, moniker.Get(), &cookie_);
    }
    ~ForeignTableEntry() { table_->Revoke(cookie_); }
    ForeignTableEntry(const ForeignTableEntry&) = delete;
    ForeignTableEntry& operator=(const ForeignTableEntry&) = delete;

  private:
    ComPtr<IRunningObjectTable> table_;
    DWORD cookie_ = 0;
};

} // namespace metrify::host
