#pragma once

// The letters that the host uses in references, and its list separator.

#include "xllrt/app/xll_app.h"

namespace metrify {

/// Row letter and column letter, wide and narrow.
struct HostLetters {
    XCHAR wideRow = u'R';
    XCHAR wideColumn = u'C';
    char narrowRow = 'R';
    char narrowColumn = 'C';
};

/// The letters read last; initially `R` and `C`.
const HostLetters& SharedLetters();

/// Reads the shared letters. Those that the host doesn't give become `R` and `C`.
void ReadHostLetters();

/// Reads list separator, row letter and column letter into the application. Returns false, with
/// nothing changed, unless the host gives all three.
bool ReadHostSeparators(CXllApp& application);

} // namespace metrify
