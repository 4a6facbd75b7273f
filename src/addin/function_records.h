#pragma once

// What the host is told of this add-in's functions.

#include "xllrt/registry/function_record.h"

namespace metrify {

/// The worksheet function Metrify(Val, InUnits, OutUnits).
extern XlFunctionRecord metrify_record;

/// The macro behind the menu.
extern XlFunctionRecord macro_record;

/// What the server of the ribbon calls.
extern XlFunctionRecord ribbon_record;

} // namespace metrify
