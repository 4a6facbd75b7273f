#include "functions/function_help.h"

#include "base/cursor.h"
#include "functions/function_rows.h"

#include <iterator>

namespace metrify {

namespace {

std::string call_of(const function_facts& function) {
    return std::string(function.name).append("(").append(function.argument_names).append(")");
}

void append_fact(std::string& entry, std::string_view label, std::string_view fact) {
    entry.append("- ").append(label).append(": ").append(fact).append("\n");
}

std::string two_columns(std::string line, std::string_view text) {
    constexpr std::size_t column = 30;
    line.append(line.size() < column ? column - line.size() : 1, ' ');
    return line.append(text).append("\n");
}

constexpr std::string_view titles[] = {
    "Trigonometry",
    "Hyperbolic functions",
    "Exponential, logarithms, roots",
    "Rounding, sign, remainder",
    "Vectors",
    "Units and interpolation",
    "Constants",
    "Solving",
    "Bessel and Airy functions",
    "Gamma and beta functions",
    "Error function and normal distribution",
    "Exponential integrals",
    "Elliptic integrals and functions",
};
static_assert(std::size(titles) == static_cast<std::size_t>(family::count));

// A line, or a program.
void append_example(std::string& entry, const function_facts& function) {
    if (function.example.find('\n') == std::string_view::npos)
        entry.append("- example: `").append(function.example).append("` ");
    else
        entry.append("- example:\n\n```\n").append(function.example).append("\n```\n");
    entry.append("shows `").append(function.answer).append("`\n");
}

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

std::vector<help_chapter> function_help() {
    std::vector<help_chapter> chapters;
    for (const std::string_view title : titles)
        chapters.push_back({title, functions_in(static_cast<family>(chapters.size()))});
    return chapters;
}

const function_row* find_function_help(std::string_view name) {
    for (const function_row& row : all_functions())
        if (text_compare_nocase(row.name, name) == 0)
            return &row;
    return nullptr;
}

std::string help_heading() {
    return two_columns("function", "what it gives");
}

std::string help_line(const function_facts& function) {
    return two_columns(call_of(function), function.what);
}

std::string help_entry(const function_facts& function) {
    std::string entry = "### ";
    entry.append(call_of(function)).append("\n\n").append(function.what).append(".\n\n");
    if (!function.takes.empty())
        append_fact(entry, "takes", function.takes);
    append_fact(entry, "gives", function.gives);
    append_fact(entry, "domain", function.domain);
    append_example(entry, function);
    return entry;
}

std::string help_document() {
    std::string text = R"(# The built-in functions

All 89, family by family. `metrify functions` lists them, `metrify functions NAME` shows one entry;
`metrify functions --markdown` writes this text. Names are found in any case. Every example is run by
the tests. "A number" is a scalar without dimensions; an angle or an amount of substance counts as
one, and an angle is in radians.

Where an argument is plus infinity the result is 0, without a message. The exceptions: `abs`, `ceil`,
`floor`, `int` and `round` keep it, and so does `mod` for x; `atanh` and `asech` refuse it, as they do
any number above 1; `atan2`, `CarlsonRJ` for p, `Number`, `lininterp` and the functions of vectors
compute with it.

    $ build/release/metrify functions bessel
)";
    text.append("    ").append(help_heading());
    for (const char* name : {"BesselJ", "BesselY", "BesselI", "BesselK"})
        text.append("    ").append(help_line(*find_function_help(name)));
    for (const help_chapter& chapter : function_help()) {
        text.append("\n## ").append(chapter.title).append("\n");
        for (const function_row* function : chapter.functions)
            text.append("\n").append(help_entry(*function));
    }
    return text;
}

} // namespace metrify
