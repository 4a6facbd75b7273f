#include "functions/function_help.h"

#include "base/cursor.h"

namespace metrify {

namespace {

std::string call_of(const help_row& row) {
    return std::string(row.name).append("(").append(row.arguments).append(")");
}

void append_fact(std::string& entry, std::string_view label, std::string_view fact) {
    entry.append("- ").append(label).append(": ").append(fact).append("\n");
}

// A line, or a program.
void append_example(std::string& entry, const help_row& row) {
    if (row.example.find('\n') == std::string_view::npos)
        entry.append("- example: `").append(row.example).append("` ");
    else
        entry.append("- example:\n\n```\n").append(row.example).append("\n```\n");
    entry.append("shows `").append(row.answer).append("`\n");
}

} // namespace

const help_row* find_function_help(std::string_view name) {
    for (const help_family& family : function_help()) {
        for (const help_row& row : family.rows)
            if (text_compare_nocase(row.name, name) == 0)
                return &row;
    }
    return nullptr;
}

std::string help_line(const help_row& row) {
    constexpr std::size_t column = 30;
    std::string line = call_of(row);
    line.append(line.size() < column ? column - line.size() : 1, ' ');
    return line.append(row.what).append("\n");
}

std::string help_entry(const help_row& row) {
    std::string entry = "### ";
    entry.append(call_of(row)).append("\n\n").append(row.what).append(".\n\n");
    if (!row.takes.empty())
        append_fact(entry, "takes", row.takes);
    append_fact(entry, "gives", row.gives);
    append_fact(entry, "domain", row.domain);
    append_example(entry, row);
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
    for (const char* name : {"BesselJ", "BesselY", "BesselI", "BesselK"})
        text.append("    ").append(help_line(*find_function_help(name)));
    for (const help_family& family : function_help()) {
        text.append("\n## ").append(family.title).append("\n");
        for (const help_row& row : family.rows)
            text.append("\n").append(help_entry(row));
    }
    return text;
}

} // namespace metrify
