#pragma once

// The macro that an event of the host leads to, run through automation.

#include "integration/com_value.h"
#include "xllrt/integration.h"

#include <string>
#include <vector>

namespace metrify {

/// Events run macros by a text instead of by an array of arguments. Off.
void SetEventsRunByText(bool by_text);

/// The arguments of a call: the target's name, the number of the event if it has one, the arguments described.
/// An object that can't be described is an empty argument.
std::vector<ComVariant> EventArguments(const XlEventCall& call);

/// The same as a text: the target, with the others in parentheses behind it.
std::u16string EventMacroText(const XlEventCall& call);

/// Has the host run the call. False if that failed, with `answer` as it was.
bool RunEventCall(const XlEventCall& call, CXlOper& answer);

} // namespace metrify
