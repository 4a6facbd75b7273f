#include "cli/commands.h"
#include "cli/console.h"
#include "cli/hints/hint_writer.h"
#include "language/session.h"

#include <memory>
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

std::unique_ptr<hint_writer> make_hint_writer(const call_extras& extras, std::ostream& err) {
    return extras.hints ? std::make_unique<hint_writer>(extras.unit_definitions, extras.everyday, err)
                        : nullptr;
}

} // namespace

int interactive_command(std::ostream& out, std::ostream& err, const call_extras& extras) {
    line_reader reader;
    session calculator(extras.unit_definitions);
    std::unique_ptr<hint_writer> hints = make_hint_writer(extras, err);
    std::string entry;
    out << "Metrify. Type :help for help.\n" << std::flush;
    while (read_entry(reader, entry)) {
        if (entry == ":quit")
            break;
        if (entry == ":help") {
            out << help_text;
        } else if (entry == ":restart") {
            calculator.start_over();
            hints = make_hint_writer(extras, err);
            out << "Everything is forgotten.\n";
        } else {
            const std::string listing = calculator.enter(entry);
            out << listing << std::flush;
            if (hints)
                hints->explain_listing(listing);
        }
        out << std::flush;
    }
    return 0;
}

} // namespace metrify
