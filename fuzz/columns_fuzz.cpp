// Arbitrary bytes as a text with columns. The rows that are read make up the whole text; the conversion does
// not depend on the pieces that the text comes in, and repeated with a factor of 1 it changes nothing more.
//
// Input: a byte for the delimiter, one for the options, the chosen columns up to a zero byte, then the text.

#include "cli/columns/columns_command.h"
#include "cli/columns/csv_row.h"
#include "fuzz/input.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <sstream>
#include <string>

namespace {

using namespace metrify;
using metrify_fuzz::Input;
using metrify_fuzz::Require;

void CheckRows(std::string_view text, char delimiter) {
    csv_row row;
    while (!text.empty()) {
        const std::size_t length = row.read(text, delimiter, true);
        Require(length > 0 && length <= text.size() && !row.cells.empty());
        std::string joined;
        for (std::size_t i = 0; i < row.cells.size(); ++i) {
            if (i > 0)
                joined += delimiter;
            joined += row.cells[i];
            Require(plain_cell(row.cells[i]).size() <= row.cells[i].size());
        }
        Require(joined.append(row.line_end) == text.substr(0, length));
        text.remove_prefix(length);
    }
}

struct Answer {
    std::string out;
    std::string err;
    int status = 0;
    friend bool operator==(const Answer&, const Answer&) = default;
};

// The text comes in pieces of up to so many bytes.
Answer Converted(std::string_view text, const columns_options& options, double slope, std::size_t piece) {
    std::ostringstream out;
    std::ostringstream err;
    const byte_source source = [&](char* buffer, std::size_t size) {
        const std::size_t count = std::min({piece, size, text.size()});
        std::memcpy(buffer, text.data(), count);
        text.remove_prefix(count);
        return static_cast<std::ptrdiff_t>(count);
    };
    conversion_plan plan;
    plan.slope = slope;
    const int status = convert_columns(plan, options, {.in = source, .out = out, .err = err});
    return {out.str(), err.str(), status};
}

void CheckJson(const Answer& json) {
    for (const char c : json.out)
        Require(c == '\n' || static_cast<unsigned char>(c) >= 0x20);
    Require(json.out.empty() || json.out.ends_with("}\n") || json.out.ends_with("]\n"));
}

bool HasMark(const std::string& text) {
    return text.starts_with("\xEF\xBB\xBF") || text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    columns_options options;
    const char delimiters[] = {',', ';', '\t', '|'};
    options.delimiter = delimiters[input.Take(4)];
    const unsigned header = input.Take(3);
    if (header != 0)
        options.header = header == 1;
    const std::size_t piece = 1 + input.Take(16);
    options.columns = input.TakeText();
    const std::string text = input.TakeRest();

    CheckRows(text, options.delimiter);
    const Answer whole = Converted(text, options, 0.3048, text.size());
    Require(Converted(text, options, 0.3048, piece) == whole);
    const Answer same = Converted(text, options, 1.0, text.size());
    // A mark of the encoding at the start is no part of the first cell, and is left out with a message.
    if (same.status != 2 && !HasMark(same.out)) {
        const Answer again = Converted(same.out, options, 1.0, piece);
        Require(again.out == same.out && again.status == same.status);
        Require(again.err == same.err || HasMark(text));
    }
    options.as_json = true;
    CheckJson(Converted(text, options, 1.0, piece));
    return 0;
}
