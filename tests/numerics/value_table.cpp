#include "tests/numerics/value_table.h"

#include "base/number_text.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

namespace metrify::test {

namespace {

double next_number(std::istream& in) {
    std::string word;
    in >> word;
    double number = 0.0;
    EXPECT_EQ(*read_double(word.c_str(), number), '\0') << word;
    return number;
}

table_row parse_row(const routine& tested, const std::string& line) {
    table_row row = {{}, {}, line.substr(0, line.find(':'))};
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

double error_of_row(const routine& tested, const table_row& row) {
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

} // namespace

std::vector<table_row> read_table(const std::string& folder, const routine& tested) {
    const std::string path =
        METRIFY_SOURCE_DIR "/tests/numerics/" + folder + "/" + std::string(tested.name) + ".txt";
    std::ifstream in(path);
    EXPECT_TRUE(in.is_open()) << path;
    std::vector<table_row> rows;
    for (std::string line; std::getline(in, line);)
        if (!line.starts_with("#"))
            rows.push_back(parse_row(tested, line));
    return rows;
}

largest_error compare_with_table(const routine& tested, const std::vector<table_row>& rows) {
    largest_error largest = {-1.0, {}};
    for (const table_row& row : rows) {
        const double error = error_of_row(tested, row);
        if (error > largest.error)
            largest = {error, row.text};
    }
    return largest;
}

} // namespace metrify::test
