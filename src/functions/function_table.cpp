#include "functions/function_table.h"

#include "base/perfect_hash.h"
#include "functions/function_rows.h"

#include <algorithm>
#include <array>

namespace metrify {

namespace {

constexpr function_list make_called_functions() {
    function_list called = functions;
    for (function_row& row : called)
        static_cast<function_facts&>(row) = without_help(row);
    return called;
}

constexpr function_list called_functions = make_called_functions();

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
                           [](const function_row& row) { return row.number == 0; }),
              "each number from 1 on has a row");
static_assert(functions[function_Number - 1].name == "Number");
static_assert(functions[function_component - 1].name == "component");

} // namespace

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
    if (place == function_hash.none ||
        text_compare_nocase(called_functions[place].name, text_span(expptr, p)) != 0)
        return false;
    function = {called_functions[place].number, called_functions[place].except.mode};
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
        append(err, "ERROR:  Bad function number in call_func_by_number.\n");
        return;
    }
    const function_row& row = called_functions[static_cast<std::size_t>(number - 1)];
    const std::string_view name = row.name_in_count();
    if (row.takes_variables() && !can_run_block(name, count, ctx, err))
        return;
    if (!check_arg_count(name, !row.takes_variables(), row.arguments, count, ctx, err))
        return;
    row.run(count, ctx, err);
}

} // namespace metrify
