#include "machine/opcodes.h"

#include "machine/function_dispatch.h"
#include "machine/operators.h"
#include "machine/variables.h"

namespace metrify {

namespace {

// The handlers of instructions that are not operators.

template <void (*operation)(compile_ctx&, text_str*&)>
void operate(const payload&, compile_ctx& ctx, text_str*& err) {
    operation(ctx, err);
}

void start_statement(const payload&, compile_ctx& ctx, text_str*&) {
    dim_clear(ctx.result);
}

void push_constant(const payload& of, compile_ctx& ctx, text_str*&) {
    push_value(*of.value, ctx);
}

void push_scale(const payload& of, compile_ctx& ctx, text_str*&) {
    push_unit_scale(*of.scale, ctx);
}

void push_variable(const payload& of, compile_ctx& ctx, text_str*&) {
    push_value(of.variable->value, ctx);
}

// Pushes what the variable holds after the assignment: for a component the whole vector.
template <int component>
void set_variable(const payload& of, compile_ctx& ctx, text_str*&) {
    pop_value(ctx.result, ctx);
    setvar(*of.variable, ctx.result, component);
    push_value(of.variable->value, ctx);
}

void call_function(const payload&, compile_ctx& ctx, text_str*& err) {
    dim_value record;
    pop_value(record, ctx);
    const packed_call call = unpack_three_ints(record);
    call_func_by_number(call.function, call.call_class, call.count, ctx, err);
}

void make_vector(const payload&, compile_ctx& ctx, text_str*& err) {
    dim_value record;
    pop_value(record, ctx);
    stck_make_vector(ctx, unpack_three_ints(record).count, err);
}

void pop_result(const payload&, compile_ctx& ctx, text_str*&) {
    pop_value(ctx.result, ctx);
}

constexpr int counted = counted_by_record;
constexpr payload_kind none = payload_kind::none;
constexpr payload_kind value = payload_kind::value;
constexpr payload_kind scale = payload_kind::scale;
constexpr payload_kind variable = payload_kind::variable;

} // namespace

// clang-format off
constexpr std::array<opcode_row, opcode_count> opcode_table = {{
    // opcode          name             payload   pops     pushes  on quantities                  on numbers
    {OP_NOP,           "NOP",           none,     0,       0,      start_statement,               nullptr},
    {OP_PUSH_VALUE,    "PUSH_VALUE",    value,    0,       1,      push_constant,                 nullptr},
    {OP_PUSH_UNIT,     "PUSH_UNIT",     scale,    0,       1,      push_scale,                    nullptr},
    {OP_ADD,           "ADD",           none,     2,       1,      operate<stck_add>,             add},
    {OP_SUB,           "SUB",           none,     2,       1,      operate<stck_subtract>,        subtract},
    {OP_MUL,           "MUL",           none,     2,       1,      operate<stck_multiply>,        multiply},
    {OP_DIV,           "DIV",           none,     2,       1,      operate<stck_divide>,          divide},
    {OP_POW,           "POW",           none,     2,       1,      operate<stck_exponentiate>,    raise},
    {OP_NEGATE,        "NEGATE",        none,     1,       1,      operate<stck_negate>,          negate},
    {OP_SETVAR,        "SETVAR",        variable, 1,       1,      set_variable<0>,               nullptr},
    {OP_SETVAR_C1,     "SETVAR_C1",     variable, 1,       1,      set_variable<1>,               nullptr},
    {OP_SETVAR_C2,     "SETVAR_C2",     variable, 1,       1,      set_variable<2>,               nullptr},
    {OP_SETVAR_C3,     "SETVAR_C3",     variable, 1,       1,      set_variable<3>,               nullptr},
    {OP_PUSH_VAR,      "PUSH_VAR",      variable, 0,       1,      push_variable,                 nullptr},
    {OP_CALL_FUNC,     "CALL_FUNC",     none,     counted, 1,      call_function,                 nullptr},
    {OP_MAKE_VECTOR,   "MAKE_VECTOR",   none,     counted, 1,      make_vector,                   nullptr},
    {OP_UNIT_ASSIGN,   "UNIT_ASSIGN",   none,     2,       1,      operate<stck_unit_assignment>, assign_scale},
    {OP_REQUEST_UNITS, "REQUEST_UNITS", none,     2,       1,      operate<stck_request_units>,   nullptr},
    {OP_POP_RESULT,    "POP_RESULT",    none,     1,       0,      pop_result,                    nullptr},
}};
// clang-format on

} // namespace metrify
