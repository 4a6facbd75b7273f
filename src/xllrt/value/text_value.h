#pragma once

#include "xllrt/value/xl_oper.h"

namespace metrify {

/// A value that owns a copy of a text, of either width.
template <class Text>
CXlOper TextValue(const Text& text) {
    CXlOper value;
    value.SetText(text);
    return value;
}

} // namespace metrify
