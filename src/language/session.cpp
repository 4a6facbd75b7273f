#include "language/session.h"

#include "language/driver.h"
#include "language/expression.h"
#include "language/unit_definitions.h"

#include <utility>

namespace metrify {

namespace {

bool is_same_value(const dim_value& a, const dim_value& b) {
    return a.kind == b.kind && a.comp == b.comp && a.dim == b.dim;
}

} // namespace

session::session(std::string unit_definitions) : unit_definitions_(std::move(unit_definitions)) {
    start_over();
}

// The block refers to the text by address, so the old text is released after the move. A vector keeps its
// address when it is assigned by move.
void session::append_text(std::string_view entry) {
    constexpr std::string_view end("\n\n\0", 3);
    std::vector<char> grown;
    grown.reserve(text_.size() + entry.size() + end.size());
    grown.insert(grown.end(), text_.begin(), text_.end());
    grown.insert(grown.end(), entry.begin(), entry.end());
    grown.insert(grown.end(), end.begin(), end.end());
    move_block_text(text_.data(), grown.data());
    text_ = std::move(grown);
}

std::string session::enter(std::string_view entry) {
    const calculator_scope scope(*calculator_);
    interruption_->clear();
    calculator_->has_reported_interruption = false;
    const interruption_scope obeys(*interruption_);
    calculator_->before_statement.is_kept = true;
    // The parser's guard stops a program for good; here it stops one entry.
    reset_expression_state();
    const std::size_t begin = text_.size();
    append_text(entry);
    const listing shown = run_further_lines(text_.data() + begin);
    was_interrupted_ = calculator_->has_failed && interruption_->is_requested();
    if (block_needs_text_from(text_.data() + begin))
        text_.pop_back(); // the terminator
    else
        text_.resize(begin);
    std::string text(shown.view());
    // Between two statements, and before the first one, none of them reports it.
    if (was_interrupted_ && !calculator_->has_reported_interruption)
        text.append("       ").append(interruption_message).append("\n");
    return text;
}

void session::keep_result_as(std::string_view name) {
    const calculator_scope scope(*calculator_);
    const var_entry* const known = find_var(name);
    const bool is_ours = known != nullptr && kept_ && is_same_value(known->value, *kept_);
    cursor at(name.data(), name.data() + name.size());
    dim_value unit;
    if (!calculator_->has_result || (known != nullptr && !is_ours) || find_user_unit(at, unit))
        return;
    kept_ = calculator_->result;
    find_or_add_var(name).value = *kept_;
}

std::vector<std::string> session::defined_names() const {
    std::vector<std::string> names = calculator_->variables.names();
    for (std::string& unit : calculator_->units.user_units.units.names())
        names.push_back(std::move(unit));
    return names;
}

bool session::is_continued(std::string_view entry) {
    const std::size_t line = entry.rfind('\n') + 1; // 0 for a single line
    const std::string_view last = entry.substr(line);
    const std::size_t hash = last.find('#');
    const std::size_t backslash = last.find('\\');
    return backslash != std::string_view::npos && backslash < hash;
}

void session::start_over() {
    calculator_ = std::make_unique<calculator>();
    kept_.reset();
    text_.clear();
    const calculator_scope scope(*calculator_);
    define_units(unit_definitions_);
}

} // namespace metrify
