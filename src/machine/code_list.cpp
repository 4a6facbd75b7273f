#include "machine/code_list.h"

namespace metrify {

void code_list::append(const code_list& other) {
    // The places that the other list's payloads move to depend on what is here already.
    for (const stck_node& node : other.nodes_) {
        switch (node.opcode) {
        case OP_PUSH_VALUE:
            emit(node.opcode, other.value(node));
            break;
        case OP_PUSH_UNIT:
            emit(node.opcode, other.scale(node));
            break;
        case OP_SETVAR:
        case OP_SETVAR_C1:
        case OP_SETVAR_C2:
        case OP_SETVAR_C3:
        case OP_PUSH_VAR:
            emit(node.opcode, &other.variable(node));
            break;
        default:
            emit(node.opcode);
        }
    }
}

void code_list::clear() {
    *this = code_list();
}

} // namespace metrify
