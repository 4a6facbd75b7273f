// The tables of units and functions, with terminated texts.

#include "base/build_settings.h"
#include "base/cursor.h"
#include "functions/function_help.h"
#include "library/call.h"
#include "machine/calculator.h"
#include "units/unit_expression.h"
#include "units/unit_table.h"

#include <algorithm>
#include <array>
#include <deque>
#include <iterator>
#include <string>
#include <vector>

using namespace metrify;
using namespace metrify::library;

static_assert(METRIFY_DIMENSIONS == exponents::size());

namespace {

constexpr std::string_view index_is_too_large = "the index is too large";

// Texts keep their addresses.
class text_pool {
  public:
    const char* add(std::string_view text) { return texts_.emplace_back(text).c_str(); }

  private:
    std::deque<std::string> texts_;
};

struct unit_records {
    text_pool texts;
    std::vector<metrify_unit> units;
};

struct function_records {
    text_pool texts;
    std::vector<metrify_function> functions;
};

// The unit table has no offsets: the unit expression adds them.
double offset_of(const char* name) {
    cursor expptr(name);
    unit_scale scale;
    work_text err;
    parse_unit_expression(expptr, scale, err.str);
    return scale.offset;
}

unit_records make_units() {
    calculator without_user_units;
    const calculator_scope scope(without_user_units);
    unit_records records;
    for (const unit_entry& entry : all_units()) {
        const char* name = records.texts.add(entry.name);
        metrify_unit unit = {name, entry.factor, offset_of(name), {}};
        std::copy(entry.dim.begin(), entry.dim.end(), std::begin(unit.exponents));
        records.units.push_back(unit);
    }
    return records;
}

function_records make_functions() {
    function_records records;
    text_pool& texts = records.texts;
    for (const help_chapter& chapter : function_help()) {
        const char* title = texts.add(chapter.title);
        for (const function_row* row : chapter.functions)
            records.functions.push_back({texts.add(row->name), texts.add(row->argument_names), title,
                                         texts.add(row->what), texts.add(row->takes), texts.add(row->gives),
                                         texts.add(row->domain), texts.add(row->example),
                                         texts.add(row->answer)});
    }
    return records;
}

const std::vector<metrify_unit>& units() {
    static const unit_records records = make_units();
    return records.units;
}

const std::vector<metrify_function>& functions() {
    static const function_records records = make_functions();
    return records.functions;
}

template <class Record>
metrify_status copy_row(const std::vector<Record>& rows, std::size_t index, Record* found) {
    if (index >= rows.size())
        return fail(METRIFY_BAD_ARGUMENT, index_is_too_large);
    *found = rows[index];
    return succeed();
}

// Copies the first row for which the test is true.
template <class Record, class Test>
metrify_status copy_found(const std::vector<Record>& rows, std::string_view what, std::string_view name,
                          Record* found, Test test) {
    const auto row = std::find_if(rows.begin(), rows.end(), test);
    if (row == rows.end())
        return fail(METRIFY_BAD_ARGUMENT, std::string(what).append(name).append("'"));
    *found = *row;
    return succeed();
}

} // namespace

const char* metrify_version() {
    return version.data();
}

const char* metrify_dimension_name(size_t dimension) {
    static constexpr std::array<const char*, METRIFY_DIMENSIONS> names = {"rad",  "s",   "kg",       "m",
                                                                          "degK", "mol", "degKdiff", "C"};
    return dimension < names.size() ? names[dimension] : nullptr;
}

size_t metrify_unit_count() {
    return all_units().size();
}

metrify_status metrify_unit_at(size_t index, metrify_unit* unit) {
    return guarded([&] {
        return unit != nullptr ? copy_row(units(), index, unit) : fail(METRIFY_BAD_ARGUMENT, null_result);
    });
}

metrify_status metrify_unit_find(const char* name, size_t size, metrify_unit* unit) {
    return guarded([&] {
        const argument text = check_text(name, size);
        if (unit == nullptr || !text.fault.empty())
            return fail(METRIFY_BAD_ARGUMENT, unit == nullptr ? null_result : text.fault);
        return copy_found(
            units(), "there is no unit '", text.text, unit,
            [&](const metrify_unit& row) { return text.text == row.name; });
    });
}

size_t metrify_function_count() {
    return all_functions().size();
}

metrify_status metrify_function_at(size_t index, metrify_function* function) {
    return guarded([&] {
        return function != nullptr ? copy_row(functions(), index, function)
                                   : fail(METRIFY_BAD_ARGUMENT, null_result);
    });
}

metrify_status metrify_function_find(const char* name, size_t size, metrify_function* function) {
    return guarded([&] {
        const argument text = check_text(name, size);
        if (function == nullptr || !text.fault.empty())
            return fail(METRIFY_BAD_ARGUMENT, function == nullptr ? null_result : text.fault);
        return copy_found(
            functions(), "there is no function '", text.text, function,
            [&](const metrify_function& row) { return text_compare_nocase(row.name, text.text) == 0; });
    });
}
