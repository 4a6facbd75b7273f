#pragma once

// Hints for a person on how to write what the language has not understood. They go to the error stream and
// never to a listing.

#include "cli/hints/correction.h"
#include "cli/hints/readings.h"
#include "machine/calculator.h"

#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace metrify {

struct explanation {
    correction corrected;
    std::optional<std::string> answer; // of the corrected statement
};

enum class conversion_state { converted, failed, not_a_number };

/// Explains the statements of one program, or one conversion.
class hint_writer {
  public:
    /// The definitions are those of the program; see language/unit_definitions.h.
    /// If name_of_result is not empty, statements may refer to the latest value by it.
    hint_writer(const std::string& unit_definitions, bool has_everyday_units, std::ostream& err,
                const std::string& name_of_result = {});

    /// Explains the statements of a listing that have failed or are not read as usual. The listings of a
    /// session are passed one after another. Only the first statements of a long listing are examined.
    void explain_listing(std::string_view listing);

    /// Explains a conversion. A number that the command has refused is explained only if there is a
    /// correction.
    void explain_conversion(std::string_view val, std::string_view in_units, std::string_view out_units,
                            conversion_state state);

    /// Explains a conversion of more words than it has, such as `3.5 ft to m`.
    void explain_words(const std::vector<std::string>& words);

    /// Explains the units between which columns can't be converted.
    void explain_columns(std::string_view in_units, std::string_view out_units);

  private:
    void remember(const std::string& statement);
    explanation explain(const std::string& statement, bool has_failed);
    bool explain_first_that_works(const std::vector<reading>& readings);
    void write_command(const explanation& found);
    bool is_worth_examining(const std::string& statement, bool has_failed);
    void explain_statement(const std::string& statement, bool has_failed);

    std::string unit_definitions_;
    bool has_everyday_units_;
    std::ostream& err_;
    std::string name_of_result_;
    std::string assignments_; // the program's lines so far that later statements may refer to
    calculator rehearsal_;    // their variables and units
    int explained_ = 0;
    int examined_ = 0;
};

} // namespace metrify
