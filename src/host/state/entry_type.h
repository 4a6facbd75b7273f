#pragma once

// The type text of a registered function.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace metrify::host {

/// Types are single letters; wide texts and large arrays have a "%" after theirs.
struct EntryType {
    std::string result;
    std::vector<std::string> parameters;
    bool is_thread_safe = false; ///< "$"
    bool is_macro = false;       ///< "#": may call functions reserved for macro sheets

    /// Result and parameters in one text, without the marks.
    std::string Signature() const;
};

/// Reads a type text. Nothing for an unknown letter, or one that only hosts from version 12 on know.
std::optional<EntryType> ReadEntryType(std::u16string_view text, bool is_wide_host);

} // namespace metrify::host
