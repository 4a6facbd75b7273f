#pragma once

// Programs of any length, for the growth of the cost of a line with the number of lines.

#include <array>
#include <string>
#include <string_view>

namespace metrify_bench {

/// A kind of program: its first line, line i, and its last line.
struct growing_program {
    std::string_view name;
    std::string_view first;
    void (*append_line)(std::string& text, const std::string& i);
    std::string_view last;

    std::string text(long lines) const {
        std::string all(first);
        for (long i = 1; i <= lines; ++i)
            append_line(all, std::to_string(i));
        return all.append(last);
    }
};

inline constexpr std::array<growing_program, 7> growing_programs = {{
    {"statements", "", [](std::string& text, const std::string&) { text += "3.5 ft + 2 in; m\n"; }, ""},
    {"comments", "", [](std::string& text, const std::string&) { text += "# a comment\n"; }, ""},
    {"variables", "", [](std::string& text, const std::string& i) { text += "v" + i + " = 3.5 ft\n"; }, ""},
    {"user_units", "",
     [](std::string& text, const std::string& i) { text += "DefUnit(u" + i + "_, 3.5 ft)\n"; }, ""},
    {"block", "x = 2\ny = 1\nbegin\n",
     [](std::string& text, const std::string&) { text += "y = y/2 + x*3\n"; }, "end\n"},
    {"one_exception", "MKS (ft)\n", [](std::string& text, const std::string&) { text += "3.5 in\n"; }, ""},
    // One list with so many exceptions, and one result.
    {"exceptions", "MKS (", [](std::string& text, const std::string& i) { text += "m^" + i + " s,"; },
     "ft)\n3.5 in\n"},
}};

} // namespace metrify_bench
