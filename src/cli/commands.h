#pragma once

// What the metrify command can do. Each command writes to the streams given and returns the exit status: 0, 1
// for an error cell or where a list is empty, 2 where something could not be read.

#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace metrify {

/// Converts one number: the two cells with a blank between, or the error cell on err.
int convert_command(double val, std::string_view in_units, std::string_view out_units, std::ostream& out,
                    std::ostream& err);

/// Each file is one run of the calculator; `-`, or no file at all, is standard input. Writes the listings
/// byte for byte. A file that can't be read is named with the reason, and the others are run all the same.
int run_command(const std::vector<std::string>& files, std::istream& in, std::ostream& out,
                std::ostream& err);

/// Lists the units whose name contains the text: name, factor and dimension.
int units_command(std::string_view text, std::ostream& out);

/// Lists the functions whose name or description contains the text in any case: the call, and what it is. The
/// name of a function gives all that is known about that one.
int functions_command(std::string_view text, std::ostream& out);

/// Writes the whole description of the functions as Markdown.
int functions_document_command(std::ostream& out);

/// The status of a command that has written to out: 2, with a message, where not all has come through.
int checked_output(int status, std::ostream& out, std::ostream& err);

/// Reads entries from the terminal until its end and shows what they come to.
int interactive_command(std::ostream& out);

} // namespace metrify
