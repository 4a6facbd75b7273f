#include "functions/function_table.h"

#include "base/perfect_hash.h"
#include "functions/constants.h"
#include "functions/scalar_functions.h"
#include "functions/solving_functions.h"
#include "functions/special_functions.h"
#include "functions/vector_functions.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

namespace metrify {

namespace {

constexpr std::size_t function_count = 89;

template <const auto& table>
using rows_of = std::make_index_sequence<std::size(table)>;

/// Calls the routine of a table's row without a search.
template <const auto& table, std::size_t row>
constexpr builtin routine_of() {
    if constexpr (requires { table[row].run; })
        return table[row].run;
    else
        return [](std::int32_t, compile_ctx& ctx, text_str*& err) { run_function(table[row], ctx, err); };
}

template <const auto& table, std::size_t... row>
constexpr function_row* append_rows(function_row* next, std::index_sequence<row...>) {
    ((*next++ = {table[row].about, routine_of<table, row>()}), ...);
    return next;
}

using function_list = std::array<function_row, function_count>;

/// All rows, table after table.
template <const auto&... tables>
constexpr function_list joined() {
    static_assert((std::size(tables) + ...) == function_count);
    function_list rows = {};
    function_row* next = rows.data();
    ((next = append_rows<tables>(next, rows_of<tables>())), ...);
    return rows;
}

constexpr function_list functions_by_table =
    joined<formulas, scalar_functions, vector_functions, constants, solving_functions, special_functions>();

/// The numbers run in alphabetical order without regard to case; the six inverse hyperbolic functions come
/// last.
constexpr function_list make_functions() {
    function_list functions = {};
    for (const function_row& row : functions_by_table)
        functions.at(static_cast<std::size_t>(row.number - 1)) = row;
    return functions;
}

constexpr function_list functions = make_functions();

constexpr std::uint64_t folded_hash(std::string_view name) {
    std::uint64_t hash = name_hash_seed;
    for (const char c : name)
        hash = add_to_name_hash(hash, fold_case(c));
    return hash;
}

constexpr std::array<std::uint64_t, function_count> make_hashes() {
    std::array<std::uint64_t, function_count> hashes = {};
    std::transform(functions.begin(), functions.end(), hashes.begin(),
                   [](const function_row& row) { return folded_hash(row.name); });
    return hashes;
}

constexpr perfect_hash<function_count, 256, 64> function_hash(make_hashes());

constexpr std::size_t longest_name =
    std::max_element(
        functions.begin(), functions.end(),
        [](const function_row& a, const function_row& b) { return a.name.size() < b.name.size(); })
        ->name.size();

static_assert(std::none_of(functions.begin(), functions.end(),
                           [](const function_row& row) { return row.run == nullptr; }),
              "each number from 1 on has a row");
static_assert(functions[function_Number - 1].name == "Number");
static_assert(functions[function_component - 1].name == "component");

} // namespace

std::span<const function_row> all_functions() {
    return functions;
}

std::vector<const function_row*> functions_in(family chapter) {
    std::vector<const function_row*> rows;
    for (const function_row& row : functions_by_table)
        if (row.chapter == chapter)
            rows.push_back(&row);
    return rows;
}

bool lookup_function(cursor& expptr, function_ref& function) {
    cursor p = expptr;
    if (!is_mnemonic(false, p))
        return false;
    std::uint64_t hash = name_hash_seed;
    while (is_name_char(*p) && !at_stop_pointer(p)) {
        hash = add_to_name_hash(hash, fold_case(*p));
        ++p.at;
        if (text_span(expptr, p).size() > longest_name)
            return false;
    }
    const std::uint16_t place = function_hash.find(hash);
    if (place == function_hash.none || text_compare_nocase(functions[place].name, text_span(expptr, p)) != 0)
        return false;
    function = {functions[place].number, functions[place].except.mode};
    expptr = p;
    return true;
}

bool is_function_name(bool advance, cursor& expptr) {
    const cursor entry = expptr;
    skip_blanks_and_comments(expptr);
    function_ref function;
    const bool found = lookup_function(expptr, function);
    if (!found || !advance)
        expptr = entry;
    return found;
}

void call_func_by_number(std::int32_t number, std::int32_t, std::int32_t count, compile_ctx& ctx,
                         text_str*& err) {
    if (number < 1 || number > static_cast<std::int32_t>(function_count)) {
        err = str_append_text(&err, "ERROR:  Bad function number in call_func_by_number.\n");
        return;
    }
    const function_row& row = functions[static_cast<std::size_t>(number - 1)];
    const std::string_view name = row.name_in_count();
    if (row.takes_variables() && !can_run_block(name, count, ctx, err))
        return;
    if (!check_arg_count(name, !row.takes_variables(), row.arguments, count, ctx, err))
        return;
    row.run(count, ctx, err);
}

} // namespace metrify
