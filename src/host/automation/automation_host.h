#pragma once

// A host with windows, an object model and a place in the running object table.

#include "host/automation/application_object.h"
#include "host/automation/host_windows.h"
#include "host/automation/running_objects.h"
#include "host/automation/sheet_objects.h"
#include "host/core/host.h"

#include <memory>

namespace metrify::host {

/// Belongs to the thread that creates it, and initialises COM on that thread.
class AutomationHost {
  public:
    /// The host must outlive it.
    explicit AutomationHost(Host& host);
    ~AutomationHost();
    AutomationHost(const AutomationHost&) = delete;
    AutomationHost& operator=(const AutomationHost&) = delete;

    /// Registers the host and its workbooks in the running object table.
    void ShowAsRunning();

    /// Updates the windows and the table to the workbooks that are open.
    void FollowWorkbooks();

    HostWindows& windows() { return windows_; }
    ApplicationObject& application() { return *application_.Get(); }
    const ReferenceLedger& ledger() const { return *context_->ledger; }
    const std::shared_ptr<ObjectContext>& context() const { return context_; }

    ComPtr<IDispatch> MakeWorkbook(const std::u16string& name);
    ComPtr<IDispatch> MakeWorksheet(const std::u16string& workbook, const std::u16string& name);
    ComPtr<IDispatch> MakeRange(const ComPtr<IDispatch>& worksheet, RangeAddresses addresses);

  private:
    struct Apartment {
        Apartment();
        ~Apartment();
    };

    Host& host_;
    Apartment apartment_; // initialised first, destroyed last
    std::shared_ptr<ObjectContext> context_ = std::make_shared<ObjectContext>();
    ComPtr<ApplicationObject> application_;
    HostWindows windows_;
    std::unique_ptr<RunningObjects> running_;
};

} // namespace metrify::host
