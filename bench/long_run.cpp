// Many calls in one process, whose memory must not grow. Usage: metrify-long-run [MILLIONS [THREADS]]; the
// defaults are 10 million calls and 10000 threads one after the other. Exit code 1 if memory grew.

#include "bench/loaded_add_in.h"

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <thread>

namespace {

using metrify_bench::LoadedAddIn;

constexpr int kMillion = 1000000;
constexpr long kTolerance = 512; // KiB, for the caches of the allocator

// Memory of this process in KiB.
long ResidentMemory() {
    constexpr long kPage = 4;
    long total = 0;
    long resident = 0;
    std::ifstream("/proc/self/statm") >> total >> resident;
    return resident * kPage;
}

// Successful and failing conversions with texts of several lengths.
void CallOnce(const LoadedAddIn& add_in, int i) {
    const char16_t* const out_units[] = {u"m", u"kg", u"cm; in", u"nonsense"};
    add_in.Call(i, i % 8 == 0 ? u"" : u"ft", out_units[i % 4]);
}

bool IsFlat(const char* what, long before) {
    const long after = ResidentMemory();
    std::cout << what << ": " << before << " KiB before, " << after << " KiB after\n";
    return after - before <= kTolerance;
}

bool RunCalls(const LoadedAddIn& add_in, int millions) {
    for (int i = 0; i < kMillion / 10; ++i)
        CallOnce(add_in, i);
    const long before = ResidentMemory();
    for (int million = 1; million <= millions; ++million) {
        const auto start = std::chrono::steady_clock::now();
        for (int i = 0; i < kMillion; ++i)
            CallOnce(add_in, i);
        const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
        std::cout << million << " million calls: " << ResidentMemory() << " KiB, " << seconds.count()
                  << " us a call\n";
    }
    return IsFlat("calls", before);
}

bool RunThreads(const LoadedAddIn& add_in, int count) {
    const auto run = [&add_in](int threads) {
        for (int i = 0; i < threads; ++i)
            const std::jthread thread([&add_in, i] { CallOnce(add_in, i); });
    };
    run(count / 10);
    const long before = ResidentMemory();
    run(count);
    return IsFlat("threads", before);
}

int NumberOr(int argc, char** argv, int index, int otherwise) {
    return argc > index ? std::atoi(argv[index]) : otherwise;
}

} // namespace

int main(int argc, char** argv) {
    const long empty = ResidentMemory();
    LoadedAddIn add_in;
    std::cout << "the open add-in and its host: " << ResidentMemory() - empty << " KiB\n";
    const bool calls_are_flat = RunCalls(add_in, NumberOr(argc, argv, 1, 10));
    const bool threads_are_flat = RunThreads(add_in, NumberOr(argc, argv, 2, 10000));
    const metrify::host::LedgerCounts counts = add_in.host().state().ledger.Counts();
    std::cout << "records of the host: " << counts.handed_out << " handed out, " << counts.Outstanding()
              << " not given back, " << counts.refused << " given back wrongly\n";
    const bool is_balanced = counts.Outstanding() == 0 && counts.refused == 0;
    std::cout << (calls_are_flat && threads_are_flat && is_balanced ? "flat\n" : "NOT FLAT\n");
    return calls_are_flat && threads_are_flat && is_balanced ? 0 : 1;
}
