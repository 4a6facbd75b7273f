#pragma once

// The arguments of events. Observers set `cancel` to cancel what the event announces.

#include <string>

namespace metrify {

struct CXlEventArgs {};

struct CXllOpenEventArgs {
    bool cancel = false; ///< set by an observer: the add-in is not opened
};

struct CXlWorkbookEventArgs {
    std::string workbook;
};

struct CXlWorksheetEventArgs {
    std::string sheet;
};

struct CXlRangeEventArgs {
    std::string sheet;
    std::string range;
};

struct CXlCancellableRangeEventArgs {
    std::string sheet;
    std::string range;
    bool cancel = false;
};

struct CXlBeforeCloseEventArgs {
    std::string workbook;
    bool cancel = false;
};

struct CXlBeforeSaveEventArgs {
    std::string workbook;
    bool saveAs = false;
    bool cancel = false;
};

struct CXlWorkbookNewSheetEventArgs {
    std::string workbook;
    std::string sheet;
};

struct CXlAfterCalculateEventArgs {};

struct CXlAfterSaveEventArgs {
    std::string workbook;
    bool success = false;
};

} // namespace metrify
