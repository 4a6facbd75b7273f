#pragma once

// The arguments of a registered function as its type text declares them.

#include "host/entry/entry_call.h"
#include "host/sheet/cell_value.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace metrify::host {

/// True if a parameter of that type takes references. A reference for any other one is passed as its value.
bool TakesReferences(const std::string& type);

/// Owns the memory of the arguments of one call.
class EntryArguments {
  public:
    EntryArguments();
    ~EntryArguments();
    EntryArguments(const EntryArguments&) = delete;
    EntryArguments& operator=(const EntryArguments&) = delete;

    /// Adds the next argument, converted to its type. Gives the error if it cannot be converted.
    std::optional<CellError> Add(const std::string& type, const CellValue& value);

    const std::vector<MachineWord>& words() const { return words_; }

  private:
    class Argument;

    std::vector<std::unique_ptr<Argument>> arguments_;
    std::vector<MachineWord> words_;
};

} // namespace metrify::host
