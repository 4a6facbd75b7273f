#include "conversion/known_conversions.h"

#include "base/perfect_hash.h"
#include "base/thread_object.h"
#include "machine/calculator.h"
#include "units/plain_units.h"

#include <algorithm>
#include <array>

namespace metrify {

namespace {

constexpr std::string_view end_of_listing = "\n\n";

// Never 0.
std::uint32_t hash_of(std::string_view in_units, std::string_view out_units) {
    std::uint64_t hash = name_hash_seed;
    for (const char c : in_units)
        hash = add_to_name_hash(hash, c);
    hash = add_to_name_hash(hash, ';');
    for (const char c : out_units)
        hash = add_to_name_hash(hash, c);
    // The low bits depend on the low bits of the characters only.
    return static_cast<std::uint32_t>(hash >> 32U) | 1U;
}

/// The hash of a conversion chooses its first place. It is at the first free one of eight, or has replaced
/// one of them, each in turn.
class conversion_table {
  public:
    const known_conversion* find(std::uint32_t hash, std::string_view in_units, std::string_view out_units) {
        for (std::size_t step = 0; step < steps; ++step) {
            const std::size_t place = place_of(hash, step);
            if (hashes_[place] == 0)
                return nullptr;
            if (hashes_[place] == hash && entries_[place].is_between(in_units, out_units))
                return &entries_[place];
        }
        return nullptr;
    }

    const known_conversion* add(std::uint32_t hash, const known_conversion& made) {
        std::size_t step = 0;
        while (step < steps && hashes_[place_of(hash, step)] != 0)
            ++step;
        if (step == steps)
            step = next_replaced_++ % steps;
        const std::size_t place = place_of(hash, step);
        hashes_[place] = hash;
        entries_[place] = made;
        return &entries_[place];
    }

  private:
    static constexpr std::size_t size = 64;
    static constexpr std::size_t steps = 8;

    static std::size_t place_of(std::uint32_t hash, std::size_t step) { return ((hash >> 8U) + step) % size; }

    std::array<std::uint32_t, size> hashes_ = {}; // 0 for a free place
    std::array<known_conversion, size> entries_;
    std::size_t next_replaced_ = 0;
};

// True if a value in the one unit can be shown in the other.
bool is_compatible(const unit_scale& in, const unit_scale& out) {
    dim_value value;
    value.dim = in.dim;
    dim_value shown;
    shown.dim = out.dim;
    return same_units_loose(value, shown);
}

} // namespace

bool known_conversion::is_between(std::string_view in_units, std::string_view out_units) const {
    return in_units.size() == in_length_ && out_units.size() == out_length_ &&
           std::equal(in_units.begin(), in_units.end(), text_) &&
           std::equal(out_units.begin(), out_units.end(), text_ + in_length_);
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
    out_length_ = static_cast<std::uint8_t>(out_units.size());
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
    const std::uint32_t hash = hash_of(in_units, out_units);
    auto& table = thread_object<conversion_table>();
    if (const known_conversion* const known = table.find(hash, in_units, out_units))
        return known;
    reset_calculator(); // units that a program has defined are not known here
    known_conversion made;
    return made.prepare(in_units, out_units) ? table.add(hash, made) : nullptr;
}

} // namespace metrify
