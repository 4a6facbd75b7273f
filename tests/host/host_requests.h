#pragma once

// The calls that the add-in makes, from the log of the host.

#include "host/core/host.h"

#include <array>
#include <ostream>

namespace metrify::host {

/// A logged call without its result.
struct HostRequest {
    int function;
    bool is_wide;
    std::vector<CellValue> arguments;
    friend bool operator==(const HostRequest&, const HostRequest&) = default;
};

inline void PrintTo(const HostRequest& request, std::ostream* out) {
    *out << (request.is_wide ? "wide " : "narrow ") << request.function << " with "
         << request.arguments.size() << " arguments";
}

/// The logged calls except those of `xlFree`; the log is started again.
inline std::vector<HostRequest> TakeRequests(Host& host) {
    std::vector<HostRequest> requests;
    for (const LoggedCall& call : host.state().log.Calls())
        if (WithoutOptions(call.function) != xlFree)
            requests.push_back({call.function, call.is_wide, call.arguments});
    host.state().log.Start();
    return requests;
}

inline std::u16string HelpFile(Host& host) {
    const std::u16string& path = host.state().module->Path();
    return path.substr(0, path.size() - 3) + u"chm";
}

inline CellValue MenuTable() {
    return ArrayOf({{u"Metrify", u"", u"", u"Metrify add-in menu", u""},
                    {u"Metrify", u"Metrify_Macro", u"", u"Metrify Function", u""}});
}

/// The arguments that register one function: entry, type text, name, names of the arguments, macro type,
/// category, help topic, and the descriptions.
inline std::vector<CellValue> Registered(Host& host, std::array<const char16_t*, 2> entries,
                                         std::array<const char16_t*, 2> types, const char16_t* name,
                                         const char16_t* arguments, const char16_t* kind, CellValue category,
                                         const char16_t* help, std::vector<CellValue> descriptions) {
    const std::size_t family = host.state().IsWide() ? 1 : 0;
    std::vector<CellValue> registered{
        host.state().module->Path(), entries[family], types[family], name, arguments, kind, category, u"",
        HelpFile(host) + help};
    registered.insert(registered.end(), descriptions.begin(), descriptions.end());
    return registered;
}

/// All registrations in their order. The name of the observer function contains the word.
inline std::vector<std::vector<CellValue>> AllRegistered(Host& host, const std::u16string& word) {
    const std::u16string observer = u"xll_" + word + u"_observer";
    return {
        Registered(host, {u"RibbonCallback_4", u"RibbonCallback_12"}, {u"RJCCJCCA", u"UJC%C%JC%C%A"},
                   u"Metrify.RibbonCallback", u"callback,id,tag,index,text,selectedId,pressed", u"2", 14,
                   u"!4",
                   {u"Handles all calls redirected from the ribbonX manager",
                    u"is the identifier of the callback which invoked this function",
                    u"is the id attribute of the control raising the event",
                    u"is the tag attribute of the control raising the event", u"is the index of an item",
                    u"is the changed value of the text", u"is the id of the selected item",
                    u"is true if the toggleButton is pressed.."}),
        Registered(host, {u"Metrify_Macro_4", u"Metrify_Macro_12"}, {u"R", u"U$"}, u"Metrify_Macro", u"",
                   u"2", 14, u"!1002", {u"Calls the Metrify() function.."}),
        Registered(host, {u"Metrify_4", u"Metrify_12"}, {u"RBCC", u"UBC%C%$"}, u"Metrify",
                   u"Val,InUnits,OutUnits", u"1", u"Metrify", u"!1001",
                   {u"Converts Val from InUnits to OutUnits",
                    u"Input value expressed in InUnits to be converted to Outunits (number)",
                    u"Units of the input value (text)", u"Units to convert input value to (text).."}),
        Registered(host, {u"CXlApp_ObserverEventHandler4", u"CXlApp_ObserverEventHandler12"},
                   {u"RJPPP", u"RJQQQ"}, observer.c_str(), u"EventNumber,Arg1,Arg2,Arg3", u"2",
                   u"User Defined", u"!1", {u""}),
    };
}

} // namespace metrify::host
