#pragma once

// The registration records of this add-in's functions.

#include "xllrt/registry/function_record.h"

namespace metrify {

/// The worksheet function Metrify(Val, InUnits, OutUnits).
extern XlFunctionRecord metrify_record;

/// The macro of the menu.
extern XlFunctionRecord macro_record;

/// The command that the ribbon server calls.
extern XlFunctionRecord ribbon_record;

} // namespace metrify
