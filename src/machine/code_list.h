#pragma once

// The instructions of a compiled statement, or of a whole function block.

#include "machine/opcodes.h"

#include <cstdint>
#include <vector>

namespace metrify {

/// One instruction. The payload is an index into the list's payloads of the opcode's kind.
struct stck_node {
    std::uint32_t opcode;
    std::uint32_t payload;
};

/// Owner of instructions in order and of their payloads. Variables are referred to by their entries, which
/// live as long as the run: a replay reads their current values.
class code_list {
  public:
    void emit(std::uint32_t opcode) { nodes_.push_back({opcode, 0}); }
    void emit(std::uint32_t opcode, const dim_value& payload) {
        emit_with(opcode, values_, {payload, is_plain_number(payload)});
    }
    void emit(std::uint32_t opcode, const unit_scale& payload) { emit_with(opcode, scales_, payload); }
    void emit(std::uint32_t opcode, var_entry* payload) { emit_with(opcode, variables_, payload); }

    /// Records an instruction with the payload of its kind.
    void emit(opcode code, const payload& of);
    /// Appends the instructions of another list.
    void append(const code_list& other);
    void clear();

    const std::vector<stck_node>& nodes() const { return nodes_; }
    const dim_value& value(const stck_node& node) const { return values_[node.payload].value; }
    /// True if the value is a scalar without units.
    bool is_number(const stck_node& node) const { return values_[node.payload].is_number; }
    const unit_scale& scale(const stck_node& node) const { return scales_[node.payload]; }
    var_entry& variable(const stck_node& node) const { return *variables_[node.payload]; }
    payload payload_of(const stck_node& node) const;

  private:
    struct constant {
        dim_value value;
        bool is_number;
    };

    template <class T>
    void emit_with(std::uint32_t opcode, std::vector<T>& payloads, const T& payload) {
        nodes_.push_back({opcode, static_cast<std::uint32_t>(payloads.size())});
        payloads.push_back(payload);
    }

    std::vector<stck_node> nodes_;
    std::vector<constant> values_;
    std::vector<unit_scale> scales_;
    std::vector<var_entry*> variables_;
};

} // namespace metrify
