// Writes the page of the units of the extension's Help menu, in HTML, to the standard output.

#include "metrify/metrify.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <exception>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

constexpr const char* kBeginning = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<title>Units of Metrify</title>
<style>
body { font-family: sans-serif; max-width: 60em; margin: 2em auto; padding: 0 1em; }
table { border-collapse: collapse; width: 100%; }
td, th { border-bottom: 1px solid #ccc; padding: 0.2em 0.5em; text-align: left; vertical-align: top; }
td:last-child, th:last-child { width: 35%; }
code { background: #f3f3f3; }
</style>
</head>
<body>
<h1>Units of Metrify</h1>
<p><code>=METRIFY(3.5;"ft";"m")</code> converts a number from one unit to another. Upper and lower case count: <code>mW</code>
is a milliwatt, <code>MW</code> a megawatt. A unit may be an expression of these names: <code>kg m/s^2</code>,
<code>m^(1/2)</code>, <code>W/(m degKdiff)</code>. All factors after a slash divide. Without the second unit the result is in
default units. <code>degCdiff</code> and the like are temperature differences; <code>degC</code> and <code>degF</code> have
their own zero.</p>
)";

struct Row {
    metrify_unit unit;
    std::string number; // in default units
    std::string dimension;
};

std::string NumberText(double number) {
    char buffer[64];
    return {buffer, std::to_chars(buffer, buffer + sizeof buffer, number, std::chars_format::general, 6).ptr};
}

// One of the unit in default units, as a cell shows it.
Row RowOf(std::size_t index) {
    Row row = {};
    metrify_cells* cells = nullptr;
    if (metrify_unit_at(index, &row.unit) != METRIFY_OK ||
        metrify_convert(1.0, row.unit.name, std::strlen(row.unit.name), "", 0, &cells) != METRIFY_OK)
        throw std::runtime_error(metrify_message());
    row.number = NumberText(metrify_cells_number(cells));
    row.dimension = metrify_cells_text(cells);
    row.dimension.resize(row.dimension.find('\n'));
    metrify_cells_free(cells);
    return row;
}

std::vector<Row> Rows() {
    std::vector<Row> rows(metrify_unit_count());
    for (std::size_t i = 0; i < rows.size(); ++i)
        rows[i] = RowOf(i);
    return rows;
}

bool SameUnit(const metrify_unit& a, const metrify_unit& b) {
    return a.factor == b.factor && a.offset == b.offset &&
           std::equal(std::begin(a.exponents), std::end(a.exponents), std::begin(b.exponents));
}

// One table for each dimension, one row for each unit with its other names.
void WriteTables(const std::vector<Row>& rows) {
    for (std::size_t i = 0; i < rows.size();) {
        const Row& row = rows[i];
        if (i == 0 || row.dimension != rows[i - 1].dimension)
            std::cout << (i == 0 ? "" : "</table>\n") << "<h2>"
                      << (row.dimension.empty() ? "Numbers" : row.dimension)
                      << "</h2>\n<table>\n<tr><th>unit</th><th>value</th></tr>\n";
        std::cout << "<tr><td>";
        for (; i < rows.size() && SameUnit(row.unit, rows[i].unit); ++i)
            std::cout << "<code>" << rows[i].unit.name << "</code> ";
        std::cout << "</td><td>" << row.number << ' ' << row.dimension << "</td></tr>\n";
    }
    std::cout << "</table>\n";
}

} // namespace

int main() {
    try {
        std::cout << kBeginning;
        WriteTables(Rows());
        std::cout << "</body>\n</html>\n";
        return std::cout.flush() ? 0 : 1;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
