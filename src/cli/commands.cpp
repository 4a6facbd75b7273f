#include "cli/commands.h"

#include "addin/conversion.h"
#include "base/cursor.h"
#include "base/number_text.h"
#include "functions/function_help.h"
#include "units/unit_rendering.h"
#include "units/unit_table.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fstream>
#include <iomanip>
#include <istream>
#include <ostream>
#include <system_error>

namespace metrify {

namespace {

std::string_view without_trailing_newlines(std::string_view text) {
    while (!text.empty() && text.back() == '\n')
        text.remove_suffix(1);
    return text;
}

// Reads a whole stream. On failure sets the reason.
bool read_program(std::istream& in, std::string& program, std::string& reason) {
    std::array<char, 16384> block;
    program.clear();
    errno = 0;
    do {
        in.read(block.data(), block.size());
        program.append(block.data(), static_cast<std::size_t>(in.gcount()));
    } while (in);
    if (in.bad()) {
        reason = errno != 0 ? std::generic_category().message(errno) : "cannot be read to its end";
        return false;
    }
    if (const std::size_t zero = program.find('\0'); zero != std::string::npos) {
        reason = "holds a zero byte at offset " + std::to_string(zero) + ", where a program text would end";
        return false;
    }
    return true;
}

bool read_program_file(const std::string& file, std::string& program, std::string& reason) {
    errno = 0;
    std::ifstream in(file, std::ios::binary);
    if (in)
        return read_program(in, program, reason);
    reason = std::generic_category().message(errno);
    return false;
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
        err << "metrify: the error cell is empty, since a \"=\" precedes the message:\n"
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

int run_command(const std::vector<std::string>& files, std::istream& in, std::ostream& out,
                std::ostream& err) {
    const std::vector<std::string> standard_input = {"-"};
    int status = 0;
    for (const std::string& file : files.empty() ? standard_input : files) {
        std::string program;
        std::string reason;
        const bool is_read =
            file == "-" ? read_program(in, program, reason) : read_program_file(file, program, reason);
        if (is_read) {
            out << interpret_dimensional_input_lines(program.c_str()).view();
        } else {
            err << "metrify: " << (file == "-" ? "standard input" : file) << ": " << reason << '\n';
            status = 2;
        }
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
