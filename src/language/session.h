#pragma once

// A calculator that keeps variables, user units, default units, the function block and the statement number
// from entry to entry. The listings of its entries, one after another, are the listing of one program in
// which an empty line follows each entry.

#include "base/interruption.h"
#include "machine/calculator.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace metrify {

/// Sessions are independent of each other and of the programs that a thread runs. One session may be used by
/// one thread at a time.
class session {
  public:
    session() = default;
    /// Starts with the user units of the definitions; see language/unit_definitions.h.
    explicit session(std::string unit_definitions);
    /// Obeys a request that may outlive the session.
    explicit session(std::shared_ptr<interruption> stop) : interruption_(std::move(stop)) {}

    /// Runs the entry, one line or several, and gives its listing. If the entry is interrupted, the listing
    /// contains the message.
    std::string enter(std::string_view entry);

    /// A request ends the entry that is being run: the statement that is being run fails, and the variables
    /// are those before it. Without an entry it has no effect.
    interruption& stop() { return *interruption_; }

    /// True if a request ended the latest entry.
    bool was_interrupted() const { return was_interrupted_; }

    /// Makes the result of the latest entry, if there is one, the value of a variable that only this function
    /// assigns. Does nothing if the user has made the name a variable or a unit.
    void keep_result_as(std::string_view name);

    /// True if a function block has been begun and not ended.
    bool is_block_open() const { return calculator_->block.state == block_state::open; }

    /// The names of the variables and of the user's units.
    std::vector<std::string> defined_names() const;

    /// True if the entry's last line ends in a continuation.
    static bool is_continued(std::string_view entry);

    /// Resets everything to the start.
    void start_over();

  private:
    void append_text(std::string_view entry);

    std::string unit_definitions_;
    std::shared_ptr<interruption> interruption_ = std::make_shared<interruption>();
    bool was_interrupted_ = false;
    std::unique_ptr<calculator> calculator_ = std::make_unique<calculator>();
    std::optional<dim_value> kept_; // the value that keep_result_as has assigned
    std::vector<char> text_;        // the entries that the function block is in
};

} // namespace metrify
