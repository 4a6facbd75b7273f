#pragma once

// The application object: the single instance called by the add-in's entry points. Each add-in overrides the
// virtual operations.

#include "xllrt/app/ribbon.h"
#include "xllrt/event/app_events.h"
#include "xllrt/event/integration.h"
#include "xllrt/fault/exceptions.h"
#include "xllrt/registry/function_list.h"
#include "xllrt/registry/help_ids.h"
#include "xllrt/text/dual_string.h"
#include "xllrt/value/xl_oper.h"

#include <array>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>

namespace metrify {

class CXllApp {
  public:
    /// Becomes the current instance. Throws a `CXlIllegalArgumentException` if the integration has no wizard
    /// detector. The integration must outlive the object.
    explicit CXllApp(const CXlIntegration& integration = NoIntegration());
    CXllApp(const CXllApp&) = delete;
    CXllApp& operator=(const CXllApp&) = delete;

    /// The current instance: the application constructed last, or null.
    static CXllApp* Instance();
    /// Sets the current instance, which may be null.
    static void SetInstance(CXllApp* instance);

    // Operations that an add-in may override, in a fixed order.

    virtual void OnAutoAdd();
    /// The result reported to the host after adding; 0 is failure.
    virtual int AutoAddResult();
    virtual void OnAutoRemove();
    virtual int Reserved3();
    virtual int Reserved4();
    virtual void OnBeforeOpen();
    /// Return 0 to stop the load without a message.
    virtual int OnOpen();
    virtual void OnClose();
    virtual void OnOpened();
    // Events of the host. Each returns the answer of the handler; false without a handler.
    virtual bool OnNewWorkbook(XlHostObject* workbook);
    virtual bool OnSelectionChange(XlHostObject* sheet, XlHostObject* range);
    virtual bool OnBeforeDoubleClick(XlHostObject* sheet, XlHostObject* range);
    virtual bool OnBeforeRightClick(XlHostObject* sheet, XlHostObject* range);
    virtual bool OnSheetActivate(XlHostObject* sheet);
    virtual bool OnSheetDeactivate(XlHostObject* sheet);
    virtual bool OnCalculate(XlHostObject* sheet);
    virtual bool OnSheetChange(XlHostObject* sheet, XlHostObject* range);
    virtual bool OnWorkbookOpen(XlHostObject* workbook);
    virtual bool OnWorkbookActivate(XlHostObject* workbook);
    virtual bool OnWorkbookDeactivate(XlHostObject* workbook);
    virtual bool OnWorkbookBeforeClose(XlHostObject* workbook);
    virtual bool OnWorkbookBeforeSave(XlHostObject* workbook, bool save_as);
    virtual bool OnWorkbookEvent13(XlHostObject* workbook);
    virtual bool OnWorkbookNewSheet(XlHostObject* workbook, XlHostObject* sheet);
    virtual bool OnWorkbookEvent15(XlHostObject* workbook);
    virtual bool OnWorkbookEvent16(XlHostObject* workbook);
    virtual void OnReservedEvent17();
    virtual void OnReservedEvent18();
    virtual void OnReservedEvent19();
    virtual bool OnAfterCalculate();
    virtual bool OnWorkbookAfterSave(XlHostObject* workbook, bool success);
    /// Called when the module is loaded. Return 0 to make the loader reject it.
    virtual int OnProcessAttach();
    /// Called when the module is unloaded.
    virtual int OnProcessDetach();
    /// Gets the path of the add-in from the host. Returns the host's code.
    virtual int GetHostName(CXlOper& name);
    virtual std::u16string GetAddInName();
    /// The path of the add-in as text; empty on failure.
    virtual std::string GetModuleText();
    /// Converts an exception to the result of an entry point.
    virtual void ExceptionToValue(CXlOper& result, const CXlRuntimeException& exception);
    virtual ~CXllApp();
    /// Called if functions could not be registered. Returns true to load the add-in without them.
    virtual bool ConfirmRegistrationFailure();
    /// The default answer to a ribbon callback.
    virtual void GetRibbonDefault(CXlOper& result, const XlRibbonCallback& callback);

    /// Switches an event of the host on or off. Switching on connects to the host and throws a
    /// `CXlComException` if that fails.
    void EnableEvent(int number, bool on);

    /// Calls the handler of an event: the macro set for it, or else the observer function if the event is
    /// switched on. Returns the answer of a cancellable event, otherwise false.
    bool RaiseEvent(int number, bool is_cancellable, std::string_view signature,
                    std::initializer_list<XlEventArgument> arguments);

    /// Called when the add-in is closed. The host may unload the module next, and an event that is in
    /// progress returns to it: then the module stays in memory.
    void KeepModuleDuringEvent();

    /// Sets the ribbon by its mode: none or shared. Returns false, with nothing changed, for any other
    /// mode.
    bool SetRibbonMode(int mode);
    /// Sets another ribbon implementation and the mode to report for it.
    void SetRibbonImpl(std::unique_ptr<IXlpRibbonImpl> ribbon, int mode);
    IXlpRibbonImpl& Ribbon() { return *ribbon_; }
    int RibbonMode() const { return ribbon_mode_; }

    IXlComHelper& ComHelper() { return *com_helper_; }
    IXlWizExUIFunctionRegistry* WizardRegistry() { return wizard_registry_.get(); }
    IXlFormulaWizardDetector& WizardDetector() { return *wizard_detector_; }

    // Data filled and read by load and registration.

    CXlDualString addInName;   ///< shown to the user
    std::string modulePath;    ///< as the operating system gives it
    std::string hostPath;      ///< as the host gives it
    std::string helpFile;      ///< may be preset
    CXlHelpIds helpIds;        ///< by function name
    bool isOpenedMark = false; ///< set at the end of an open sequence, even if it failed without a message
    CXlFunctionList functions; ///< in the order of registration
    std::array<std::string, kEventCount> eventHandlers; ///< a macro for each event of the host
    bool shortRegistration = false; ///< functions without arguments are registered without help texts
    std::u16string observerFunctionName;
    std::array<bool, kEventCount> eventSwitches{};
    std::string addInDirectory;
    CXlAppEvents events;
    char listSeparator = 0;
    char rowLetter = 0;
    char columnLetter = 0;

  private:
    /// Raises an event with the signature from the table.
    bool Raise(XlHostEventNumber number, std::initializer_list<XlEventArgument> arguments);

    /// Created and started on first use. Throws a `CXlComException` if the start fails.
    std::shared_ptr<IXlComHolder> ComHolder();

    const CXlIntegration& integration_;
    std::shared_ptr<IXlComHolder> com_holder_; // shared with the events in progress
    int events_in_progress_ = 0;
    // Destroyed in reverse order.
    std::unique_ptr<IXlFormulaWizardDetector> wizard_detector_;
    std::unique_ptr<IXlWizExUIFunctionRegistry> wizard_registry_;
    std::unique_ptr<IXlComHelper> com_helper_;
    int ribbon_mode_ = kRibbonModeNone;
    std::unique_ptr<IXlpRibbonImpl> ribbon_;
};

} // namespace metrify
