#include "cli/lookup/function_list.h"

#include "cli/lookup/names.h"
#include "functions/function_help.h"

#include <ostream>
#include <string>
#include <vector>

namespace metrify {

namespace {

std::string lines_with(std::string_view text) {
    std::string lines;
    for (const help_chapter& chapter : function_help()) {
        for (const function_row* function : chapter.functions)
            if (const std::string line = help_line(*function); contains_nocase(line, text))
                lines += line;
    }
    return lines;
}

std::string lines_of_chapters(std::string_view title) {
    std::string lines;
    for (const help_chapter& chapter : function_help()) {
        if (!contains_nocase(chapter.title, title))
            continue;
        for (const function_row* function : chapter.functions)
            lines += help_line(*function);
    }
    return lines;
}

} // namespace

int list_functions(std::string_view text, std::ostream& out, std::ostream& err) {
    if (const function_row* row = find_function_help(text)) {
        out << help_entry(*row);
        return 0;
    }
    std::string lines = lines_with(text);
    if (lines.empty())
        lines = lines_of_chapters(text);
    if (lines.empty()) {
        err << "metrify: no function is called or described by `" << text << "`";
        if (const std::vector<std::string> nearest = nearest_names(text, function_names()); !nearest.empty())
            err << "; the nearest: " << quoted_list(nearest);
        err << '\n';
        return 1;
    }
    out << help_heading() << lines;
    return 0;
}

} // namespace metrify
