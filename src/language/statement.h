#pragma once

// One line of the language, from its heading to its result.
//
//   line    := special-line | statement { ";" [ request ] } [ comment ]
//   request := "MKS" | "cgs" | "FPS" | "IPS" | unit-expression

#include "base/cursor.h"
#include "machine/code_list.h"
#include "machine/func_block.h"
#include "units/dim_value.h"

#include <string_view>

namespace metrify {

/// The outcome of a line.
enum class line_result {
    special, // begins with a keyword; it has no instructions
    failed,  // err holds the message
    compiled,
};

/// Compiles and runs the line that starts at line_start, with the cursor on its first character that isn't
/// blank, and writes heading, echo and results to out. The cursor ends at the line's end. Instructions are
/// appended to code unless it is null. The counter is the statement's number; special lines increment it once
/// more. `run` writes the listing of the function block.
line_result compile_one_full_line(std::string_view prefix, int& counter, const cursor& line_start,
                                  cursor& expptr, line_runner run, text_str*& out, code_list* code,
                                  text_str*& err);

} // namespace metrify
