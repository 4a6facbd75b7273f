#include "cli/commands.h"

#include "addin/conversion.h"
#include "base/cursor.h"
#include "base/interruption.h"
#include "base/number_text.h"
#include "cli/interrupt_key.h"
#include "cli/program_text.h"
#include "functions/function_help.h"
#include "units/unit_rendering.h"
#include "units/unit_table.h"

#include <algorithm>
#include <iomanip>
#include <ostream>

namespace metrify {

namespace {

std::string_view without_trailing_newlines(std::string_view text) {
    while (!text.empty() && text.back() == '\n')
        text.remove_suffix(1);
    return text;
}

bool contains_nocase(std::string_view text, std::string_view part) {
    return std::search(
               text.begin(), text.end(), part.begin(), part.end(),
               [](char a, char b) { return fold_case(a) == fold_case(b); }) != text.end();
}

// The error cell is empty if an "=" precedes the message, in the units or in a result on an earlier line: the
// cell ends at the first "=".
void write_error_cell(const conversion& cells, std::ostream& err) {
    const std::string_view message = without_trailing_newlines(cells.text);
    if (!message.empty())
        err << message << '\n';
    else
        err << "metrify: the error cell is empty, since a \"=\" stands ahead of the message:\n"
            << cells.answer.view();
}

} // namespace

int convert_command(double val, std::string_view in_units, std::string_view out_units, std::ostream& out,
                    std::ostream& err) {
    const conversion cells = convert_units(val, in_units, out_units);
    switch (cells.outcome) {
    case conversion_outcome::converted: {
        number_buffer buffer;
        const std::string_view units = without_trailing_newlines(cells.text);
        out << format_double(cells.number, buffer) << (units.empty() ? "" : " ") << units << '\n';
        return 0;
    }
    case conversion_outcome::error:
        write_error_cell(cells, err);
        return 1;
    case conversion_outcome::unmarked:
        break;
    }
    err << "metrify: the units hold a line break, and the answer has neither a result nor a message\n";
    return 1;
}

int run_command(const std::vector<std::string>& files, std::istream& in, std::ostream& out, std::ostream& err,
                const run_options& options) {
    const std::vector<std::string> standard_input = {"-"};
    int status = 0;
    for (const std::string& file : files.empty() ? standard_input : files) {
        program_text program;
        if (!program.read_named(file, in, err)) {
            status = status_unreadable;
            continue;
        }
        interruption stop;
        const interruption_scope obeys(stop);
        const interrupt_key ends(stop);
        const listing shown = interpret_dimensional_input_lines(program.text.c_str());
        out << shown.view();
        if (stop.is_requested()) {
            err << "metrify: interrupted\n";
            return status_interrupted;
        }
        if (options.is_strict && shown.has_failures())
            status = std::max(status, status_failed);
    }
    return status;
}

int units_command(std::string_view text, std::ostream& out) {
    bool is_found = false;
    for (const unit_entry& unit : all_units()) {
        if (unit.name.find(text) == std::string_view::npos)
            continue;
        is_found = true;
        number_buffer buffer;
        work_text dimension;
        work_text error;
        render_units(system_MKS, unit.dim, dimension.str, error.str);
        out << std::left << std::setw(22) << unit.name << std::setw(14) << format_double(unit.factor, buffer)
            << (dimension.view().empty() ? "1" : dimension.view()) << '\n';
    }
    return is_found ? 0 : 1;
}

int functions_command(std::string_view text, std::ostream& out) {
    if (const function_row* row = find_function_help(text)) {
        out << help_entry(*row);
        return 0;
    }
    bool is_found = false;
    for (const help_chapter& chapter : function_help()) {
        for (const function_row* function : chapter.functions) {
            const std::string line = help_line(*function);
            if (!contains_nocase(line, text))
                continue;
            is_found = true;
            out << line;
        }
    }
    return is_found ? 0 : 1;
}

int functions_document_command(std::ostream& out) {
    out << help_document();
    return 0;
}

int checked_output(int status, std::ostream& out, std::ostream& err) {
    if (out.flush())
        return status;
    err << "metrify: standard output: not all of it could be written\n";
    return 2;
}

} // namespace metrify
