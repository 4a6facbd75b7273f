#include "xllrt/gate/host_version.h"

#include "xllrt/gate/host_primitives.h"
#include "xllrt/value/plain_answer.h"
#include "xllrt/value/record_family.h"

#include <atomic>

namespace metrify {

namespace {

std::atomic<int> host_version = 0;
std::atomic<bool> host_flag = false;

// The item of xlfGetWorkspace with the version, as text.
constexpr std::int16_t kVersionItem = 2;

XLOPER NarrowInt(std::int16_t value) {
    XLOPER record{};
    record.val.w = value;
    record.xltype = xltypeInt;
    return record;
}

// The version that the host reports, or 0. The wide primitive cannot be used before it is known.
int AskForVersion() {
    XLOPER item = NarrowInt(kVersionItem);
    XLOPER text{};
    if (Excel4(xlfGetWorkspace | xlIntl, &text, &item) != xlretSuccess)
        return 0;
    XLOPER type = NarrowInt(xltypeInt);
    XLOPER version{};
    const int code = Excel4(xlCoerce | xlIntl, &version, &text, &type);
    Excel4(xlFree, nullptr, &text);
    return code == xlretSuccess ? TakeInteger(version).value_or(0) : 0;
}

} // namespace

int HostVersion() {
    return host_version.load(std::memory_order_relaxed);
}

bool HostFlag() {
    return host_flag.load(std::memory_order_relaxed);
}

void SetHostVersion(int version) {
    host_version.store(version, std::memory_order_relaxed);
    host_flag.store(version >= RecordFamily<XLOPER12>::kFirstVersion, std::memory_order_relaxed);
}

void DetectHostVersion() {
    if (HostVersion() == 0)
        SetHostVersion(AskForVersion());
}

void ReleaseToHost(XLOPER& record) {
    Excel4(xlFree, nullptr, &record);
}

void ReleaseToHost(XLOPER12& record) {
    Excel12(xlFree, nullptr, 1, &record);
}

} // namespace metrify
