#include "xllrt/app/observer_function.h"

#include "xllrt/app/host_event_table.h"
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
    const XlHostEventRow* const row = FindHostEvent(number);
    if (!row || !row->notify)
        return;
    const bool is_cancelled = row->notify(application.events, first, second);
    if (row->is_cancellable)
        result.SetBool(is_cancelled ? 1 : 0);
}

} // namespace metrify
