#pragma once

// The letters that the host writes references with, and its list separator.

#include "xllrt/app/xll_app.h"

namespace metrify {

/// A row letter and a column letter.
struct HostLetters {
    XCHAR wideRow = u'R';
    XCHAR wideColumn = u'C';
    char narrowRow = 'R';
    char narrowColumn = 'C';
};

/// The letters read last; `R` and `C` before that.
const HostLetters& SharedLetters();

/// Reads the shared letters. `R` and `C` stand for what the host doesn't tell.
void ReadHostLetters();

/// Reads list separator, row letter and column letter into the application. False, with nothing changed, if
/// the host doesn't tell all three.
bool ReadHostSeparators(CXllApp& application);

} // namespace metrify
