#include "xllrt/gate/host_primitives.h"

#include "xllrt/gate/host_version.h"
#include "xllrt/value/record_family.h"

#include <array>
#include <atomic>
#include <cstdarg>

namespace metrify {

namespace {

HostPrimitives current_primitives;

// Two threads that look it up at the same time store the same pointer.
std::atomic<Excel12Entry> current_entry = nullptr;

// The wide entry, looked up while it is unknown.
Excel12Entry WideEntry() {
    Excel12Entry entry = current_entry.load(std::memory_order_relaxed);
    if (!entry && current_primitives.find_entry) {
        entry = current_primitives.find_entry();
        current_entry.store(entry, std::memory_order_relaxed);
    }
    return entry;
}

} // namespace

void ConnectHost(const HostPrimitives& primitives) {
    current_primitives = primitives;
    current_entry.store(nullptr, std::memory_order_relaxed);
    SetHostVersion(0);
}

const HostPrimitives& Primitives() {
    return current_primitives;
}

int Excel4v(int function, XLOPER* result, int count, XLOPER* arguments[]) {
    const Excel4vFunction excel4v = Primitives().excel4v;
    return excel4v ? excel4v(function, result, count, arguments) : xlretFailed;
}

int Excel12(int function, XLOPER12* result, int count, ...) {
    const Excel12Entry entry = WideEntry();
    if (!entry)
        return xlretFailed;
    constexpr int most = RecordFamily<XLOPER12>::kMaxArguments;
    if (count < 0 || count > most)
        return xlretInvCount;
    std::array<XLOPER12*, most> arguments;
    std::va_list list;
    va_start(list, count);
    for (int i = 0; i < count; ++i)
        arguments[static_cast<std::size_t>(i)] = va_arg(list, XLOPER12*);
    va_end(list);
    return entry(function, count, arguments.data(), result);
}

int Excel12v(int function, XLOPER12* result, int count, XLOPER12* arguments[]) {
    const Excel12Entry entry = WideEntry();
    return entry ? entry(function, count, arguments, result) : xlretFailed;
}

extern "C" void METRIFY_HOST_CALL SetExcel12EntryPt(Excel12Entry entry) {
    if (!WideEntry())
        current_entry.store(entry, std::memory_order_relaxed);
}

} // namespace metrify
