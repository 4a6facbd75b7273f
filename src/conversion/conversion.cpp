#include "conversion/conversion.h"

#include "base/number_text.h"
#include "base/short_decimals.h"
#include "base/text_str.h"
#include "conversion/known_conversions.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace metrify {

namespace {

// The first "=" of a result follows an indent and one more blank.
constexpr std::size_t indent_of_result = 8;

bool begins_with(std::string_view text, std::string_view beginning) {
    return text.substr(0, beginning.size()) == beginning;
}

// The number at the start of a terminated text, after blanks. Infinity and not-a-number are read as the
// listing writes them.
double leading_number(const char* text) {
    while (*text == ' ' || *text == '\t' || *text == '\n')
        ++text;
    double number = 0.0;
    if (read_double(text, number) != text)
        return number;
    const bool negative = *text == '-';
    const std::string_view word(negative ? text + 1 : text);
    if (begins_with(word, "inf"))
        number = std::numeric_limits<double>::infinity();
    else if (begins_with(word, "nan"))
        number = std::numeric_limits<double>::quiet_NaN();
    return negative ? -number : number;
}

// The first blank after the one that follows the "=" is replaced by an ampersand. The unit text begins after
// the first ampersand, which may be a typed one before that blank; the replaced blank is then part of the
// text.
std::string_view mark_unit_text(listing& answer, std::size_t result) {
    const std::string_view text = answer.view();
    const std::size_t blank = text.find(' ', result + 1);
    const std::size_t mark = std::min(blank, text.find('&', result));
    if (mark == std::string_view::npos)
        return {};
    if (mark < blank && blank != std::string_view::npos)
        answer[blank] = '&';
    return text.substr(mark + 1);
}

// The place of the word with a blank before it; the place is that of the blank.
std::size_t find_after_blank(std::string_view text, std::string_view word, std::size_t from = 0) {
    // Searching for the word is faster: a listing has few capital letters and many blanks.
    std::size_t place = text.find(word, from + 1);
    while (place != std::string_view::npos && text[place - 1] != ' ')
        place = text.find(word, place + 1);
    return place == std::string_view::npos ? place : place - 1;
}

// The answer to a failed request: the message without the value in default units that follows it. The text
// ends an indent before the first "="; if that precedes the message, the text is empty.
std::string_view failed_request(std::string_view answer, std::size_t mark, std::size_t equals) {
    const std::size_t begin = mark + 1;
    if (equals == std::string_view::npos)
        return answer.substr(begin);
    const std::size_t cut = equals < indent_of_result ? 0 : equals - indent_of_result;
    return answer.substr(begin, std::max(cut, begin) - begin);
}

void pick_answer(conversion& cells) {
    const std::string_view answer = cells.answer->view();
    const std::size_t equals = answer.find('=');
    if (const std::size_t mark = find_after_blank(answer, "ERROR"); mark != std::string_view::npos) {
        const std::size_t message = find_after_blank(answer, "ERROR:", mark);
        cells.outcome = conversion_outcome::error;
        cells.text = message != std::string_view::npos ? answer.substr(message + 1)
                                                       : failed_request(answer, mark, equals);
    } else if (equals != std::string_view::npos) {
        cells.outcome = conversion_outcome::converted;
        cells.number = leading_number(answer.data() + equals + 1);
        cells.text = mark_unit_text(*cells.answer, equals + 1);
    }
}

// A number with six digits, as a listing has it.
double as_listed(double x) {
    double listed = 0.0;
    if (short_decimals::keep_six_digits(x, listed))
        return listed;
    number_buffer digits;
    const std::string_view text = format_double(x, digits);
    digits.text[text.size()] = '\0';
    return leading_number(text.data());
}

} // namespace

conversion convert_units_by_line(double val, std::string_view in_units, std::string_view out_units) {
    return convert_units_by_line(val, in_units, out_units, {});
}

conversion convert_units_by_line(double val, std::string_view in_units, std::string_view out_units,
                                 const std::string& unit_definitions) {
    number_buffer number;
    work_text line;
    append(line.str, format_double(val, number), " ", in_units, "; ", out_units);
    conversion cells;
    cells.answer.emplace(interpret_dimensional_input_lines(line.str->text, unit_definitions));
    pick_answer(cells);
    return cells;
}

bool convert_plain_units(double val, std::string_view in_units, std::string_view out_units,
                         conversion& cells) {
    // Infinity and not-a-number are names in a line.
    const known_conversion* const known =
        std::isfinite(val) ? find_known_conversion(in_units, out_units) : nullptr;
    if (known == nullptr)
        return false;
    cells.outcome = conversion_outcome::converted;
    cells.number = as_listed(known->convert(as_listed(val)));
    cells.text = known->unit_cell();
    return true;
}

conversion convert_units(double val, std::string_view in_units, std::string_view out_units) {
    conversion cells;
    if (!convert_plain_units(val, in_units, out_units, cells))
        cells = convert_units_by_line(val, in_units, out_units);
    return cells;
}

} // namespace metrify
