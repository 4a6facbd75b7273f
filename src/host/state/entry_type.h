#pragma once

// The type text of a registered function.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace metrify::host {

/// Types are single letters, those of wide text with a "%".
struct EntryType {
    std::string result;
    std::vector<std::string> parameters;
    bool is_thread_safe = false; ///< "$"
    bool is_macro = false;       ///< "#": may ask for what only macro sheets may

    /// Result and parameters in one text, without the marks.
    std::string Signature() const;
};

/// Reads a type text. Nothing for a letter that is no type, or that hosts before version 12 do not know.
std::optional<EntryType> ReadEntryType(std::u16string_view text, bool is_wide_host);

} // namespace metrify::host
