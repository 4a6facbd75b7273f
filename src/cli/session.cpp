#include "cli/session.h"

#include "language/driver.h"
#include "machine/solver_binding.h"

namespace metrify {

namespace {

// The guard of the parser holds for the rest of a run once it has spoken. An entry that sets it off is
// refused rather than kept, or every later entry would fail.
constexpr std::string_view guard_message = "ERROR: Cannot parse line -- check nesting";

} // namespace

std::string session::enter(std::string_view entry) {
    // An empty line keeps the entry's comments apart from those of the entry before.
    std::string program = program_ + std::string(entry) + "\n\n";
    // What the run of the entry before has left due is written by this one in its own time.
    teardown_solver_binding();
    const listing whole = interpret_dimensional_input_lines(program.c_str());
    const std::string_view all = whole.view();
    const bool goes_on = all.substr(0, listing_.size()) == listing_;
    std::string added(goes_on ? all.substr(listing_.size()) : all);
    if (added.find(guard_message) == std::string::npos) {
        program_ = std::move(program);
        listing_ = all;
    }
    return added;
}

bool session::is_continued(std::string_view entry) {
    const std::size_t line = entry.rfind('\n') + 1; // 0 for a single line
    const std::string_view last = entry.substr(line);
    const std::size_t hash = last.find('#');
    const std::size_t backslash = last.find('\\');
    return backslash != std::string_view::npos && backslash < hash;
}

void session::start_over() {
    program_.clear();
    listing_.clear();
}

} // namespace metrify
