// A module with the add-in and observers, which are static objects. It is not part of the test program.

#include "addin/application.h"
#include "addin/function_records.h"
#include "tests/called_during_event.h"
#include "xllrt/app/ribbon_callback.h"

namespace metrify {

namespace {

const CXlFunctionRecordLink metrify_link(metrify_record);
const CXlFunctionRecordLink macro_link(macro_record);

CMetrifyApp application;

const CXlFunctionRecordLink ribbon_link(ribbon_record);
const CRibbonEventRegistrar ribbon_registrar;

class KeepingObserver final : public CXlEventStaticObserver<CXlWorkbookBeforeCloseEvent> {
  public:
    void Notify(CXlBeforeCloseEventArgs& args) override {
        args.cancel = args.workbook == "Keep.xls" || args.workbook == application.modulePath;
    }
};

class CopyingObserver final : public CXlEventStaticObserver<CXlWorkbookBeforeSaveEvent> {
  public:
    void Notify(CXlBeforeSaveEventArgs& args) override { args.cancel = args.saveAs; }
};

// Lets the host act during an event.
class CallingObserver final : public CXlEventStaticObserver<CXlWorkbookOpenEvent> {
  public:
    void Notify(CXlWorkbookEventArgs& args) override { CallFunctionIn(args.workbook); }
};

const KeepingObserver keeping_observer;
const CallingObserver calling_observer;
const CopyingObserver copying_observer;

} // namespace

} // namespace metrify
