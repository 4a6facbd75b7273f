#pragma once

// Records to read from, in both families.

#include "xllrt/value/record_memory.h"

#include <cstdint>
#include <gtest/gtest.h>

namespace metrify {

template <class Record>
Record NumberRecord(double number) {
    Record record{};
    record.xltype = xltypeNum;
    record.val.num = number;
    return record;
}

template <class Record>
Record BoolRecord(bool value) {
    Record record{};
    record.xltype = xltypeBool;
    record.val.xbool = value ? 1 : 0;
    return record;
}

template <class Record>
Record IntRecord(int value) {
    Record record{};
    record.xltype = xltypeInt;
    StoreField(record.val.w, value);
    return record;
}

template <class Record>
Record ErrorRecord(int code) {
    Record record{};
    record.xltype = xltypeErr;
    StoreField(record.val.err, code);
    return record;
}

template <class Record>
Record BareRecord(std::uint16_t type) {
    Record record{};
    record.xltype = type;
    return record;
}

using Families = testing::Types<XLOPER, XLOPER12>;

} // namespace metrify
