// Published problems as programs of the language. A comment at the head of each gives its known solution
// and whether the methods find it:
//
//   # solution: EXPRESSION = NUMBER within TOLERANCE
//   # outcome: solved
//   # outcome: not solved: REASON
//
// If it is not solved, the comment also gives the message of the search, if any, and the final numbers. They
// are computed by an independent implementation of the methods, tests/numerics/show_ends.py:
//
//   # message: TEXT
//   # end: EXPRESSION = NUMBER within TOLERANCE

#include "base/number_text.h"
#include "language/driver.h"
#include "machine/solver_binding.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

const fs::path source_folder(METRIFY_SOURCE_DIR);

struct known_number {
    std::string expression, value, tolerance;
};

struct problem {
    std::string title, text, outcome, message;
    std::vector<known_number> solution, end;
};

std::string text_after(const std::string& line, const std::string& mark) {
    return line.starts_with(mark) ? line.substr(mark.size()) : std::string();
}

known_number read_solution(const std::string& text) {
    const std::size_t equals = text.rfind(" = ");
    const std::size_t within = text.rfind(" within ");
    return {text.substr(0, equals), text.substr(equals + 3, within - equals - 3), text.substr(within + 8)};
}

problem read_problem(const fs::path& path) {
    problem read;
    std::ifstream in(path, std::ios::binary);
    for (std::string line; std::getline(in, line);) {
        if (read.title.empty())
            read.title = text_after(line, "# ");
        if (const std::string solution = text_after(line, "# solution: "); !solution.empty())
            read.solution.push_back(read_solution(solution));
        if (const std::string outcome = text_after(line, "# outcome: "); !outcome.empty())
            read.outcome = outcome;
        if (const std::string end = text_after(line, "# end: "); !end.empty())
            read.end.push_back(read_solution(end));
        if (const std::string message = text_after(line, "# message: "); !message.empty())
            read.message = message;
        read.text += line + "\n";
    }
    return read;
}

std::vector<fs::path> problems() {
    std::vector<fs::path> found;
    for (const fs::directory_entry& entry : fs::directory_iterator(source_folder / "tests" / "problems"))
        found.push_back(entry.path());
    std::sort(found.begin(), found.end());
    return found;
}

std::string run(const std::string& program) {
    metrify::teardown_solver_binding();
    return std::string(metrify::interpret_dimensional_input_lines(program.c_str()).view());
}

// The difference between the expression and its known value, computed by the language. The line before it
// receives the report of a failed search.
double distance(const problem& at, const known_number& known) {
    const std::string shown =
        run(at.text + "0\ngap = abs((" + known.expression + ") - (" + known.value + "))\n");
    const std::size_t answer = shown.rfind("gap = ");
    double number = NAN;
    metrify::read_double(shown.c_str() + answer + 6, number);
    return number;
}

bool agrees(const problem& at, const std::vector<known_number>& numbers) {
    return std::all_of(
        numbers.begin(), numbers.end(),
        [&](const known_number& known) {
            double tolerance = 0.0;
            metrify::read_double(known.tolerance.c_str(), tolerance);
            return distance(at, known) <= tolerance;
        });
}

bool is_solved(const problem& at) {
    return run(at.text).find("ERROR") == std::string::npos && agrees(at, at.solution);
}

// The last message; a failed search shows only one.
std::string message_of(const std::string& shown) {
    const std::size_t at = shown.rfind("ERROR");
    return at == std::string::npos ? std::string() : shown.substr(at, shown.find('\n', at) - at);
}

class published_problem : public testing::TestWithParam<fs::path> {};

TEST_P(published_problem, has_the_recorded_outcome) {
    const problem at = read_problem(GetParam());
    ASSERT_FALSE(at.solution.empty());
    EXPECT_EQ(is_solved(at), at.outcome == "solved") << run(at.text);
    if (at.outcome != "solved") {
        EXPECT_THAT(at.outcome, testing::StartsWith("not solved: "));
        EXPECT_EQ(message_of(run(at.text)), at.message) << run(at.text);
        EXPECT_FALSE(at.end.empty());
        for (const known_number& known : at.end)
            EXPECT_TRUE(agrees(at, {known}))
                << known.expression << ": " << distance(at, known) << run(at.text);
    }
}

std::string test_name(const testing::TestParamInfo<fs::path>& file) {
    return file.param.stem().string();
}

INSTANTIATE_TEST_SUITE_P(problems, published_problem, testing::ValuesIn(problems()), test_name);

TEST(published_problems, are_in_the_table_for_users) {
    std::ifstream in(source_folder / "docs" / "problems.md", std::ios::binary);
    const std::string table{std::istreambuf_iterator<char>(in), {}};
    std::size_t solved = 0;
    for (const fs::path& path : problems()) {
        const problem at = read_problem(path);
        solved += at.outcome == "solved" ? 1 : 0;
        EXPECT_THAT(table, testing::HasSubstr("| " + path.stem().string() + " | " + at.title + " | " +
                                              at.outcome + " |"));
    }
    EXPECT_THAT(table, testing::HasSubstr(std::to_string(solved) + " of " +
                                          std::to_string(problems().size()) + " are solved"));
    EXPECT_GE(problems().size(), 30U);
}

} // namespace
