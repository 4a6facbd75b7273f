#include "cli/commands.h"
#include "cli/console.h"
#include "language/session.h"

#include <ostream>

namespace metrify {

namespace {

constexpr std::string_view help_text =
    "Type a line of the language, such as\n"
    "    3.5 ft; m          a value, and the unit to show it in\n"
    "    v = 55 mph         a variable\n"
    "    v * 2 hr; miles    and its use\n"
    "A line that ends in \\ continues on the next one. Variables, user units, default\n"
    "units and the function block are kept from line to line.\n"
    "    :restart   forgets all of it and starts over\n"
    "    :help      shows this text\n"
    "    :quit      ends the session, as Ctrl-D does\n"
    "Ctrl-C discards a line; the arrow keys bring it back from the history.\n";

// Reads one line with its continuation lines. False at the end of the session.
bool read_entry(line_reader& reader, std::string& entry) {
    entry.clear();
    std::string line;
    for (;;) {
        switch (reader.read(entry.empty() ? "> " : "... ", line)) {
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

} // namespace

int interactive_command(std::ostream& out) {
    line_reader reader;
    session calculator;
    std::string entry;
    out << "Metrify. Type :help for help.\n" << std::flush;
    while (read_entry(reader, entry)) {
        if (entry == ":quit")
            break;
        if (entry == ":help") {
            out << help_text;
        } else if (entry == ":restart") {
            calculator.start_over();
            out << "Everything is forgotten.\n";
        } else {
            out << calculator.enter(entry);
        }
        out << std::flush;
    }
    return 0;
}

} // namespace metrify
