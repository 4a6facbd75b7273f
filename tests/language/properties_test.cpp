// Properties of all programs, units and exponents, tested on a large number of them.

#include "base/cursor.h"
#include "base/number_text.h"
#include "language/assignment.h"
#include "machine/evaluator.h"
#include "machine/operators.h"
#include "machine/solver_binding.h"
#include "tests/testing.h"
#include "units/unit_expression.h"
#include "units/unit_rendering.h"
#include "units/unit_system.h"
#include "units/unit_table.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace metrify;
namespace fs = std::filesystem;

// The golden programs, as a sample of everything that can be written.
std::vector<std::string> programs() {
    std::vector<fs::path> paths;
    for (const fs::directory_entry& entry :
         fs::recursive_directory_iterator(fs::path(METRIFY_SOURCE_DIR) / "tests" / "listings"))
        if (entry.path().extension() == ".in")
            paths.push_back(entry.path());
    std::sort(paths.begin(), paths.end());
    std::vector<std::string> texts;
    for (const fs::path& path : paths) {
        std::ifstream in(path, std::ios::binary);
        texts.emplace_back(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }
    return texts;
}

bool contains(const std::string& text, std::string_view part) {
    return text.find(part) != std::string::npos;
}

std::string replaced(std::string text, const std::string& part, const std::string& by) {
    const std::size_t at = text.find(part);
    return at == std::string::npos ? text : text.replace(at, part.size(), by);
}

// Lines that neither affect later lines nor depend on earlier ones.
bool stands_alone(const std::string& line) {
    for (const char* mark : {"=", "#", "\\"})
        if (contains(line, mark))
            return false;
    std::string word;
    std::istringstream(line) >> word;
    word = word.substr(0, word.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"));
    std::transform(word.begin(), word.end(), word.begin(), fold_case);
    for (const char* keyword : {"mks", "fps", "ips", "cgs", "defunit", "begin", "end", "printfunc"})
        if (word == keyword)
            return false;
    return !contains(run(line), "check nesting"); // which remains for the rest of a run
}

std::vector<std::string> lines_standing_alone() {
    std::vector<std::string> lines;
    for (const std::string& program : programs()) {
        std::istringstream in(program);
        for (std::string line; std::getline(in, line);)
            if (stands_alone(line))
                lines.push_back(line);
    }
    return lines;
}

TEST(any_program, lists_independent_lines_as_if_each_ran_alone) {
    const std::vector<std::string> lines = lines_standing_alone();
    EXPECT_GT(lines.size(), 500u);
    std::string together;
    std::string apart;
    int number = 1;
    for (const std::string& line : lines) {
        together += line + "\n";
        apart += replaced(run(line), "[  1 ] ", "[  " + std::to_string(number) + " ] ");
        if (contains(run(line + "\n1"), "[  2 ] 1\n")) // the line has used its number
            ++number;
    }
    EXPECT_EQ(run(together), apart);
}

// Without a pending report of another program.
std::string run_afresh(const std::string& program) {
    teardown_solver_binding();
    return run(program);
}

TEST(any_program, begins_its_listing_with_the_listing_of_its_first_lines) {
    int cuts = 0;
    for (const std::string& program : programs()) {
        const std::string whole = run_afresh(program);
        for (std::size_t end = program.find('\n'); end != std::string::npos;
             end = program.find('\n', end + 1)) {
            const std::size_t next = program.find_first_not_of(" \t", end + 1);
            const bool comment_goes_on = next != std::string::npos && program[next] == '#';
            const std::size_t line = program.rfind('\n', end == 0 ? 0 : end - 1) + 1;
            const bool line_goes_on = line < end && contains(program.substr(line, end - line), "\\");
            if (comment_goes_on || line_goes_on)
                continue;
            ++cuts;
            const std::string first = run_afresh(program.substr(0, end));
            EXPECT_EQ(whole.substr(0, first.size()), first) << program;
        }
    }
    EXPECT_GT(cuts, 1000);
}

TEST(any_program, has_the_same_listing_as_in_a_new_thread) {
    const std::vector<std::string> all = programs();
    std::vector<std::string> fresh(all.size());
    for (std::size_t i = 0; i < all.size(); ++i)
        std::thread([&fresh, &all, i] { fresh[i] = run(all[i]); }).join();
    for (std::size_t i = all.size(); i-- > 0;)
        EXPECT_EQ(run(all[i]), fresh[i]) << all[i];
    for (std::size_t i = 0; i < all.size(); ++i)
        EXPECT_EQ(run(all[i]), fresh[i]) << all[i];
}

// The listing of a one-line program after the echo.
std::string answer_after(const std::string& echo) {
    const std::string shown = run(echo);
    const std::string head = "[  1 ] " + echo + "\n";
    EXPECT_EQ(shown.substr(0, head.size()), head);
    return shown.substr(head.size());
}

TEST(any_line, means_the_same_with_blanks_comments_and_continuations_around_it) {
    int count = 0;
    for (const std::string& line : lines_standing_alone()) {
        if (line.find_first_not_of(" \t") == std::string::npos)
            continue;
        const std::string answer = answer_after(line);
        // Messages and requests quote their text.
        if (contains(answer, "ERROR") || contains(line, ";"))
            continue;
        ++count;
        for (const std::string& other :
             {" \t" + line, line + " \t ", line + "# note", line + " # a ; note", "\\\n" + line,
              line + "\\ ignored\n", line + ";", line + " ; # note"})
            EXPECT_EQ(answer_after(other), answer) << other;
    }
    EXPECT_GT(count, 200);
}

TEST(any_line, has_the_same_value_when_it_is_replayed) {
    int count = 0;
    for (const std::string& line : lines_standing_alone()) {
        code_list code;
        work_text err;
        dim_value read;
        cursor p(line.c_str());
        run(""); // empties the stores
        if (!compile_input_line(p, read, &code, err.str))
            continue;
        ++count;
        dim_value replayed;
        eval_compiled_stck(replayed, code, err.str);
        EXPECT_EQ(err.view(), "") << line;
        EXPECT_EQ(described(replayed), described(read))
            << line; // compared as text, as it may be a not-a-number
    }
    EXPECT_GT(count, 200);
}

// Units.

double number_of(const std::string& text) {
    double number = 0.0;
    read_double(text.c_str(), number);
    return number;
}

std::string converted(const std::string& number, const std::string& from, const std::string& to) {
    const std::string shown = run(number + " " + from + "; " + to);
    EXPECT_TRUE(contains(shown, " = ")) << shown;
    EXPECT_FALSE(contains(shown, "ERROR")) << shown;
    const std::size_t begin = shown.rfind('=') + 2;
    return shown.substr(begin, shown.find(' ', begin) - begin);
}

TEST(every_pair_of_units, of_one_dimension_converts_back_and_forth) {
    int pairs = 0;
    for (const unit_entry& from : all_units()) {
        for (const unit_entry& to : all_units()) {
            if (from.dim != to.dim)
                continue;
            ++pairs;
            const std::string there = converted("7", std::string(from.name), std::string(to.name));
            const std::string back = converted(there, std::string(to.name), std::string(from.name));
            // Answers have six digits; for temperatures, relative to absolute zero.
            const double size = from.dim == in_degK ? 1000 : 7;
            EXPECT_NEAR(number_of(back), 7, 1.1e-5 * size) << from.name << " " << to.name;
        }
    }
    EXPECT_GT(pairs, 4000);
}

// `7 ft` shown in a system, without the equals sign: `2.1336 m`.
std::string shown_in(const std::string& value, const std::string& system) {
    const std::string shown = run(value + "; " + system);
    EXPECT_FALSE(contains(shown, "ERROR")) << shown;
    const std::size_t begin = shown.rfind('=') + 2;
    return shown.substr(begin, shown.find('\n', begin) - begin);
}

TEST(every_unit, has_the_same_value_in_each_system) {
    for (const unit_entry& unit : all_units()) {
        const std::string name(unit.name);
        for (const char* system : {"MKS", "cgs", "FPS", "IPS"}) {
            // These systems show a temperature difference in a unit that has an offset.
            if (unit.dim == in_degKdiff && system == std::string("IPS"))
                continue;
            const std::string shown = shown_in("7 " + name, system);
            const std::size_t blank = shown.find(' ');
            const std::string back = converted(shown.substr(0, blank), shown.substr(blank), name);
            const double size = unit.dim == in_degK ? 1000 : 7;
            EXPECT_NEAR(number_of(back), 7, 1.1e-5 * size) << name << " " << system << " " << shown;
        }
    }
}

// Exponents.

// Calls act for every combination of the exponents.
template <class Act>
void for_each_on_a_grid(Act act) {
    constexpr std::array<double, 4> steps = {0, 1, -0.5, -2};
    constexpr std::size_t combinations = 4 * 4 * 4 * 4 * 4 * 4 * 4 * 4;
    for (std::size_t n = 0; n < combinations; ++n) {
        exponents dim = {};
        std::size_t rest = n;
        for (double& exponent : dim) {
            exponent = steps[rest % steps.size()];
            rest /= steps.size();
        }
        act(dim);
    }
}

std::string rendered(unit_system system, const exponents& dim) {
    work_text text;
    work_text err;
    render_units(system, dim, text.str, err.str);
    EXPECT_EQ(err.view(), "");
    return std::string(text.view());
}

TEST(any_exponents, are_parsed_from_the_text_that_they_are_rendered_as) {
    for (const unit_system system : {system_MKS, system_cgs, system_FPS, system_IPS}) {
        for_each_on_a_grid([system](exponents dim) {
            if (system != system_MKS) // only MKS has a unit of temperature difference
                dim[dim_temperature_difference] = 0.0;
            const std::string text = rendered(system, dim);
            cursor p(text.c_str());
            unit_scale scale;
            work_text err;
            ASSERT_TRUE(parse_unit_expression(p, scale, err.str)) << text;
            ASSERT_EQ(*p, '\0') << text;
            ASSERT_EQ(err.view(), "") << text;
            ASSERT_EQ(scale.dim, dim) << text;
        });
    }
}

TEST(any_exponents, are_shown_as_they_are_typed) {
    constexpr std::array<const char*, 4> names = {"MKS", "cgs", "FPS", "IPS"};
    for (const unit_system system : {system_MKS, system_cgs, system_FPS, system_IPS}) {
        std::string program = names[system];
        int number = 1;
        std::string expected = run(program);
        for_each_on_a_grid([&](const exponents& dim) {
            if (system != system_MKS && dim[dim_temperature_difference] != 0.0)
                return;
            dim_value result = scalar(2, dim);
            normalize_dimensions(result);
            const std::string line = "2 " + rendered(system, dim);
            program += "\n" + line;
            expected += "[  " + std::to_string(++number) + " ] " + line + "\n        = 2 " +
                        rendered(system, result.dim) + "\n\n";
        });
        EXPECT_TRUE(run(program) == expected) << names[system];
    }
}

} // namespace
