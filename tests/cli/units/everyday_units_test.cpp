// The everyday units, and conversions as an engineer types them: each gives its result or a hint.

#include "cli/commands.h"
#include "cli/units/everyday_units.h"
#include "language/unit_definitions.h"
#include "machine/calculator.h"

#include <cmath>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <sstream>
#include <string>

namespace {

using namespace metrify;

TEST(everyday_units, are_all_defined) {
    calculator used;
    const calculator_scope scope(used);
    for (const definition_fault& fault : define_units(everyday_units()))
        ADD_FAILURE() << fault.line << ": " << fault.message;
    EXPECT_GT(used.units.user_units.units.size(), 500U);
}

TEST(everyday_units, are_defined_once) {
    std::set<std::string> names;
    std::istringstream lines(everyday_units());
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind("DefUnit(", 0) != 0)
            continue;
        EXPECT_TRUE(names.insert(line.substr(8, line.find(',') - 8)).second) << line;
    }
}

struct typed_conversion {
    std::string number;
    std::string from;
    std::string to;
    std::string result; // empty: a hint is wanted
};

void PrintTo(const typed_conversion& it, std::ostream* out) {
    *out << it.number << " " << it.from << " to " << it.to;
}

std::vector<typed_conversion> conversions(const char* file) {
    std::ifstream in(std::string(METRIFY_SOURCE_DIR "/tests/") + file);
    std::vector<typed_conversion> rows;
    std::string line;
    std::getline(in, line); // heading
    while (std::getline(in, line)) {
        std::istringstream cells(line);
        typed_conversion row;
        std::getline(cells, row.number, '\t');
        std::getline(cells, row.from, '\t');
        std::getline(cells, row.to, '\t');
        std::getline(cells, row.result, '\t');
        rows.push_back(row);
    }
    return rows;
}

class everyday_conversion : public testing::TestWithParam<typed_conversion> {};

TEST_P(everyday_conversion, gives_its_result_or_a_hint) {
    const typed_conversion& it = GetParam();
    const call_extras extras = {everyday_units(), true, true, false};
    std::ostringstream out;
    std::ostringstream err;
    double number = 0.0;
    std::istringstream(it.number) >> number;
    if (it.number.find_first_not_of("0123456789.e-") == std::string::npos)
        convert_command(number, it.from, it.to, out, err, extras);
    else
        refuse_number(it.number, it.from, it.to, err, extras);
    if (it.result.empty()) {
        EXPECT_NE(err.str().find("metrify: hint: "), std::string::npos) << out.str() << err.str();
        return;
    }
    const double expected = std::stod(it.result);
    constexpr double six_digits = 5e-6;
    EXPECT_NEAR(std::strtod(out.str().c_str(), nullptr), expected, std::fabs(expected) * six_digits)
        << out.str() << err.str();
    EXPECT_EQ(err.str(), "");
}

INSTANTIATE_TEST_SUITE_P(given, everyday_conversion,
                         testing::ValuesIn(conversions("everyday-conversions.tsv")));
INSTANTIATE_TEST_SUITE_P(more, everyday_conversion, testing::ValuesIn(conversions("more-conversions.tsv")));

TEST(everyday_conversions, are_all_read) {
    EXPECT_EQ(conversions("everyday-conversions.tsv").size(), 34U);
    EXPECT_EQ(conversions("more-conversions.tsv").size(), 42U);
}

} // namespace
