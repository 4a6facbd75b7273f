#include "cli/hints/impossible_units.h"

#include "base/number_text.h"
#include "cli/hints/word_list.h"

namespace metrify {

namespace {

constexpr std::string_view currency_signs[] = {"$", "€", "£", "¥"};

constexpr word_row impossible[] = {
    {"EUR USD GBP JPY CHF CNY euro euros dollar dollars yen cent cents $ € £ ¥",
     "is money, for which the language has no unit; it cancels in a conversion of a price: `metrify convert "
     "1200 /m^2 /ft^2`"},
    {"dB dBm dBA dBV dBi dBW Np neper bel", "is logarithmic, and the language has no such unit: 20 dB is "
                                            "`10^(20/10)` as a ratio of powers, `10^(20/20)` as "
                                            "one of amplitudes"},
    {"cd candela lm lumen lumens lx lux nit nits fc footcandle",
     "measures light, for which the language has no dimension"},
    {"psig barg", "is a pressure above that of the atmosphere: add `1 atm`, as in `32 psi + 1 atm; bar`"},
    {"pH", "is logarithmic: a concentration is `10^-7 mol/L`"},
};

// Bits per unit of information.
struct information_unit {
    std::string_view name;
    double bits;
};
constexpr information_unit information_units[] = {
    {"bit", 1},         {"bits", 1},        {"byte", 8},         {"bytes", 8},        {"B", 8},
    {"kB", 8e3},        {"KB", 8e3},        {"MB", 8e6},         {"GB", 8e9},         {"TB", 8e12},
    {"PB", 8e15},       {"KiB", 8192},      {"MiB", 8388608},    {"GiB", 8589934592}, {"TiB", 8796093022208},
    {"kbit", 1e3},      {"Mbit", 1e6},      {"Gbit", 1e9},       {"Tbit", 1e12},      {"kb", 1e3},
    {"Mb", 1e6},        {"Gb", 1e9},        {"bps", 1},          {"kbps", 1e3},       {"Mbps", 1e6},
    {"Gbps", 1e9},      {"megabyte", 8e6},  {"gigabyte", 8e9},   {"terabyte", 8e12},  {"kilobyte", 8e3},
    {"megabytes", 8e6}, {"gigabytes", 8e9}, {"terabytes", 8e12}, {"kilobytes", 8e3},  {"baud", 1},
};

} // namespace

std::optional<std::string> why_impossible(std::string_view name) {
    const std::string quoted = "`" + std::string(name) + "` ";
    for (const word_row& row : impossible)
        if (has_word(row.words, name))
            return quoted + std::string(row.text);
    for (const information_unit& unit : information_units) {
        if (unit.name != name)
            continue;
        number_buffer buffer;
        return quoted +
               "measures information, for which the language has no dimension; as a number: `DefUnit(" +
               std::string(name) + ", " + std::string(format_double(unit.bits, buffer)) + ")`";
    }
    return std::nullopt;
}

std::string_view currency_sign(std::string_view text) {
    for (const std::string_view sign : currency_signs)
        if (text.starts_with(sign))
            return sign;
    return {};
}

} // namespace metrify
