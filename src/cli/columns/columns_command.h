#pragma once

// `metrify columns`: converts columns of a text in full precision, in constant memory.

#include "conversion/conversion_plan.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <optional>
#include <string>

namespace metrify {

struct columns_options {
    std::string columns; ///< see column_choice
    char delimiter = ',';
    std::optional<bool> header; ///< found out if not given
    bool as_json = false;
    bool is_line_buffered = false; ///< each row is written as soon as it is complete
};

/// Reads up to the given number of bytes, and at least one unless the input ends. A negative result is a
/// failure, whose reason is in errno.
using byte_source = std::function<std::ptrdiff_t(char*, std::size_t)>;

/// The streams of a conversion of columns.
struct columns_streams {
    byte_source in;
    std::uint64_t size = 0; ///< of the input, or 0 if it is unknown
    std::ostream& out;
    std::ostream& err;
    std::ostream* terminal = nullptr;    ///< for the progress
    std::string name = "standard input"; ///< of the input, in notes
};

/// Converts the columns. The bytes around the converted numbers stay as they are, and so do cells that are no
/// number, which are reported at the end. Returns the exit status: 1 if there were any of these.
int convert_columns(const conversion_plan& plan, const columns_options& options,
                    const columns_streams& streams);

/// The arguments of the command.
struct columns_arguments {
    std::string from;
    std::string to;
    std::string delimiter = ",";
    std::string file = "-";
    columns_options options;
};

struct columns_hints {
    bool are_on = false;              ///< explain units that are not understood
    bool have_everyday_units = false; ///< the definitions include the everyday units
};

/// Runs the command on its file with the standard streams. For the definitions see
/// language/unit_definitions.h.
int columns_command(const columns_arguments& arguments, const std::string& unit_definitions,
                    const columns_hints& hints);

} // namespace metrify
