#include "xllrt/app/observer_function.h"

#include "xllrt/gate/host_paths.h"
#include "xllrt/text/code_page.h"
#include "xllrt/text/format_printf.h"

#include <algorithm>

namespace metrify {

namespace {

bool IsLetterOrDigit(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

// The name of the module's file, without directory and ending, in letters and digits.
std::string ModuleWord() {
    const std::string path = GetHostPathText();
    const std::size_t separator = path.find_last_of("\\/");
    std::string word = separator == std::string::npos ? path : path.substr(separator + 1);
    word.resize(std::min(word.size(), word.rfind('.')));
    std::replace_if(
        word.begin(), word.end(), [](char c) { return !IsLetterOrDigit(c); }, '_');
    return word;
}

// Tells the observers of an event, and gives the arguments back as they left them.
template <class Event>
typename Event::Args Tell(const Event& event, typename Event::Args args) {
    event.Notify(args);
    return args;
}

} // namespace

void AddObserverFunction(CXllApp& application) {
    std::string name;
    FormatPrintf(name, "xll_%s_observer", ModuleWord());
    application.observerFunctionName = ToWide(name);
    CXlFunctionDescriptor descriptor;
    descriptor.functionName = application.observerFunctionName;
    descriptor.narrow.argumentNames = "EventNumber,Arg1,Arg2,Arg3";
    descriptor.wide.argumentNames = u"EventNumber,Arg1,Arg2,Arg3";
    descriptor.narrow.entry = "CXlApp_ObserverEventHandler4";
    descriptor.wide.entry = "CXlApp_ObserverEventHandler12";
    descriptor.narrow.type = "RJPPP";
    descriptor.wide.type = "RJQQQ";
    descriptor.narrow.category = "User Defined";
    descriptor.wide.category = u"User Defined";
    descriptor.helpId = 1;
    descriptor.macroType = 2;
    application.functions.Add(descriptor);
}

void DispatchEvent(CXllApp& application, CXlOper& result, int number, const CXlOper& first,
                   const CXlOper& second) {
    const CXlAppEvents& events = application.events;
    const auto answer = [&result](bool cancel) { result.SetBool(cancel ? 1 : 0); };
    switch (number) {
    case 0:
        Tell(events.newWorkbook, {first.ToText()});
        break;
    case 1:
        Tell(events.selectionChange, {first.ToText(), second.ToText()});
        break;
    case 2:
        answer(Tell(events.beforeDoubleClick, {first.ToText(), second.ToText()}).cancel);
        break;
    case 3:
        answer(Tell(events.beforeRightClick, {first.ToText(), second.ToText()}).cancel);
        break;
    case 4:
        Tell(events.sheetActivate, {first.ToText()});
        break;
    case 5:
        Tell(events.sheetDeactivate, {first.ToText()});
        break;
    case 6:
        Tell(events.calculate, {first.ToText()});
        break;
    case 7:
        Tell(events.sheetChange, {first.ToText(), second.ToText()});
        break;
    case 8:
        Tell(events.workbookOpen, {first.ToText()});
        break;
    case 9:
        Tell(events.workbookActivate, {first.ToText()});
        break;
    case 10:
        Tell(events.workbookDeactivate, {first.ToText()});
        break;
    case 11:
        answer(Tell(events.workbookBeforeClose, {first.ToText()}).cancel);
        break;
    case 12:
        answer(Tell(events.workbookBeforeSave, {first.ToText(), second.ToBool()}).cancel);
        break;
    case 14:
        Tell(events.workbookNewSheet, {first.ToText(), second.ToText()});
        break;
    case 20:
        Tell(events.afterCalculate, {});
        break;
    case 21:
        Tell(events.workbookAfterSave, {first.ToText(), second.ToBool()});
        break;
    default:
        break;
    }
}

} // namespace metrify
