// Messages of the methods that no listing shows, since the next attempt clears or replaces them. Each has a
// golden program whose solving line causes it; here only that attempt is made.

#include "base/cursor.h"
#include "language/driver.h"
#include "machine/func_block.h"
#include "machine/solver_binding.h"
#include "machine/variables.h"
#include "numerics/solve/multi_dim_root.h"
#include "numerics/solve/one_dim_root.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <ostream>
#include <string>
#include <vector>

namespace {

using namespace metrify;

/// A solving line with all independents at their current values.
enum class attempt { bracketing, with_broydn, with_newt };

struct replaced_message {
    const char* program;
    attempt made;
    const char* text;
};

void PrintTo(const replaced_message& message, std::ostream* out) {
    *out << message.program << ": " << message.text;
}

constexpr replaced_message messages[] = {
    {"solve_errors/no_change_of_sign_in_all_steps", attempt::bracketing,
     "ERROR:  Max_it reached w/o sign change in bi_bracket_zero()\n"},
    {"solve_errors/narrower_than_the_first_steps", attempt::bracketing,
     "Cannot evaluate bracketing points (1)"},
    {"solve_errors/ends_on_both_sides", attempt::bracketing, "Cannot evaluate bracketing points (2)"},
    {"solve_errors/pole_is_no_root", attempt::bracketing,
     "ERROR:  Possible singularity in bi_bracket_zero()\n"},
    {"solve_errors/row_of_zeros", attempt::with_broydn, "ERROR:  Singular Jacobian in brodyn.\n"},
    {"solve_errors/row_of_zeros", attempt::with_newt, "ERROR:  Singular matrix in routine ludcmp.\n"},
    {"solve/column_of_zeros_goes_on_with_a_tiny_pivot", attempt::with_broydn,
     "ERROR:  Singular Jacobian in brodyn.\n"},
    {"solve/update_that_is_singular_leaves_it_to_the_next_method", attempt::with_broydn,
     "ERROR:  r singular in broydn.\n"},
    {"solve_errors/search_along_a_rising_slope", attempt::with_newt, "ERROR:  Roundoff problem in lnsrch.\n"},
    {"solve_errors/root_beyond_the_longest_steps", attempt::with_broydn,
     "ERROR:  MAXITS exceeded in broydn.\n"},
    {"solve_errors/root_beyond_the_longest_steps", attempt::with_newt, "ERROR:  MAXITS exceeded in newt\n"},
};

std::string read_program(const std::string& name) {
    std::ifstream in(std::string(METRIFY_SOURCE_DIR "/tests/listings/") + name + ".in");
    EXPECT_TRUE(in.is_open()) << name;
    return {std::istreambuf_iterator<char>(in), {}};
}

/// The names in a line such as "solve(f, k, x, y)".
std::vector<std::string> arguments_of(const std::string& line) {
    std::vector<std::string> names(1);
    for (const char c : line.substr(line.find('(') + 1)) {
        if (c == ')')
            break;
        if (c == ',')
            names.emplace_back();
        else if (c != ' ')
            names.back() += c;
    }
    return names;
}

packed_reference reference(const std::string& name) {
    const var_entry* entry = find_var(name);
    EXPECT_NE(entry, nullptr) << name;
    return {entry == nullptr ? 0 : static_cast<std::int32_t>(entry->number), 0};
}

class replaced_message_of : public testing::TestWithParam<replaced_message> {
  protected:
    replaced_message_of() { forget(); }
    ~replaced_message_of() override { forget(); }

    /// Runs the program up to its solving line and binds that line's variables.
    void run_up_to_the_attempt() {
        const std::size_t solving_line = program_.find("solve(");
        ASSERT_NE(solving_line, std::string::npos);
        const std::vector<std::string> names = arguments_of(program_.substr(solving_line));
        program_.resize(solving_line);
        work_text listing;
        run_lines("", cursor(program_.c_str()), listing.str, err_.str);
        const std::size_t pairs = names.size() / 2;
        allocate_solver_binding(pairs, pairs);
        for (std::size_t i = 0; i < pairs; ++i) {
            record_dependent(i, reference(names[i]));
            record_independent(i, reference(names[pairs + i]));
        }
        set_scale_modes(false, err_.str);
    }

    void make(attempt made) {
        bound_function& block = bound_block();
        std::uint32_t check = 0;
        if (made == attempt::bracketing) {
            double x0 = 0.0;
            block.read_solver_vector(&x0, err_.str);
            root_bracket found;
            bi_bracket_zero(block, x0, 0.1 * std::max(std::fabs(x0), 1.0), 600, 2.0, found, err_.str);
        } else {
            solve_multi_dim(block, check, made == attempt::with_broydn, err_.str);
        }
        EXPECT_EQ(check, 0U);
    }

    std::string program_ = read_program(GetParam().program);
    work_text err_;

  private:
    static void forget() {
        teardown_solver_binding();
        reset_func_block();
        free_all_vars();
    }
};

TEST_P(replaced_message_of, an_attempt_of_the_golden_program) {
    ASSERT_NO_FATAL_FAILURE(run_up_to_the_attempt());
    make(GetParam().made);
    EXPECT_EQ(err_.view(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(messages, replaced_message_of, testing::ValuesIn(messages));

} // namespace
