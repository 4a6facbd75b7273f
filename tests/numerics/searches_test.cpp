// Compares the searches for roots and minima with a table of their numbers of evaluations, last points (to
// the last bit) and texts. The program that makes the table is in this folder; it says which constant each
// line depends on.

#include "base/number_text.h"
#include "numerics/solve/minimise.h"
#include "numerics/solve/multi_dim_root.h"
#include "numerics/solve/one_dim_root.h"
#include "tests/numerics/plain_function.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace {

using namespace metrify;
using namespace metrify::test;

double number_of(const std::string& word) {
    if (word == "nan")
        return NAN;
    double number = 0.0;
    EXPECT_EQ(*read_double(word.c_str(), number), '\0') << word;
    return number;
}

point numbers_of(const std::string& text) {
    point found;
    std::istringstream in(text);
    for (std::string word; in >> word;)
        found.push_back(number_of(word));
    return found;
}

struct search {
    std::string name, method;
    double parameter;
    point start, last;
    std::size_t evaluations;
    std::string text, line;
};

search parse_search(const std::string& line) {
    std::vector<std::string> fields;
    std::istringstream in(line);
    for (std::string field; std::getline(in, field, '|');) {
        const std::size_t begin = std::min(field.find_first_not_of(' '), field.size());
        fields.push_back(field.substr(begin, field.find_last_not_of(' ') + 1 - begin));
    }
    search read = {};
    std::string parameter;
    std::istringstream(fields.at(0)) >> read.name >> parameter >> read.method;
    read.parameter = number_of(parameter);
    read.start = numbers_of(fields.at(1));
    read.evaluations = static_cast<std::size_t>(number_of(fields.at(2)));
    read.last = numbers_of(fields.at(3));
    read.text = fields.at(4);
    read.line = line;
    return read;
}

std::vector<search> searches() {
    std::ifstream in(METRIFY_SOURCE_DIR "/tests/numerics/stated/searches.txt");
    std::vector<search> found;
    for (std::string line; std::getline(in, line);)
        if (!line.starts_with("#"))
            found.push_back(parse_search(line));
    return found;
}

double power_64(double x) {
    for (int i = 0; i < 6; ++i)
        x = x * x;
    return x;
}

using formula = point (*)(const point& x, double c, std::size_t evaluation);

// As in make_searches.py, operation by operation: the results are the same bits everywhere.
const std::map<std::string, formula> formulas = {
    {"constant", [](const point&, double c, std::size_t) { return point{c}; }},
    {"line", [](const point& x, double c, std::size_t) { return point{c * x[0]}; }},
    {"cubic", [](const point& x, double c, std::size_t) { return point{x[0] * x[0] * x[0] - c}; }},
    {"bent", [](const point& x, double c,
                std::size_t) { return point{(x[0] - c) * (x[0] - c) * (1.0 + 0.1 * x[0]) + 1.0}; }},
    {"bent_twice",
     [](const point& x, double c, std::size_t) {
         return point{(x[0] - c) * (x[0] - c) * (1.0 + 0.1 * x[0] * x[0]) +
                      (x[1] - x[0]) * (x[1] - x[0]) * (1.0 + x[1] * x[1]) + 1.0};
     }},
    {"valley",
     [](const point& x, double c, std::size_t) {
         return point{c * (x[1] - x[0] * x[0]) * (x[1] - x[0] * x[0]) + (1.0 - x[0]) * (1.0 - x[0])};
     }},
    {"first_value_apart",
     [](const point&, double c, std::size_t evaluation) { return point{evaluation == 1 ? 1.0 + c : 1.0}; }},
    {"power_64",
     [](const point& x, double c, std::size_t) {
         return point{c * power_64(x[0]), c * power_64(x[1])};
     }},
    {"squares",
     [](const point& x, double c, std::size_t) {
         return point{c * x[0] * x[0], c * x[1] * x[1]};
     }},
    {"bump_at_origin",
     [](const point& x, double c, std::size_t) {
         const bool is_near = std::fabs(x[0]) < 0.5 && std::fabs(x[1]) < 0.5;
         return point{1024.0 * x[0] + (is_near ? c : 0.0), 1024.0 * x[1]};
     }},
    {"circle_and_parabola",
     [](const point& x, double c, std::size_t) {
         return point{x[0] * x[0] + x[1] * x[1] - c, x[1] - x[0] * x[0] + 1.0};
     }},
    {"valley_system",
     [](const point& x, double c, std::size_t) {
         return point{c * (x[1] - x[0] * x[0]), 1.0 - x[0]};
     }},
    {"three",
     [](const point& x, double c, std::size_t) {
         return point{x[0] * x[1] * x[2] - 6.0, x[0] + x[1] + x[2] - 6.0, x[0] * x[0] + x[1] * x[2] - c};
     }},
};

// The error text of the method; without one, for the methods of several variables, whether it succeeded.
std::string run(plain_function& f, const std::string& method) {
    work_text err;
    if (method == "root" || method == "minimum") {
        (method == "root" ? solve_one_dim : minimise)(f, err.str);
    } else {
        std::uint32_t check = 7;
        solve_multi_dim(f, check, method == "broydn", err.str);
        if (err.view().empty())
            return check == 1 ? "good" : "bad";
        EXPECT_EQ(check, 0U);
    }
    const std::string text(err.view());
    EXPECT_TRUE(text.empty() || text.ends_with('\n'));
    return text.substr(0, text.find('\n'));
}

TEST(searches, take_the_required_evaluations_to_the_required_point) {
    const std::vector<search> rows = searches();
    EXPECT_GE(rows.size(), 40U);
    for (const search& row : rows) {
        const bool is_system = row.method == "newt" || row.method == "broydn";
        std::size_t evaluation = 0;
        plain_function f(row.start, is_system ? row.start.size() : 1, [&](const point& x) {
            return formulas.at(row.name)(x, row.parameter, ++evaluation);
        });
        EXPECT_EQ(run(f, row.method), row.text) << row.line;
        EXPECT_EQ(f.evaluations(), row.evaluations) << row.line;
        EXPECT_EQ(f.points.back(), row.last) << row.line;
    }
}

} // namespace
