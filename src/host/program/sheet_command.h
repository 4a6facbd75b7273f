#pragma once

// The metrify-sheet command: formulas through an add-in, as a spreadsheet would do it.

#include <iosfwd>
#include <string>
#include <vector>

namespace metrify::host {

struct SheetOptions {
    std::string module;
    int release = 15;
    unsigned threads = 1;
    /// A command of the add-in's to run instead of evaluating formulas.
    std::string macro = {};
    /// Whether the user agrees when the macro asks.
    bool agrees = true;
    /// "-" stands for formulas from the input, one a line.
    std::vector<std::string> formulas = {};
};

/// Loads and opens the add-in, evaluates the formulas, writes their values and closes the add-in. What is no
/// formula gives
/// `#NAME?` and a word to `errors`, as alerts of the add-in do. Gives the exit code: 0, or 1 if the
/// add-in could not be loaded or a text was no formula.
int SheetCommand(const SheetOptions& options, std::istream& input, std::ostream& output,
                 std::ostream& errors);

} // namespace metrify::host
