#include "machine/code_list.h"

namespace metrify {

namespace {

payload_kind kind_of(std::uint32_t code) {
    return code < opcode_count ? opcode_table[code].payload : payload_kind::none;
}

} // namespace

void code_list::emit(opcode code, const payload& of) {
    if (of.value != nullptr)
        emit(code, *of.value);
    else if (of.scale != nullptr)
        emit(code, *of.scale);
    else if (of.variable != nullptr)
        emit(code, of.variable);
    else
        emit(code);
}

payload code_list::payload_of(const stck_node& node) const {
    payload of;
    switch (kind_of(node.opcode)) {
    case payload_kind::none:
        break;
    case payload_kind::value:
        of.value = &value(node);
        break;
    case payload_kind::scale:
        of.scale = &scale(node);
        break;
    case payload_kind::variable:
        of.variable = &variable(node);
        break;
    }
    return of;
}

void code_list::append(const code_list& other) {
    // Emitted anew: the indices of the payloads depend on what this list holds already.
    for (const stck_node& node : other.nodes_)
        emit(static_cast<opcode>(node.opcode), other.payload_of(node));
}

void code_list::clear() {
    *this = code_list();
}

} // namespace metrify
