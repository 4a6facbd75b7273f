#include "base/number_text.h"
#include "cli/hints/impossible_units.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <utility>

namespace {

using namespace metrify;
using testing::HasSubstr;

void expect_bits(const std::string& name, double bits) {
    number_buffer buffer;
    const std::string definition =
        "`DefUnit(" + name + ", " + std::string(format_double(bits, buffer)) + ")`";
    EXPECT_THAT(why_impossible(name).value_or(""), HasSubstr(definition)) << name;
}

TEST(why_impossible, gives_the_bits_of_units_of_information) {
    for (const char* name : {"bit", "bits", "bps", "baud"})
        expect_bits(name, 1);
    for (const char* name : {"byte", "bytes", "B"})
        expect_bits(name, 8);
}

TEST(why_impossible, gives_the_bits_of_multiples_by_powers_of_1000) {
    const std::pair<std::string, double> prefixes[] = {{"k", 1e3}, {"M", 1e6}, {"G", 1e9}};
    for (const auto& [prefix, factor] : prefixes) {
        for (const char* unit : {"bit", "b", "bps"})
            expect_bits(prefix + unit, factor);
        expect_bits(prefix + "B", 8 * factor);
    }
    expect_bits("KB", 8e3);
    expect_bits("Tbit", 1e12);
    expect_bits("TB", 8e12);
    expect_bits("PB", 8e15);
    const std::pair<std::string, double> words[] = {
        {"kilo", 1e3}, {"mega", 1e6}, {"giga", 1e9}, {"tera", 1e12}};
    for (const auto& [prefix, factor] : words)
        for (const char* unit : {"byte", "bytes"})
            expect_bits(prefix + unit, 8 * factor);
}

TEST(why_impossible, gives_the_bits_of_multiples_by_powers_of_1024) {
    double bits = 8;
    for (const char* name : {"KiB", "MiB", "GiB", "TiB"})
        expect_bits(name, bits *= 1024);
}

} // namespace
