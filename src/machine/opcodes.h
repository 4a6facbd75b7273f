#pragma once

// The instructions of the stack machine. The table has one row for each.

#include "machine/number_arithmetic.h"
#include "units/dim_value.h"

#include <array>
#include <cstdint>
#include <string_view>

namespace metrify {

struct compile_ctx;
struct var_entry;

/// The numbers are fixed. The machine ignores numbers from opcode_count on.
enum opcode : std::uint32_t {
    OP_NOP,
    OP_PUSH_VALUE,
    OP_PUSH_UNIT,
    OP_ADD,
    OP_SUB,
    OP_MUL,
    OP_DIV,
    OP_POW,
    OP_NEGATE,
    OP_SETVAR,
    OP_SETVAR_C1,
    OP_SETVAR_C2,
    OP_SETVAR_C3,
    OP_PUSH_VAR,
    OP_CALL_FUNC,
    OP_MAKE_VECTOR,
    OP_UNIT_ASSIGN,
    OP_REQUEST_UNITS,
    OP_POP_RESULT,
    opcode_count,
};

enum class payload_kind : std::uint8_t { none, value, scale, variable };

/// What an instruction refers to. Only the pointer of its kind is set.
struct payload {
    const dim_value* value = nullptr;
    const unit_scale* scale = nullptr;
    var_entry* variable = nullptr;
};

using quantity_handler = void (*)(const payload& of, compile_ctx& ctx, text_str*& err);
using number_handler = bool (*)(number& left, number right);

/// Number of entries popped by an instruction that pops a record with a count and then as many operands.
constexpr int counted_by_record = -1;

struct opcode_row {
    opcode code;
    std::string_view name;
    payload_kind payload;
    int pops, pushes;
    quantity_handler on_quantities; // pops and pushes entries of the operand stack
    number_handler on_numbers;      // null if there is none
};

extern const std::array<opcode_row, opcode_count> opcode_table;

} // namespace metrify
