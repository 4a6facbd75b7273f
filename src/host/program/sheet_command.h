#pragma once

// The metrify-sheet command: evaluates formulas with an add-in as a spreadsheet does.

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace metrify::host {

struct SheetOptions {
    std::string module;
    int release = 15;
    unsigned threads = 1;
    /// Escape is pressed so long after the evaluation has begun.
    std::optional<unsigned> escape_after_milliseconds = {};
    /// A command of the add-in to run for each formula, instead of evaluating it.
    std::string macro = {};
    /// The answer to the questions of the macro: OK or Cancel.
    bool agrees = true;
    /// "-" means formulas from the input, one per line.
    std::vector<std::string> formulas = {};
};

/// Loads and opens the add-in, evaluates the formulas, writes their values and closes the add-in. A text that
/// is not a formula gives `#NAME?` and is reported in `errors`, as are alerts of the add-in. Gives the exit
/// code: 0, or 1 if the add-in could not be opened or a text was not a formula.
int SheetCommand(const SheetOptions& options, std::istream& input, std::ostream& output,
                 std::ostream& errors);

} // namespace metrify::host
