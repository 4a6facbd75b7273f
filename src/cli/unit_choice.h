#pragma once

// The units that a call has besides the vocabulary.

#include <iosfwd>
#include <string>
#include <vector>

namespace metrify {

struct unit_choice {
    bool everyday = false;
    std::vector<std::string> files; // each with DefUnit lines

    bool is_empty() const { return !everyday && files.empty(); }
};

/// Collects the definitions of all chosen units; those of later files replace those of earlier ones. Reports
/// unreadable files and lines with faults to err, with the file and the number of the line. False if there
/// were any; the definitions are usable all the same.
bool read_definitions(const unit_choice& choice, std::string& definitions, std::ostream& err);

/// The file with the user's own units: `metrify/units` in the folder for configuration files. Empty if the
/// folder is not known.
std::string own_units_file();

/// Adds the user's own units if their file exists.
void add_own_units(unit_choice& choice);

} // namespace metrify
