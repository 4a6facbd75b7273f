#include "cli/commands.h"

#include "addin/conversion.h"
#include "calc/number_text.h"
#include "calc/unit_rendering.h"
#include "calc/unit_table.h"
#include "functions/function_help.h"

#include <cerrno>
#include <fstream>
#include <iomanip>
#include <istream>
#include <iterator>
#include <ostream>
#include <system_error>

namespace metrify {

namespace {

std::string_view without_trailing_newlines(std::string_view text) {
    while (!text.empty() && text.back() == '\n')
        text.remove_suffix(1);
    return text;
}

// What a stream holds, or a reason why it is no program text.
bool read_program(std::istream& in, std::string& program, std::string& reason) {
    program.assign(std::istreambuf_iterator<char>(in), {});
    if (in.bad()) {
        reason = "cannot be read to its end";
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
    // A folder can be opened like a file; reading shows it.
    if (!in || (in.peek() == std::ifstream::traits_type::eof() && errno != 0)) {
        reason = std::generic_category().message(errno);
        return false;
    }
    in.clear();
    return read_program(in, program, reason);
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
        err << without_trailing_newlines(cells.text) << '\n';
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
    for (const unit_entry& unit : all_units()) {
        if (unit.name.find(text) == std::string_view::npos)
            continue;
        number_buffer buffer;
        work_text dimension;
        work_text error;
        render_units(system_MKS, unit.dim, dimension.str, error.str);
        out << std::left << std::setw(22) << unit.name << std::setw(14) << format_double(unit.factor, buffer)
            << (dimension.view().empty() ? "1" : dimension.view()) << '\n';
    }
    return 0;
}

int functions_command(std::string_view text, std::ostream& out) {
    if (const help_row* row = find_function_help(text)) {
        out << help_entry(*row);
        return 0;
    }
    for (const help_family& family : function_help()) {
        for (const help_row& row : family.rows) {
            const std::string line = help_line(row);
            if (line.find(text) != std::string::npos)
                out << line;
        }
    }
    return 0;
}

int functions_document_command(std::ostream& out) {
    out << help_document();
    return 0;
}

} // namespace metrify
