#pragma once

// The function block of a run: the lines between `begin` and `end`. The instructions of its statements are
// kept for the solvers, and its text can be run again for a listing.

#include "base/cursor.h"
#include "machine/code_list.h"
#include "machine/number_program.h"

#include <string_view>

namespace metrify {

enum class block_state { none, open, closed };

struct func_block {
    block_state state = block_state::none;
    bool recording = false;
    bool listing = false;           // its text is being run for a listing
    cursor text_start;              // after the word `begin`
    const char* text_end = nullptr; // after the word `end`
    code_list code;
    number_program numbers; // refers to the code
};

/// Removes the block and releases its instructions.
void reset_func_block();

/// With the cursor after the keyword: starts a new block, which replaces the old one.
void begin_func_block(const cursor& expptr);
/// With the cursor after the keyword: closes an open block; otherwise only stops recording.
void end_func_block(const cursor& expptr);

bool is_block_recording();
bool is_block_defined();   // begun, whether ended or not
bool is_block_closed();    // begun and ended
bool is_definition_open(); // begun and not ended

/// True if the block is still open or its text extends beyond the position.
bool block_needs_text_from(const char* position);
/// To be called when the text that the block is in has been copied to another address; both copies exist.
void move_block_text(const char* from, const char* to);

/// Appends a statement's instructions to the block. Only while the block is recording.
void store_block_code(const code_list& list);
const code_list& block_code();
/// The same, prepared for evaluation once the block is closed.
const number_program& block_numbers();

/// Runs the lines from a cursor to the end of its text and appends their listing to out; the prefix precedes
/// the statement numbers.
using line_runner = void (*)(std::string_view prefix, cursor expptr, text_str*& out, text_str*& err);

/// Runs the text of a closed block again and appends the header and the listing to out. Writes
/// nothing without a closed block.
void run_block_listing(std::string_view header, std::string_view prefix, line_runner run, text_str*& out,
                       text_str*& err);

} // namespace metrify
