#include "conversion/known_conversions.h"

#include "base/perfect_hash.h"
#include "base/thread_object.h"
#include "machine/calculator.h"
#include "machine/operators.h"
#include "units/plain_units.h"

#include <array>

namespace metrify {

namespace {

constexpr std::string_view end_of_listing = "\n\n";

/// One entry for each value of the hash's lowest bits: a new conversion replaces the one there.
struct conversion_table {
    std::array<known_conversion, 64> entries;

    known_conversion& entry_of(std::string_view in_units, std::string_view out_units) {
        std::uint64_t hash = name_hash_seed;
        for (const char c : in_units)
            hash = add_to_name_hash(hash, c);
        hash = add_to_name_hash(hash, ';');
        for (const char c : out_units)
            hash = add_to_name_hash(hash, c);
        return entries[(hash >> 32U) % entries.size()];
    }
};

// True if a value in the one unit can be shown in the other.
bool is_compatible(const unit_scale& in, const unit_scale& out) {
    dim_value value;
    value.dim = in.dim;
    normalize_dimensions(value);
    dim_value shown;
    shown.dim = out.dim;
    return same_units_loose(value, shown);
}

} // namespace

bool known_conversion::is_between(std::string_view in_units, std::string_view out_units) const {
    const std::string_view text(text_, length_);
    return text.size() == in_units.size() + out_units.size() + end_of_listing.size() &&
           in_units.size() == in_length_ && text.substr(0, in_length_) == in_units &&
           text.substr(in_length_, out_units.size()) == out_units;
}

bool known_conversion::prepare(std::string_view in_units, std::string_view out_units) {
    const std::size_t request = out_units.find_first_not_of(" \t");
    if (request == std::string_view::npos ||
        in_units.size() + out_units.size() + end_of_listing.size() > longest)
        return false;
    unit_scale in;
    unit_scale out;
    if (!parse_plain_units(in_units, in) || !parse_plain_units(out_units, out) || in.factor == 0.0 ||
        !is_compatible(in, out))
        return false;
    in_offset_ = in.offset;
    in_factor_ = in.factor;
    out_factor_ = out.factor;
    out_offset_ = out.offset;
    in_length_ = static_cast<std::uint8_t>(in_units.size());
    unit_cell_ = static_cast<std::uint8_t>(in_units.size() + request);
    std::size_t length = 0;
    for (const std::string_view part : {in_units, out_units, end_of_listing})
        length += part.copy(text_ + length, part.size());
    length_ = static_cast<std::uint8_t>(length);
    return true;
}

const known_conversion* find_known_conversion(std::string_view in_units, std::string_view out_units) {
    // A report of an earlier run is written by the next statement.
    if (pending_report() != report_kind::none)
        return nullptr;
    known_conversion& entry = thread_object<conversion_table>().entry_of(in_units, out_units);
    if (entry.is_between(in_units, out_units))
        return &entry;
    reset_calculator(); // units that a program has defined are not known here
    known_conversion made;
    if (!made.prepare(in_units, out_units))
        return nullptr;
    entry = made;
    return &entry;
}

} // namespace metrify
