#pragma once

// The letters that the host writes references with, and its list separator.

#include "xllrt/text/xchar.h"

namespace metrify {

/// A row letter and a column letter.
struct HostLetters {
    XCHAR wideRow = u'R';
    XCHAR wideColumn = u'C';
    char narrowRow = 'R';
    char narrowColumn = 'C';
};

/// The letters that were read last; `R` and `C` before that.
const HostLetters& SharedLetters();

/// Reads the shared letters. A letter that the host does not report is `R` or `C`.
void ReadHostLetters();

/// Reads list separator, row letter and column letter. False, with nothing changed, if the host does not
/// report all three.
bool ReadHostSeparators(char& list_separator, char& row_letter, char& column_letter);

} // namespace metrify
