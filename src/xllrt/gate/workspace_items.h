#pragma once

// The host's international settings: country, letters and separators.

#include "xllrt/value/xl_oper.h"

namespace metrify {

/// Reads an item of the host's international settings, counted from 0. False, with `item` unchanged, if the
/// host does not answer or has no such item.
bool GetWorkspaceItem(std::int32_t index, CXlOper& item);

} // namespace metrify
