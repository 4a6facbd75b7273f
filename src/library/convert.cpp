// The two cells of the worksheet function.

#include "conversion/conversion.h"
#include "library/call.h"
#include "machine/calculator.h"

#include <limits>
#include <memory>
#include <string>

using namespace metrify;
using namespace metrify::library;

struct metrify_cells {
    metrify_kind kind = METRIFY_KIND_EMPTY;
    double number = std::numeric_limits<double>::quiet_NaN();
    std::string text;
};

namespace {

metrify_cells cells_of(const conversion& answer) {
    switch (answer.outcome) {
    case conversion_outcome::converted:
        return {METRIFY_KIND_NUMBER, answer.number, std::string(answer.text)};
    case conversion_outcome::error:
        return {METRIFY_KIND_ERROR, std::numeric_limits<double>::quiet_NaN(), std::string(answer.text)};
    case conversion_outcome::unmarked:
        break;
    }
    return {};
}

} // namespace

metrify_status metrify_convert(double value, const char* in_units, size_t in_size, const char* out_units,
                               size_t out_size, metrify_cells** cells) {
    return guarded([&] {
        if (cells == nullptr)
            return fail(METRIFY_BAD_ARGUMENT, null_result);
        *cells = nullptr;
        const argument in = check_text(in_units, in_size);
        const argument out = check_text(out_units, out_size);
        if (!in.fault.empty() || !out.fault.empty())
            return fail(METRIFY_BAD_ARGUMENT, in.fault.empty() ? out.fault : in.fault);
        conversion answer;
        if (!convert_plain_units(value, in.text, out.text, answer)) {
            // Its own calculator, so that no conversion depends on an earlier one.
            calculator used;
            const calculator_scope scope(used);
            answer = convert_units_by_line(value, in.text, out.text);
        }
        *cells = std::make_unique<metrify_cells>(cells_of(answer)).release();
        return succeed();
    });
}

metrify_kind metrify_cells_kind(const metrify_cells* cells) {
    return cells != nullptr ? cells->kind : METRIFY_KIND_EMPTY;
}

double metrify_cells_number(const metrify_cells* cells) {
    return cells != nullptr ? cells->number : std::numeric_limits<double>::quiet_NaN();
}

const char* metrify_cells_text(const metrify_cells* cells) {
    return cells != nullptr ? cells->text.c_str() : "";
}

size_t metrify_cells_text_size(const metrify_cells* cells) {
    return cells != nullptr ? cells->text.size() : 0;
}

void metrify_cells_free(metrify_cells* cells) {
    const std::unique_ptr<metrify_cells> owner(cells);
}
