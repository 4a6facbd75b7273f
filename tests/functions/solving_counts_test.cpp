// The evaluations of a solving built-in, counted by the block itself, against the same method on plain
// doubles.

#include "base/number_text.h"
#include "language/driver.h"
#include "machine/solver_binding.h"
#include "tests/numerics/plain_methods.h"

#include <cmath>
#include <gtest/gtest.h>
#include <string>

namespace {

using namespace metrify;
using namespace metrify::test;

double number_behind(const std::string& text, const std::string& mark) {
    const std::size_t at = text.rfind(mark);
    double number = NAN;
    if (at != std::string::npos)
        read_double(text.c_str() + at + mark.size(), number);
    return number;
}

struct counted {
    int evaluations;
    std::string shown;

    double value(const std::string& name) const { return number_behind(shown, "       " + name + " = "); }
};

// The first run of the block and its listing are not evaluations of the method.
counted run(const std::string& block, const std::string& call) {
    teardown_solver_binding();
    const std::string program = "n = 0\nbegin\nn = n + 1\n" + block + "end\n" + call + "\n";
    counted result;
    result.shown = interpret_dimensional_input_lines(program.c_str()).view();
    result.evaluations = static_cast<int>(result.value("n")) - 2;
    EXPECT_EQ(result.shown.find("ERROR"), std::string::npos) << result.shown;
    return result;
}

void expect_near(double shown, double expected) {
    EXPECT_NEAR(shown, expected, 1e-5 * (1.0 + std::fabs(expected)));
}

struct one_number {
    const char* expression;
    double (*function)(double);
    double start;
};

std::string block_of(const one_number& problem) {
    number_buffer start;
    return "x = " + std::string(format_double(problem.start, start)) + "\ny = " + problem.expression + "\n";
}

TEST(counts, of_roots_of_one_variable) {
    const one_number problems[] = {
        {"x^3 - 2*x - 5", [](double x) { return std::pow(x, 3) - 2 * x - 5; }, 2},
        {"cos(x) - x", [](double x) { return std::cos(x) - x; }, 1},
        {"exp(x) - 100", [](double x) { return std::exp(x) - 100; }, 1},
        {"x^3 + x - 1e4", [](double x) { return std::pow(x, 3) + x - 1e4; }, 1},
        {"x^20 - 1", [](double x) { return std::pow(x, 20) - 1; }, 0.5},
        {"(x - 0.05)^9", [](double x) { return std::pow(x - 0.05, 9); }, 1},
        {"x - 13", [](double x) { return x - 13; }, 10},
        {"x - 16", [](double x) { return x - 16; }, 10},
        {"sqrt(x) - 5", [](double x) { return std::sqrt(x) - 5; }, 24},
        {"x*exp(x) - 3", [](double x) { return x * std::exp(x) - 3; }, -1},
    };
    for (const one_number& problem : problems) {
        const counted result = run(block_of(problem), "solve(y, x)");
        double x = problem.start;
        EXPECT_EQ(result.evaluations, plain_root(problem.function, x)) << problem.expression;
        expect_near(result.value("x"), x);
    }
}

TEST(counts, of_minima_of_one_variable) {
    const one_number problems[] = {
        {"(x - 3)^2 + 4", [](double x) { return std::pow(x - 3, 2) + 4; }, 2},
        {"(x - 1)^4", [](double x) { return std::pow(x - 1, 4); }, 2},
        {"abs(x - 1) + 1", [](double x) { return std::fabs(x - 1) + 1; }, 2},
        {"cos(x)", [](double x) { return std::cos(x); }, 2},
        {"exp(x) - 3*x", [](double x) { return std::exp(x) - 3 * x; }, 0},
        {"x^2 + 1/x^2", [](double x) { return std::pow(x, 2) + 1 / std::pow(x, 2); }, 30},
        {"7 + 0*x", [](double) { return 7.0; }, 5},
        {"(x - 1000)^2", [](double x) { return std::pow(x - 1000, 2); }, 1},
    };
    for (const one_number& problem : problems) {
        const counted result = run(block_of(problem), "fmin(y, x)");
        double x = problem.start;
        EXPECT_EQ(result.evaluations, plain_minimum(problem.function, x)) << problem.expression;
        expect_near(result.value("x"), x);
    }
}

TEST(counts, of_a_maximum_are_those_of_the_minimum_of_the_negated_function) {
    const counted result = run("x = 0.3\ny = x*exp(-x)\n", "fmax(y, x)");
    double x = 0.3;
    EXPECT_EQ(result.evaluations, plain_minimum([](double t) { return -(t * std::exp(-t)); }, x));
    expect_near(result.value("x"), x);
}

struct several_numbers {
    std::string block;
    std::string call;
    numbers start;
};

const several_numbers rosenbrock_minimum = {
    "a = -1.2\nb = 1\ny = 100*(b - a^2)^2 + (1 - a)^2\n", "fmin(y, a, b)", {-1.2, 1}};
const several_numbers beale_minimum = {
    "a = 1\nb = 1\ny = (1.5 - a*(1 - b))^2 + (2.25 - a*(1 - b^2))^2 + (2.625 - a*(1 - b^3))^2\n",
    "fmin(y, a, b)",
    {1, 1}};

void expect_counts_of_minimum(const several_numbers& problem, const value_function& f) {
    const counted result = run(problem.block, problem.call);
    numbers x = problem.start;
    EXPECT_EQ(result.evaluations, plain_powell(f, x)) << problem.block;
    expect_near(result.value("a"), x[0]);
    expect_near(result.value("b"), x[1]);
}

TEST(counts, of_minima_of_several_variables) {
    expect_counts_of_minimum(
        rosenbrock_minimum,
        [](const numbers& x) { return 100 * std::pow(x[1] - std::pow(x[0], 2), 2) + std::pow(1 - x[0], 2); });
    expect_counts_of_minimum(beale_minimum, [](const numbers& x) {
        return std::pow(1.5 - x[0] * (1 - x[1]), 2) + std::pow(2.25 - x[0] * (1 - std::pow(x[1], 2)), 2) +
               std::pow(2.625 - x[0] * (1 - std::pow(x[1], 3)), 2);
    });
}

// The decision for a new direction depends on differences of values: those below zero count like others.
TEST(counts, of_a_minimum_below_zero) {
    expect_counts_of_minimum(
        {"a = -1.2\nb = 1\ny = 100*(b - a^2)^2 + (1 - a)^2 - 1\n", "fmin(y, a, b)", {-1.2, 1}},
        [](const numbers& x) {
            return 100 * std::pow(x[1] - std::pow(x[0], 2), 2) + std::pow(1 - x[0], 2) - 1;
        });
}

// The plain method updates the Jacobian and not its factors, so the two agree up to rounding.
void expect_counts_of_system(const several_numbers& problem, const system_function& f) {
    const counted result = run(problem.block, problem.call);
    numbers x = problem.start;
    bool good = false;
    EXPECT_EQ(result.evaluations, plain_broydn(f, x, good)) << problem.block;
    EXPECT_TRUE(good);
    expect_near(result.value("a"), x[0]);
    expect_near(result.value("b"), x[1]);
}

TEST(counts, of_systems) {
    expect_counts_of_system(
        {"a = 1\nb = 1\nf1 = a^2 + b^2 - 4\nf2 = b - a^2 + 1\n", "solve(f1, f2, a, b)", {1, 1}},
        [](const numbers& x) {
            return numbers{std::pow(x[0], 2) + std::pow(x[1], 2) - 4, x[1] - std::pow(x[0], 2) + 1};
        });
    expect_counts_of_system(
        {"a = -1.2\nb = 1\nf1 = 10*(b - a^2)\nf2 = 1 - a\n", "solve(f1, f2, a, b)", {-1.2, 1}},
        [](const numbers& x) {
            return numbers{10 * (x[1] - std::pow(x[0], 2)), 1 - x[0]};
        });
    expect_counts_of_system(
        {"a = 2\nb = 3\nf1 = a*b - 12\nf2 = exp(a/3) - b\n", "solve(f1, f2, a, b)", {2, 3}},
        [](const numbers& x) {
            return numbers{x[0] * x[1] - 12, std::exp(x[0] / 3) - x[1]};
        });
}

TEST(counts, of_a_system_that_only_the_last_attempt_solves) {
    // The Jacobian has a column of zeros, which ends Broyden's method after the start and two differences.
    // The step of Newton's method leads to a negative number, whose logarithm has no value, so that it ends
    // after one evaluation more. In logarithms that step leads to the root at once.
    const counted result =
        run("a = 100\nb = 1\nf1 = ln(a) - 1\nf2 = 2*ln(a) - 2 + 0*b\n", "solve(f1, f2, a, b)");
    EXPECT_EQ(result.evaluations, 3 + 4 + 3 + 4);
    EXPECT_NEAR(result.value("a"), std::exp(1.0), 1e-5);
    EXPECT_EQ(result.value("b"), 1.0);
}

TEST(counts, of_a_second_attempt_at_a_start_of_zero_are_those_of_the_first) {
    teardown_solver_binding();
    // No change of sign until the function overflows, where both directions are abandoned.
    const std::string block = "n = 0\nbegin\nn = n + 1\nx = 0\ny = x^2 + 1\nend\nsolve(y, x)\n";
    const std::string shown(interpret_dimensional_input_lines((block + "n").c_str()).view());
    int walked = 1; // the start
    double dx = 0.1;
    for (double x = dx;; dx *= 2, x += dx) {
        walked += 2;
        if (std::isinf(std::pow(x, 2)))
            break;
    }
    EXPECT_EQ(number_behind(shown, "       n = "), 1 + 2 * walked + 1);
}

TEST(counts, of_a_maximum_of_several_variables_show_its_second_attempt) {
    const std::string block = "n = 0\nbegin\nn = n + 1\na = 1\nb = 1\nz = -1e308 * 10\ny = z - z\nend\n";
    const auto evaluations = [&](const std::string& call) {
        const std::string shown(interpret_dimensional_input_lines((block + call + "\nn\n").c_str()).view());
        EXPECT_NE(shown.find("ERROR:  Too many iterations.\n"), std::string::npos);
        return number_behind(shown, "\n        = ") - 1;
    };
    teardown_solver_binding();
    const double once = evaluations("fmin(y, a, b)");
    EXPECT_GT(once, 1000.0);
    EXPECT_EQ(evaluations("fmax(y, a, b)"), 2.0 * once);
}

} // namespace
