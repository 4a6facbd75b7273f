// Every routine of the special functions against a table of exact values. The tables and the program that
// makes them lie beside this file; what an error is divided by stands in the table.

#include "calc/number_text.h"
#include "tests/numerics/routines.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <gtest/gtest.h>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

namespace {

using namespace metrify;
using namespace metrify::test;

struct exact_value {
    double value, scale;
};

struct truth_row {
    routine_arguments arguments;
    std::array<exact_value, most_outputs> outputs;
    std::string text;
};

double next_number(std::istream& in) {
    std::string word;
    in >> word;
    double number = 0.0;
    EXPECT_EQ(*read_double(word.c_str(), number), '\0') << word;
    return number;
}

truth_row parse_row(const routine& tested, const std::string& line) {
    truth_row row = {{}, {}, line.substr(0, line.find(':'))};
    std::istringstream in(line);
    for (std::size_t i = 0; i < tested.arguments; ++i)
        row.arguments[i] = next_number(in);
    std::string colon;
    in >> colon;
    EXPECT_EQ(colon, ":") << line;
    for (std::size_t i = 0; i < tested.outputs; ++i) {
        row.outputs[i].value = next_number(in);
        row.outputs[i].scale = next_number(in);
    }
    return row;
}

std::vector<truth_row> read_truth(const routine& tested) {
    const std::string path = METRIFY_SOURCE_DIR "/tests/numerics/truth/" + std::string(tested.name) + ".txt";
    std::ifstream in(path);
    EXPECT_TRUE(in.is_open()) << path;
    std::vector<truth_row> rows;
    for (std::string line; std::getline(in, line);) {
        if (!line.starts_with("#"))
            rows.push_back(parse_row(tested, line));
    }
    return rows;
}

double largest_error(const routine& tested, const truth_row& row) {
    work_text err;
    const routine_outputs outputs = tested.call(row.arguments, err.str);
    EXPECT_EQ(err.view(), "") << tested.name << ' ' << row.text;
    double largest = 0.0;
    for (std::size_t i = 0; i < tested.outputs; ++i) {
        const double error = std::fabs(outputs[i] - row.outputs[i].value) / row.outputs[i].scale;
        largest = std::isnan(error) ? HUGE_VAL : std::max(largest, error);
    }
    return largest;
}

class truth : public testing::TestWithParam<routine> {};

TEST_P(truth, is_met_within_the_bound) {
    const routine& tested = GetParam();
    const std::vector<truth_row> rows = read_truth(tested);
    EXPECT_GE(rows.size(), 200U);
    double largest = -1.0;
    std::string where;
    for (const truth_row& row : rows) {
        const double error = largest_error(tested, row);
        if (error > largest) {
            largest = error;
            where = row.text;
        }
    }
    EXPECT_LE(largest, tested.bound) << "at " << where;
    std::cout << tested.name << ": " << rows.size() << " points, largest error " << largest << " at " << where
              << '\n';
}

std::string routine_name(const testing::TestParamInfo<routine>& tested) {
    return std::string(tested.param.name);
}

INSTANTIATE_TEST_SUITE_P(special_functions, truth,
                         testing::ValuesIn(all_routines().begin(), all_routines().end()), routine_name);

} // namespace
