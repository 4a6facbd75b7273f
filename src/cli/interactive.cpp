#include "base/cursor.h"
#include "cli/commands.h"
#include "cli/console.h"
#include "cli/hints/hint_writer.h"
#include "cli/interrupt_key.h"
#include "cli/session/error_colour.h"
#include "cli/session/name_help.h"
#include "cli/session/session_words.h"
#include "language/session.h"

#include <algorithm>
#include <optional>
#include <ostream>

namespace metrify {

namespace {

constexpr std::string_view help_text =
    "Type a line of the language, such as\n"
    "    3.5 ft; m          a value, and the unit to show it in\n"
    "    v = 55 mph         a variable\n"
    "    v * 2 hr; miles    and its use\n"
    "    ans / 2            the value of the line before, unless ans is a variable of yours\n"
    "A line that ends in \\ continues on the next one. Variables, user units, default\n"
    "units and the function block are kept from line to line.\n"
    "    help NAME  describes a unit or a function\n"
    "    :restart   forgets all of it and starts over\n"
    "    :help      shows this text\n"
    "    :quit      ends the session, as quit and Ctrl-D do\n"
    "Tab completes a name. Ctrl-C discards a line, or ends a long calculation; the arrow\n"
    "keys bring a line back from the history.\n";

constexpr std::string_view name_of_result = "ans";

// Reads one line with its continuation lines. False at the end of the session.
bool read_entry(line_reader& reader, std::string_view first_prompt, std::string& entry) {
    entry.clear();
    std::string line;
    for (;;) {
        switch (reader.read(entry.empty() ? first_prompt : "... ", line)) {
        case line_reader::outcome::end:
            return !entry.empty();
        case line_reader::outcome::interrupted:
            entry.clear();
            continue;
        case line_reader::outcome::line:
            break;
        }
        entry += line;
        if (!session::is_continued(entry))
            return true;
        entry += '\n';
    }
}

struct typed_command {
    session_command command = session_command::none;
    std::string argument = {};
};

std::string without_blanks_around(std::string_view text) {
    const std::size_t begin = std::min(text.find_first_not_of(' '), text.size());
    return std::string(text.substr(begin, text.find_last_not_of(' ') + 1 - begin));
}

// A word without a colon is a command if it is no name of the user. Only help takes an argument, one name.
typed_command command_of(std::string_view entry, const session& calculator) {
    const std::string text = without_blanks_around(entry);
    const std::size_t end = std::min(text.find(' '), text.size());
    const std::string_view word = std::string_view(text).substr(0, end);
    const auto* const found = std::find_if(session_words.begin(), session_words.end(),
                                           [&](const session_word& known) { return known.word == word; });
    if (found == session_words.end())
        return {};
    const std::vector<std::string> defined = calculator.defined_names();
    if (std::find(defined.begin(), defined.end(), word) != defined.end())
        return {};
    const std::string argument = without_blanks_around(std::string_view(text).substr(end));
    const bool takes_argument = found->command == session_command::help;
    const bool is_name = std::all_of(argument.begin(), argument.end(), is_name_char);
    if (!argument.empty() && !(takes_argument && is_name))
        return {};
    return {found->command, argument};
}

std::string run_entry(session& calculator, const std::string& entry) {
    const interrupt_key ends(calculator.stop());
    std::string listing = calculator.enter(entry);
    calculator.keep_result_as(name_of_result);
    return listing;
}

// Hints run the statements of the listing again, which can take as long as before.
void explain(hint_writer& hints, std::string_view listing, interruption& stop) {
    const interrupt_key ends(stop);
    const interruption_scope obeys(stop);
    hints.explain_listing(listing);
}

void start_hints(std::optional<hint_writer>& hints, const call_extras& extras, std::ostream& err) {
    hints.reset();
    if (extras.hints)
        hints.emplace(extras.unit_definitions, extras.everyday, err, std::string(name_of_result));
}

} // namespace

int interactive_command(std::ostream& out, std::ostream& err, const call_extras& extras) {
    line_reader reader;
    session calculator(extras.unit_definitions);
    std::optional<hint_writer> hints;
    start_hints(hints, extras, err);
    reader.complete_with(
        [&](std::string_view text) { return complete_word(text, calculator.defined_names()); });
    const bool is_coloured = has_colours();
    std::string entry;
    out << "Metrify. Type :help for help.\n" << std::flush;
    while (read_entry(reader, calculator.is_block_open() ? "... " : "> ", entry)) {
        const typed_command typed = command_of(entry, calculator);
        if (typed.command == session_command::quit)
            break;
        if (typed.command == session_command::help) {
            out << (typed.argument.empty() ? std::string(help_text) : help_on(typed.argument, calculator));
        } else if (typed.command == session_command::restart) {
            calculator.start_over();
            start_hints(hints, extras, err);
            out << "Everything is forgotten.\n";
        } else {
            const std::string listing = run_entry(calculator, entry);
            out << (is_coloured ? with_coloured_errors(listing) : listing) << std::flush;
            if (hints && !calculator.stop().is_requested())
                explain(*hints, listing, calculator.stop());
        }
        out << std::flush;
    }
    return 0;
}

} // namespace metrify
