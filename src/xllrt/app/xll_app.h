#pragma once

// The application object: the one instance that the host's add-in entries talk to. What differs between
// add-ins stands in the virtual operations.

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
    /// Becomes the instance. Throws a `CXlIllegalArgumentException` if the integration makes no wizard
    /// detector. The integration must outlive the object.
    explicit CXllApp(const CXlIntegration& integration = NoIntegration());
    CXllApp(const CXllApp&) = delete;
    CXllApp& operator=(const CXllApp&) = delete;

    /// The application constructed last; null without one.
    static CXllApp* Instance();
    /// Makes another application, or none, the instance.
    static void SetInstance(CXllApp* instance);

    // What an add-in may have its own way of, in a fixed order.

    virtual void OnAutoAdd();
    /// Whether the host is to be told that adding succeeded.
    virtual int AutoAddResult();
    virtual void OnAutoRemove();
    virtual int Reserved3();
    virtual int Reserved4();
    virtual void OnBeforeOpen();
    /// 0 stops the load without a word.
    virtual int OnOpen();
    virtual void OnClose();
    virtual void OnOpened();
    // Events of the host. Each gives the answer of whoever handles it; false if nobody does.
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
    /// The module has been loaded. 0 makes the loader refuse it.
    virtual int OnProcessAttach();
    /// The module goes.
    virtual int OnProcessDetach();
    /// Asks the host for the path of the add-in. Gives the host's code.
    virtual int GetHostName(CXlOper& name);
    virtual std::u16string GetAddInName();
    /// The host's path of the add-in; the empty text if it doesn't tell.
    virtual std::string GetModuleText();
    /// Makes the result of an entry what the exception says.
    virtual void ExceptionToValue(CXlOper& result, const CXlRuntimeException& exception);
    virtual ~CXllApp();
    /// Some functions could not be registered: true to load the add-in without them.
    virtual bool ConfirmRegistrationFailure();
    /// The answer to a ribbon callback that nobody answers.
    virtual void GetRibbonDefault(CXlOper& result, const XlRibbonCallback& callback);

    /// Switches an event of the host on or off. Switching on connects to the host and throws a
    /// `CXlComException` if that fails.
    void EnableEvent(int number, bool on);

    /// Has an event of the host handled: by the macro set for it, else by the observer function if the event
    /// is switched on. Gives the handler's answer; false for an event that has none.
    bool RaiseEvent(int number, bool is_cancellable, std::string_view signature,
                    std::initializer_list<XlEventArgument> arguments);

    /// Gives the application the ribbon of a mode: none or the shared one. False, with nothing changed, for
    /// any other mode.
    bool SetRibbonMode(int mode);
    /// Gives the application a ribbon of its own, of some mode.
    void SetRibbonImpl(std::unique_ptr<IXlpRibbonImpl> ribbon, int mode);
    IXlpRibbonImpl& Ribbon() { return *ribbon_; }
    int RibbonMode() const { return ribbon_mode_; }

    IXlComHelper& ComHelper() { return *com_helper_; }
    IXlWizExUIFunctionRegistry* WizardRegistry() { return wizard_registry_.get(); }
    IXlFormulaWizardDetector& WizardDetector() { return *wizard_detector_; }

    // What load and registration fill and read.

    CXlDualString addInName;   ///< for display
    std::string modulePath;    ///< as the operating system gives it
    std::string hostPath;      ///< as the host gives it
    std::string helpFile;      ///< may be preset
    CXlHelpIds helpIds;        ///< by function name
    bool isOpenedMark = false; ///< from the end of an open sequence, also of one that failed quietly
    CXlFunctionList functions; ///< in the order of registration
    std::array<std::string, kEventCount> eventHandlers; ///< a macro for each event of the host
    bool shortRegistration = false; ///< functions without arguments are registered without their helps
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

    /// Made and started when first asked for. Throws a `CXlComException` if it doesn't start.
    IXlComHolder& ComHolder();

    const CXlIntegration& integration_;
    std::unique_ptr<IXlComHolder> com_holder_;
    // Destroyed in the reverse order.
    std::unique_ptr<IXlFormulaWizardDetector> wizard_detector_;
    std::unique_ptr<IXlWizExUIFunctionRegistry> wizard_registry_;
    std::unique_ptr<IXlComHelper> com_helper_;
    int ribbon_mode_ = kRibbonModeNone;
    std::unique_ptr<IXlpRibbonImpl> ribbon_;
};

} // namespace metrify
