#pragma once

// The add-in in a host, from its opening to its removal, with all its entries.

#include "addin/application.h"
#include "addin/function_records.h"
#include "host/core/host.h"
#include "host/entry/registered_call.h"
#include "host/sheet/cell_records.h"
#include "own_entries.h"
#include "xllrt/app/xll_lifecycle.h"
#include "xllrt/gate/host_version.h"
#include "xllrt/value/record_memory.h"
#include "xllrt/value/thread_state.h"

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace metrify {

class AddInLife {
  public:
    /// The host is connected to the runtime of this process.
    explicit AddInLife(host::Host& host) : host_(host), earlier_(CXllApp::Instance()) {
        AllocateThreadStates();
        SetHostVersion(0);
        SetAddInOpened(false);
        host_.Adopt(std::make_unique<OwnEntries>());
        application_ = std::make_unique<CMetrifyApp>();
        application_->addInName.Assign("Metrify");
        for (const XlFunctionRecord* record : {&ribbon_record, &macro_record, &metrify_record})
            application_->functions.Add(CXlFunctionDescriptor(*record));
    }
    AddInLife(const AddInLife&) = delete;
    AddInLife& operator=(const AddInLife&) = delete;
    ~AddInLife() {
        application_->events.DetachAll();
        application_.reset();
        // Values of the thread are released by the host that allocated them.
        DestroyThreadState();
        host_.Unload();
        SetAddInOpened(false);
        CXllApp::SetInstance(earlier_);
    }

    /// What the add-in's entry returns.
    std::int32_t Open() {
        application_->events.AttachEarly();
        return host_.CallEntryPoint("xlAutoOpen").value();
    }

    /// The result of the worksheet function for 3.5, "ft" and "m", through both entries.
    std::vector<host::CellValue> Convert() {
        const host::ContextScope scope(host::CallContext::worksheet_function);
        std::vector<host::CellValue> results{Take(Metrify_4(3.5, "ft", "m"))};
        results.push_back(Take(Metrify_12(3.5, u"ft", u"m")));
        return results;
    }

    /// The results of all other entries that return values.
    std::vector<host::CellValue> RunMacros() {
        const host::ContextScope scope(host::CallContext::command);
        std::vector<host::CellValue> results{Take(Metrify_Macro_4())};
        results.push_back(Take(Metrify_Macro_12()));
        RecordOwner<XLOPER> narrow;
        RecordOwner<XLOPER12> wide;
        host::WriteRecord(u"Book1", narrow.record);
        host::WriteRecord(u"Book1", wide.record);
        results.push_back(Take(CXlApp_ObserverEventHandler4(11, &narrow.record, nullptr, nullptr)));
        results.push_back(Take(CXlApp_ObserverEventHandler12(11, &wide.record, nullptr, nullptr)));
        results.push_back(Take(RibbonCallback_4(8, "id", "tag", 1, "", "", 1)));
        results.push_back(Take(RibbonCallback_12(8, u"id", u"tag", 1, u"", u"", 1)));
        results.push_back(host_.AddInManagerInfo(1.0).value_or(host::CellValue()));
        return results;
    }

    /// As a host that asks for everything twice. True if each entry returns 1.
    bool CloseAndRemove() {
        bool succeeds = true;
        for (const char* entry : {"xlAutoClose", "xlAutoClose", "xlAutoRemove", "xlAutoRemove"})
            succeeds = host_.CallEntryPoint(entry) == 1 && succeeds;
        return succeeds;
    }

    CMetrifyApp& application() { return *application_; }

  private:
    template <class Record>
    host::CellValue Take(Record* record) {
        return host::TakeResultRecord(host_.state(), record);
    }

    host::Host& host_;
    CXllApp* earlier_;
    std::unique_ptr<CMetrifyApp> application_;
};

} // namespace metrify
