#pragma once

// What the host tells of its country, its letters and its separators.

#include "xllrt/value/xl_oper.h"

namespace metrify {

/// Reads an item of the host's international settings, counted from 0. False, with `item` as it was, if the
/// host does not answer or has no such item.
bool GetWorkspaceItem(std::int32_t index, CXlOper& item);

} // namespace metrify
