#include "cli/hints/hint_writer.h"

#include "base/number_text.h"
#include "cli/hints/correction.h"
#include "cli/hints/mismatch.h"
#include "cli/hints/respelling.h"
#include "cli/hints/text_pattern.h"
#include "cli/hints/trial.h"
#include "cli/hints/words.h"
#include "cli/lookup/names.h"
#include "cli/units/everyday_units.h"
#include "language/driver.h"
#include "language/expression.h"
#include "language/unit_definitions.h"
#include "machine/calculator.h"

#include <optional>
#include <ostream>

namespace metrify {

namespace {

constexpr int most_explained = 20;
constexpr int most_examined = 10000;
constexpr std::size_t longest_explained = 500; // characters of a statement

// Gives a calculator the state that a statement meets in its program.
void rehearse(calculator& used, const std::string& unit_definitions, const std::string& assignments) {
    const calculator_scope scope(used);
    define_units(unit_definitions);
    run_further_lines(assignments.c_str());
}

correction spelling_of(const std::string& statement, bool has_failed, calculator& used) {
    const calculator_scope scope(used);
    correction corrected = {statement};
    if (has_failed)
        respell(corrected);
    correct_misread(corrected);
    if (has_failed)
        resolve_unknown_names(corrected);
    return corrected;
}

// Tries the corrected statement, and corrects its request if that is of no help.
explanation try_corrected(correction corrected, calculator& used) {
    const calculator_scope scope(used);
    std::optional<std::string> answer = try_line(corrected.text);
    if (!answer) {
        correct_mismatch(corrected);
        answer = try_line(corrected.text);
    }
    return {std::move(corrected), std::move(answer)};
}

std::string joined(const std::vector<std::string>& notes) {
    std::string text;
    for (const std::string& note : notes)
        text += (text.empty() ? "" : "; ") + note;
    return text;
}

bool has_changed(const correction& corrected, const std::string& statement) {
    return corrected.text != statement || corrected.needs_everyday_units;
}

std::string trimmed(std::string text) {
    text.erase(0, text.find_first_not_of(" \t"));
    text.erase(text.find_last_not_of(" \t;") + 1);
    return text;
}

std::string without_comment(std::string_view statement) {
    return trimmed(std::string(statement.substr(0, statement.find('#'))));
}

// The statement as a command, or as a line of the language if it doesn't begin with a number. The number may
// be a fraction or a sum in parentheses.
std::string as_command(const correction& statement, bool has_everyday_units) {
    static const text_pattern parts(R"(^(\([^()]*\)|[-+\d.eE]+)\s*([^;]*?)\s*(?:;\s*(.*))?$)");
    std::smatch match;
    if (!parts.matches(statement.text, match))
        return "the line `" + statement.text + "`";
    const std::optional<std::string> number = try_line(match[1].str());
    if (!number)
        return "the line `" + statement.text + "`";
    std::string command = "`metrify convert ";
    if (statement.needs_everyday_units || has_everyday_units)
        command += "--everyday ";
    command += trimmed(*number) + " " + quoted_for_shell(match[2].str());
    if (match[3].length() > 0)
        command += " " + quoted_for_shell(match[3].str());
    return command + "`";
}

// The same for columns; empty if the correction is not one of the units alone.
std::string as_columns_command(const correction& statement, bool has_everyday_units) {
    static const text_pattern parts(R"(^1 ([^;(+]*?)\s*(?:;\s*([^;]*))?$)");
    std::smatch match;
    if (!parts.matches(statement.text, match))
        return {};
    std::string command = "`metrify columns ";
    if (statement.needs_everyday_units || has_everyday_units)
        command += "--everyday ";
    command += "--from " + quoted_for_shell(match[1].str());
    if (match[2].length() > 0)
        command += " --to " + quoted_for_shell(match[2].str());
    return command + "`";
}

/// One statement of a listing with its answer.
struct listed_statement {
    std::string_view statement;
    std::string_view answer;
};

// Takes the first statement off a listing. False if there is none.
bool take_statement(std::string_view& listing, listed_statement& found) {
    constexpr std::string_view heading = "[  ";
    constexpr std::string_view heading_end = " ] ";
    const auto is_heading = [&](std::size_t place) {
        return listing.substr(place, heading.size()) == heading && (place == 0 || listing[place - 1] == '\n');
    };
    std::size_t begin = listing.find(heading);
    while (begin != std::string_view::npos && !is_heading(begin))
        begin = listing.find(heading, begin + 1);
    if (begin == std::string_view::npos)
        return false;
    std::size_t end = listing.find(heading, begin + 1);
    while (end != std::string_view::npos && !is_heading(end))
        end = listing.find(heading, end + 1);
    const std::string_view section = listing.substr(begin, end - begin);
    listing.remove_prefix(end == std::string_view::npos ? listing.size() : end);
    const std::size_t statement =
        std::min(section.find(heading_end), section.size() - heading_end.size()) + heading_end.size();
    const std::size_t answer = std::min(section.find('\n', statement), section.size());
    found = {section.substr(statement, answer - statement), section.substr(answer)};
    return true;
}

// The first value in the answer to a statement, with its unit.
std::string first_value(std::string_view answer) {
    constexpr std::string_view equals = " = ";
    const std::size_t begin = answer.find(equals);
    if (begin == std::string_view::npos)
        return {};
    const std::string_view rest = answer.substr(begin + equals.size());
    return std::string(rest.substr(0, std::min(rest.find('\n'), rest.find(equals))));
}

bool begins_with_keyword(const std::string& statement) {
    static const text_pattern keyword(R"(^(MKS|cgs|FPS|IPS|DefUnit|begin|end|PrintFunc)\b)",
                                      letter_case::any);
    return keyword.is_in(statement);
}

// True for a statement that later ones may depend on. A continued one is listed in several lines.
bool is_state(const std::string& statement) {
    static const text_pattern assignment(R"(^[A-Za-z]\w*(\s*\[[^\]]*\])?\s*=)");
    return statement.find('\\') == std::string::npos && is_harmless(statement) &&
           (assignment.is_in(statement) || begins_with_keyword(statement));
}

// True if the language may have accepted a statement in another sense than the usual one.
bool may_be_misread(const std::string& statement) {
    static const text_pattern signs(R"(\*\*|/| in |deg[CF]|Hz)");
    return signs.is_in(statement);
}

} // namespace

hint_writer::hint_writer(const std::string& unit_definitions, bool has_everyday_units, std::ostream& err,
                         const std::string& name_of_result)
    : unit_definitions_(unit_definitions), has_everyday_units_(has_everyday_units), err_(err),
      name_of_result_(name_of_result) {
    rehearse(rehearsal_, unit_definitions_, {});
}

explanation hint_writer::explain(const std::string& statement, bool has_failed) {
    correction corrected = spelling_of(statement, has_failed, rehearsal_);
    if (!has_failed && corrected.notes.empty())
        return {std::move(corrected), {}};
    if (!corrected.needs_everyday_units)
        return try_corrected(std::move(corrected), rehearsal_);
    calculator with_everyday_units;
    rehearse(with_everyday_units, everyday_units() + unit_definitions_, assignments_);
    return try_corrected(std::move(corrected), with_everyday_units);
}

bool hint_writer::is_worth_examining(const std::string& statement, bool has_failed) {
    if (explained_ == most_explained || examined_ == most_examined || begins_with_keyword(statement) ||
        statement.size() > longest_explained)
        return false;
    ++examined_;
    return has_failed || may_be_misread(statement);
}

void hint_writer::explain_statement(const std::string& statement, bool has_failed) {
    const explanation found = explain(statement, has_failed);
    if (found.corrected.notes.empty())
        return;
    ++explained_;
    err_ << "metrify: hint for `" << statement << "`: " << joined(found.corrected.notes);
    if (found.answer && has_changed(found.corrected, statement)) {
        err_ << ": `" << found.corrected.text << "`"
             << (found.corrected.needs_everyday_units ? " with --everyday" : "") << " gives "
             << trimmed(*found.answer);
    }
    err_ << '\n';
}

void hint_writer::remember(const std::string& statement) {
    assignments_ += statement + '\n';
    rehearse(rehearsal_, {}, statement);
}

void hint_writer::explain_listing(std::string_view listing) {
    for (listed_statement listed; take_statement(listing, listed);) {
        const std::string statement = without_comment(listed.statement);
        const bool has_failed = listed.answer.find("ERROR") != std::string_view::npos;
        if (is_worth_examining(statement, has_failed))
            explain_statement(statement, has_failed);
        if (has_failed)
            continue;
        if (is_state(statement))
            remember(statement);
        if (const std::string value = first_value(listed.answer); !name_of_result_.empty() && !value.empty())
            remember(name_of_result_ + " = " + value);
    }
}

void hint_writer::write_command(const explanation& found) {
    const calculator_scope scope(rehearsal_);
    err_ << ": " << as_command(found.corrected, has_everyday_units_) << " gives " << trimmed(*found.answer);
}

void hint_writer::explain_conversion(std::string_view val, std::string_view in_units,
                                     std::string_view out_units, conversion_state state) {
    const std::string statement =
        trimmed(std::string(val).append(" ").append(in_units).append("; ").append(out_units));
    if (statement.size() > longest_explained)
        return;
    if (out_units == "-") {
        err_
            << "metrify: hint: the shell takes the `>` of `->` for a redirection to a file; the units follow "
               "each other, as in `metrify 3.5 ft m`\n";
        return;
    }
    const explanation found = explain(statement, state != conversion_state::converted);
    const bool is_corrected = found.answer && has_changed(found.corrected, statement);
    const bool is_no_number = state == conversion_state::not_a_number;
    if (is_no_number && !is_corrected && has_joined_unit(val)) {
        explain_first_that_works(
            readings_of({std::string(val), std::string(in_units), std::string(out_units)}));
        return;
    }
    if (found.corrected.notes.empty() || (!is_corrected && is_no_number))
        return;
    err_ << "metrify: hint: " << joined(found.corrected.notes);
    if (is_corrected)
        write_command(found);
    err_ << '\n';
}

bool hint_writer::explain_first_that_works(const std::vector<reading>& readings) {
    for (const reading& meant : readings) {
        explanation found = explain(meant.statement, true);
        if (!found.answer)
            continue;
        std::vector<std::string> notes = meant.notes;
        notes.insert(notes.end(), found.corrected.notes.begin(), found.corrected.notes.end());
        err_ << "metrify: hint: " << joined(notes);
        write_command(found);
        err_ << '\n';
        return true;
    }
    return false;
}

void hint_writer::explain_words(const std::vector<std::string>& words) {
    const std::vector<reading> readings = readings_of(words);
    if (readings.empty() || readings.front().statement.size() > longest_explained ||
        explain_first_that_works(readings))
        return;
    std::vector<std::string> notes = readings.front().notes;
    const explanation found = explain(readings.front().statement, true);
    notes.insert(notes.end(), found.corrected.notes.begin(), found.corrected.notes.end());
    err_ << "metrify: hint: " << joined(notes) << '\n';
}

void hint_writer::explain_columns(std::string_view in_units, std::string_view out_units) {
    const std::string statement = trimmed(std::string("1 ").append(in_units).append("; ").append(out_units));
    if (statement.size() > longest_explained)
        return;
    const explanation found = explain(statement, true);
    if (found.corrected.notes.empty())
        return;
    err_ << "metrify: hint: " << joined(found.corrected.notes);
    const std::string command = as_columns_command(found.corrected, has_everyday_units_);
    if (found.answer && has_changed(found.corrected, statement) && !command.empty())
        err_ << ": " << command;
    err_ << '\n';
}

} // namespace metrify
