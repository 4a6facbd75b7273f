#include "cli/lookup/names.h"

#include "base/cursor.h"
#include "functions/function_help.h"
#include "machine/calculator.h"
#include "units/unit_lookup.h"
#include "units/unit_table.h"

#include <algorithm>

namespace metrify {

bool is_unit_name(std::string_view name) {
    const std::string terminated(name);
    cursor expptr(terminated.c_str());
    dim_value ignored;
    return !name.empty() && !is_blank(name.front()) && lookup_unit(expptr, ignored) && at_text_end(expptr);
}

bool is_function_name(std::string_view name) {
    return find_function_help(name) != nullptr;
}

bool is_variable_name(std::string_view name) {
    return find_var(name) != nullptr;
}

std::vector<std::string> unit_names() {
    std::vector<std::string> names;
    for (const unit_entry& unit : all_units())
        names.emplace_back(unit.name);
    named_list<user_unit>& own = current_unit_state().user_units.units;
    for (std::size_t i = 0; i < own.size(); ++i)
        names.push_back(own[i].name);
    return names;
}

std::vector<std::string> function_names() {
    std::vector<std::string> names;
    for (const function_row& row : all_functions())
        names.emplace_back(row.name);
    return names;
}

bool equal_nocase(std::string_view a, std::string_view b) {
    return a.size() == b.size() && contains_nocase(a, b);
}

bool contains_nocase(std::string_view text, std::string_view part) {
    return std::search(
               text.begin(), text.end(), part.begin(), part.end(),
               [](char a, char b) { return fold_case(a) == fold_case(b); }) != text.end();
}

std::size_t edit_distance(std::string_view a, std::string_view b) {
    // Three rows of the table of distances between beginnings of a and b.
    std::vector<std::size_t> before_last(b.size() + 1);
    std::vector<std::size_t> last(b.size() + 1);
    std::vector<std::size_t> row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j)
        last[j] = j;
    const auto same = [&](std::size_t i, std::size_t j) { return fold_case(a[i]) == fold_case(b[j]); };
    for (std::size_t i = 1; i <= a.size(); ++i) {
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t replaced = last[j - 1] + (same(i - 1, j - 1) ? 0 : 1);
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, replaced});
            if (i > 1 && j > 1 && same(i - 1, j - 2) && same(i - 2, j - 1))
                row[j] = std::min(row[j], before_last[j - 2] + 1);
        }
        before_last.swap(last);
        last.swap(row);
    }
    return last[b.size()];
}

std::vector<std::string> nearest_names(std::string_view text, const std::vector<std::string>& names) {
    constexpr std::size_t most = 3;
    constexpr std::size_t least_beginning = 4; // letters that are compared with the beginning of a name
    const std::size_t limit = text.size() / 3;
    struct candidate {
        std::size_t distance;
        std::size_t length;
        std::string name;
    };
    std::vector<candidate> found;
    for (const std::string& name : names) {
        const bool is_beginning = text.size() >= least_beginning && name.size() > text.size() + 1;
        const std::string_view compared =
            std::string_view(name).substr(0, is_beginning ? text.size() + 1 : name.size());
        if (const std::size_t distance = edit_distance(text, compared); distance <= limit)
            found.push_back({distance, name.size(), name});
    }
    std::stable_sort(found.begin(), found.end(), [](const candidate& a, const candidate& b) {
        return std::pair(a.distance, a.length) < std::pair(b.distance, b.length);
    });
    std::vector<std::string> nearest;
    for (const candidate& one : found)
        if (nearest.size() < most && one.distance <= found.front().distance + 1)
            nearest.push_back(one.name);
    return nearest;
}

std::string quoted_list(const std::vector<std::string>& names) {
    std::string list;
    for (const std::string& name : names)
        list.append(list.empty() ? "`" : ", `").append(name).append("`");
    return list;
}

std::string quoted_for_shell(std::string_view argument) {
    constexpr std::string_view plain =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_./^%+-";
    if (!argument.empty() && argument.find_first_not_of(plain) == std::string::npos)
        return std::string(argument);
    return "'" + std::string(argument) + "'";
}

} // namespace metrify
