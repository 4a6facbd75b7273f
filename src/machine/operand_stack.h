#pragma once

// The operand stack of an expression, and the context that every rule of the parser and every operator
// receives. Intentional: an empty stack pops as a cleared record, so a missing operand is 0.

#include "machine/code_list.h"
#include "units/dim_value.h"

#include <array>
#include <cstddef>
#include <vector>

namespace metrify {

/// One entry, a value or a unit scale. There is no tag: the instructions determine which. A scale has its
/// factor in comp[0]; a value has no offset.
struct stck_value {
    dim_value value;
    double offset = 0.0;
};

/// A stack without a limit; the first entries need no allocation.
class operand_stack {
  public:
    operand_stack() {} // NOLINT: not defaulted, so that the first entries are not initialized
    operand_stack(const operand_stack&) = delete;
    operand_stack& operator=(const operand_stack&) = delete;

    std::size_t depth() const { return depth_; }
    void clear() { depth_ = 0; }

    /// A new entry on top, not initialized. Moves all entries if the capacity is exhausted.
    stck_value& push() {
        if (depth_ == capacity_)
            grow();
        return entries_[depth_++];
    }
    /// Removes the top entry, which must exist.
    void drop() { --depth_; }
    /// The entry `below` entries under the top, which must exist.
    stck_value& top(std::size_t below = 0) { return entries_[depth_ - 1 - below]; }

    /// Adds cleared entries at the bottom until there are at least count entries.
    void require(std::size_t count) {
        if (depth_ < count)
            fill_bottom(count);
    }

  private:
    void grow();
    void fill_bottom(std::size_t count);

    // Not initialized: that would take a large part of a short statement's time.
    static constexpr std::size_t first_capacity = 8;
    alignas(stck_value) std::array<std::byte, first_capacity * sizeof(stck_value)> first_;
    std::vector<stck_value> grown_;
    stck_value* entries_ = reinterpret_cast<stck_value*>(first_.data());
    std::size_t depth_ = 0;
    std::size_t capacity_ = first_capacity;
};

/// Context of the parser's rules and the operators.
struct compile_ctx {
    operand_stack stack;
    dim_value result;          // of the latest statement
    code_list* code = nullptr; // receives the instructions; null if they are not recorded
    int nesting = 0;           // open brackets and parentheses
};

/// Records an instruction if instructions are recorded.
template <class... Payload>
void emit_node(std::uint32_t opcode, compile_ctx& ctx, const Payload&... payload) {
    if (ctx.code != nullptr)
        ctx.code->emit(opcode, payload...);
}

inline void push_value(const dim_value& value, compile_ctx& ctx) {
    stck_value& entry = ctx.stack.push();
    entry.value = value;
    entry.offset = 0.0;
}
inline void push_unit_scale(const unit_scale& scale, compile_ctx& ctx) {
    ctx.stack.push() = {{scale.kind, {scale.factor, scale.spare[0], scale.spare[1]}, scale.dim},
                        scale.offset};
}
inline void pop_value(dim_value& out, compile_ctx& ctx) {
    ctx.stack.require(1);
    out = ctx.stack.top().value;
    ctx.stack.drop();
}
inline void pop_unit_scale(unit_scale& out, compile_ctx& ctx) {
    ctx.stack.require(1);
    const stck_value& top = ctx.stack.top();
    out = {
        top.value.kind, top.offset, top.value.comp[0], {top.value.comp[1], top.value.comp[2]}, top.value.dim};
    ctx.stack.drop();
}

} // namespace metrify
