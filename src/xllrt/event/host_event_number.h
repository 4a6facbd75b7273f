#pragma once

// The numbers of the host's events.

#include <cstddef>

namespace metrify {

/// Used for handler macros, event switches and the observer function. 13, 15 and 16 have no observers; 17 to
/// 19 are never raised.
enum XlHostEventNumber : int {
    kEventNewWorkbook = 0,
    kEventSelectionChange = 1,
    kEventBeforeDoubleClick = 2,
    kEventBeforeRightClick = 3,
    kEventSheetActivate = 4,
    kEventSheetDeactivate = 5,
    kEventCalculate = 6,
    kEventSheetChange = 7,
    kEventWorkbookOpen = 8,
    kEventWorkbookActivate = 9,
    kEventWorkbookDeactivate = 10,
    kEventWorkbookBeforeClose = 11,
    kEventWorkbookBeforeSave = 12,
    kEventWorkbook13 = 13,
    kEventWorkbookNewSheet = 14,
    kEventWorkbook15 = 15,
    kEventWorkbook16 = 16,
    kEventReserved17 = 17,
    kEventReserved18 = 18,
    kEventReserved19 = 19,
    kEventAfterCalculate = 20,
    kEventWorkbookAfterSave = 21,
};

/// Event numbers run from 0 to one below this.
inline constexpr std::size_t kEventCount = 22;

} // namespace metrify
