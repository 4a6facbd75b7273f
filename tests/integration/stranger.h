#pragma once

// What other programs have in the running object table.

#include "integration/com/com_ptr.h"

#include <objbase.h>

namespace metrify::host {

/// An object in the running object table under a name.
class Stranger {
  public:
    Stranger(const wchar_t* name, IUnknown* object) {
        ComPtr<IMoniker> moniker;
        CreateFileMoniker(name, moniker.Receive());
        GetRunningObjectTable(0, table_.Receive());
        table_->Register(ROTFLAGS_REGISTRATIONKEEPSALIVE, object, moniker.Get(), &cookie_);
    }
    ~Stranger() { table_->Revoke(cookie_); }
    Stranger(const Stranger&) = delete;
    Stranger& operator=(const Stranger&) = delete;

  private:
    ComPtr<IRunningObjectTable> table_;
    DWORD cookie_ = 0;
};

} // namespace metrify::host
