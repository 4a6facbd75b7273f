#include "machine/operand_stack.h"

#include <algorithm>

namespace metrify {

void operand_stack::grow() {
    std::vector<stck_value> larger(2 * capacity_);
    std::copy_n(entries_, depth_, larger.begin());
    grown_.swap(larger);
    entries_ = grown_.data();
    capacity_ = grown_.size();
}

void operand_stack::fill_bottom(std::size_t count) {
    while (depth_ < count) {
        push() = {};
        std::rotate(entries_, entries_ + depth_ - 1, entries_ + depth_);
    }
}

} // namespace metrify
