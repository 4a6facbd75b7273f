#pragma once

// The rows of all built-in functions, gathered from the tables of their families.

#include "functions/constants.h"
#include "functions/function_table.h"
#include "functions/scalar_functions.h"
#include "functions/solving_functions.h"
#include "functions/special_functions.h"
#include "functions/vector_functions.h"

#include <array>
#include <iterator>
#include <utility>

namespace metrify {

constexpr std::size_t function_count = 89;

template <const auto& table>
using rows_of = std::make_index_sequence<std::size(table)>;

/// The facts that a call needs. The texts for users stay out of the programs that only call.
constexpr function_facts without_help(function_facts facts) {
    facts.argument_names = facts.what = facts.takes = facts.gives = facts.domain = facts.example =
        facts.answer = {};
    return facts;
}

template <class Row>
constexpr Row for_call(Row row) {
    row.about = without_help(row.about);
    return row;
}

/// Calls the routine of a table's row without a search.
template <const auto& table, std::size_t row>
constexpr builtin routine_of() {
    if constexpr (requires { table[row].run; })
        return table[row].run;
    else
        return [](std::int32_t, compile_ctx& ctx, text_str*& err) {
            static constexpr auto called = for_call(table[row]);
            run_function(called, ctx, err);
        };
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

} // namespace metrify
