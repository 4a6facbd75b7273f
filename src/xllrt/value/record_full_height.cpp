#include "xllrt/value/record_full_height.h"

#include <memory>
#include <mutex>
#include <set>

namespace metrify {

namespace {

struct Blocks {
    std::mutex mutex;
    std::set<const XLOPER*> cells;
};

// Never destroyed: static values may be released after the destructor of this set would have run.
Blocks& TheBlocks() {
    static Blocks* const blocks = std::make_unique<Blocks>().release();
    return *blocks;
}

} // namespace

bool IsFullHeight(const XLOPER* cells) {
    Blocks& blocks = TheBlocks();
    const std::lock_guard lock(blocks.mutex);
    return blocks.cells.contains(cells);
}

void NoteFullHeight(const XLOPER* cells) {
    Blocks& blocks = TheBlocks();
    const std::lock_guard lock(blocks.mutex);
    blocks.cells.insert(cells);
}

void ForgetFullHeight(const XLOPER* cells) {
    Blocks& blocks = TheBlocks();
    const std::lock_guard lock(blocks.mutex);
    blocks.cells.erase(cells);
}

} // namespace metrify
