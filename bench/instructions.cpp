// Runs one of the measured operations a number of times: NAME COUNT. A profiler that counts instructions
// gives the cost of one operation as the difference of two runs, which does not depend on other programs. See
// bench/instructions.

#include "bench/blocks.h"
#include "bench/bound_block.h"
#include "bench/floors.h"
#include "bench/growing_programs.h"
#include "bench/loaded_add_in.h"
#include "bench/searches.h"
#include "conversion/conversion.h"
#include "language/driver.h"

#include <charconv>
#include <cstdio>
#include <functional>
#include <map>
#include <string>
#include <thread>

namespace {

using metrify_bench::unit_pair;
using Operation = std::function<void(long)>;

// A conversion of the pairs in turn.
template <class Convert>
Operation turns(const auto& pairs, Convert convert) {
    return [&pairs, convert](long count) {
        for (long i = 0; i < count; ++i)
            convert(pairs[static_cast<std::size_t>(i) % std::size(pairs)]);
    };
}

void least_work(const unit_pair& p) {
    metrify_bench::floor_of_conversion(3.5, p);
}
void repeated(const unit_pair& p) {
    benchmark::DoNotOptimize(metrify::convert_units(3.5, p.from, p.to));
}
void by_line(const unit_pair& p) {
    benchmark::DoNotOptimize(metrify::convert_units_by_line(3.5, p.from, p.to));
}
// The blanks make the texts new ones.
void first(const unit_pair& p) {
    static long count = 0;
    std::string from = p.from;
    ++count;
    for (unsigned bit = 0; bit < 8; ++bit)
        from += ((count >> bit) & 1) != 0 ? ' ' : '\t';
    benchmark::DoNotOptimize(metrify::convert_units(3.5, from, p.to));
}

// On a separate thread, since one that has called the function keeps the module loaded until it ends.
void whole_calls(long count) {
    const metrify_bench::LoadedAddIn add_in;
    std::jthread([&] {
        for (long i = 0; i < count; ++i)
            add_in.Call(3.5, u"ft", u"m");
    }).join();
}
void floors_of_calls(long count) {
    for (long i = 0; i < count; ++i)
        metrify_bench::floor_of_call(3.5, u"ft", u"m");
}
void questions(long count) {
    metrify_bench::LoadedAddIn add_in;
    for (long i = 0; i < count; ++i)
        add_in.AskRelease();
}

// Evaluations of a block of so many statements.
Operation evaluations(std::size_t statements, bool has_units) {
    return [=](long count) {
        metrify::bound_function& f =
            metrify_bench::bind_x_and_y(metrify_bench::block_program(statements, has_units));
        metrify::work_text err;
        double x = 1.5;
        double y = 0.0;
        for (long i = 0; i < count; ++i)
            f.evaluate_function(&x, &y, err.str);
    };
}

// Searches of a system, or their evaluations alone.
Operation searches(std::size_t pairs, bool is_whole) {
    return [=](long count) {
        const metrify_bench::search problem = metrify_bench::solve_of(pairs);
        problem.bind();
        metrify::work_text err;
        metrify::save_start_values(err.str);
        metrify_bench::recorded_evaluations evaluations;
        problem.method(evaluations, err.str);
        for (long i = 0; i < count; ++i) {
            metrify::restore_start_values(err.str);
            if (is_whole)
                problem.method(metrify::bound_block(), err.str);
            else
                evaluations.repeat();
        }
    };
}

// One program of so many lines, after a short one whose first uses of everything are not counted. The texts
// alone are what the difference is formed with.
Operation growth(const metrify_bench::growing_program& kind, bool is_run) {
    return [&kind, is_run](long lines) {
        for (const long count : {10L, lines}) {
            const std::string text = kind.text(count);
            if (is_run || count != lines)
                benchmark::DoNotOptimize(metrify::interpret_dimensional_input_lines(text.c_str()));
        }
    };
}

std::map<std::string, Operation> operations = {
    {"floor_simple", turns(metrify_bench::simple_pairs, least_work)},
    {"floor_compound", turns(metrify_bench::compound_pairs, least_work)},
    {"repeated_simple", turns(metrify_bench::simple_pairs, repeated)},
    {"repeated_compound", turns(metrify_bench::compound_pairs, repeated)},
    {"first_simple", turns(metrify_bench::simple_pairs, first)},
    {"first_compound", turns(metrify_bench::compound_pairs, first)},
    {"by_line_simple", turns(metrify_bench::simple_pairs, by_line)},
    {"by_line_compound", turns(metrify_bench::compound_pairs, by_line)},
    {"whole_call", whole_calls},
    {"floor_call", floors_of_calls},
    {"question", questions},
    {"block_1", evaluations(1, false)},
    {"block_4", evaluations(4, false)},
    {"block_20", evaluations(20, false)},
    {"block_with_units_4", evaluations(4, true)},
    {"solve_2", searches(2, true)},
    {"solve_2_evaluations", searches(2, false)},
    {"solve_5", searches(5, true)},
    {"solve_5_evaluations", searches(5, false)},
};

} // namespace

int main(int argc, char** argv) {
    for (const metrify_bench::growing_program& kind : metrify_bench::growing_programs) {
        for (const bool is_run : {false, true})
            operations.emplace(std::string(is_run ? "growth_" : "text_").append(kind.name),
                               growth(kind, is_run));
    }
    long count = 0;
    if (argc == 3 && operations.contains(argv[1])) {
        const std::string_view text = argv[2];
        std::from_chars(text.data(), text.data() + text.size(), count);
        operations.at(argv[1])(count);
        return 0;
    }
    for (const auto& [name, operation] : operations)
        std::puts(name.c_str());
    return 2;
}
