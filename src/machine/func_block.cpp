#include "machine/func_block.h"

#include "machine/calculator.h"

namespace metrify {

namespace {

func_block& block() {
    return current_calculator().block;
}

} // namespace

void reset_func_block() {
    func_block& b = block();
    if (b.state != block_state::none)
        b = func_block();
}

void begin_func_block(const cursor& expptr) {
    func_block& b = block();
    b.state = block_state::open;
    b.recording = true;
    b.text_start = expptr;
    b.text_end = nullptr;
    b.numbers.clear();
    b.code.clear();
    b.code.emit(OP_NOP);
}

void end_func_block(const cursor& expptr) {
    func_block& b = block();
    b.recording = false;
    if (b.state == block_state::open) {
        b.state = block_state::closed;
        b.text_end = expptr.at;
        b.numbers.prepare(b.code);
    }
}

bool is_block_recording() {
    return block().recording;
}

bool is_block_defined() {
    return block().state != block_state::none;
}

bool is_block_closed() {
    return block().state == block_state::closed;
}

bool is_definition_open() {
    return block().state == block_state::open;
}

bool block_needs_text_from(const char* position) {
    const func_block& b = block();
    return b.state == block_state::open || (b.state == block_state::closed && b.text_end > position);
}

void move_block_text(const char* from, const char* to) {
    func_block& b = block();
    if (b.state != block_state::none)
        b.text_start.at = to + (b.text_start.at - from);
    if (b.state == block_state::closed)
        b.text_end = to + (b.text_end - from);
}

void store_block_code(const code_list& list) {
    block().code.append(list);
}

const code_list& block_code() {
    return block().code;
}

const number_program& block_numbers() {
    return block().numbers;
}

void run_block_listing(std::string_view header, std::string_view prefix, line_runner run, text_str*& out,
                       text_str*& err) {
    func_block& b = block();
    // A `PrintFunc` inside the block is only a line of the listing: the listing is not nested.
    if (b.state != block_state::closed || b.listing)
        return;
    b.listing = true;
    append(out, header);
    append(out, "\n");
    cursor lines(b.text_start.at, b.text_end);
    skip_blanks_and_comments(lines);
    run(prefix, lines, out, err);
    b.listing = false;
}

} // namespace metrify
