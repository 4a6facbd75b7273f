// Many calls of the loaded add-in in one process, whose memory must not grow: from several threads at once,
// and with the module loaded and unloaded again and again.
//
// Usage: metrify-soak [CALLS [LOADS]], both as numbers such as 1e8; otherwise a million and a thousand. Exit
// status 1 if memory grew or a result changed.

#include "host/core/host.h"
#include "host/program/program_platform.h"
#include "tests/soak/resident_memory.h"
#include "xllrt/value/record_family.h"

#include <array>
#include <atomic>
#include <barrier>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace metrify;
using metrify_soak::ResidentMemory;

constexpr unsigned kThreads = 8;
// A few pages, for what the system keeps of a process.
constexpr std::size_t kTolerance = std::size_t{64} * 1024;
// What a module leaves when it is unloaded. On Windows it contains the thread library, which does not release
// its description of threads.
#ifdef _WIN32
constexpr std::size_t kLeftByLoad = std::size_t{4} * 1024;
#else
constexpr std::size_t kLeftByLoad = 0;
#endif

#ifdef _WIN32
// A real host always has this library of its interface in memory, which the module imports.
class HostInterface {
  public:
    HostInterface() {
        std::filesystem::path path(host::ModuleBesideProgram());
        std::string error;
        library_ = host::LoadAddInModule(path.replace_filename("XLCall32.dll").string(), error);
        if (!library_)
            throw std::runtime_error("the host's interface was not loaded: " + error);
    }

  private:
    std::unique_ptr<host::AddInModule> library_;
};
#endif

class LoadedAddIn {
  public:
    explicit LoadedAddIn(host::Host& host) : host_(host) {
        std::string error;
        if (!host_.Load(host::ModuleBesideProgram(), error))
            throw std::runtime_error("the add-in was not loaded: " + error);
        // A thread that has called the add-in keeps its state until it ends.
        bool is_open = false;
        std::jthread([&] { is_open = host_.CallEntryPoint("xlAutoOpen") == 1; }).join();
        if (!is_open)
            throw std::runtime_error("the add-in did not open");
        convert = Find<Convert>("Metrify_12");
        release = Find<Release>("xlAutoFree12");
    }
    LoadedAddIn(const LoadedAddIn&) = delete;
    LoadedAddIn& operator=(const LoadedAddIn&) = delete;
    ~LoadedAddIn() {
        std::jthread([this] { host_.CallEntryPoint("xlAutoClose"); }).join();
        host_.Unload();
    }

    using Convert = XLOPER12*(METRIFY_HOST_CALL*)(double, const char16_t*, const char16_t*);
    using Release = void(METRIFY_HOST_CALL*)(XLOPER12*);
    Convert convert;
    Release release;

  private:
    template <class Entry>
    Entry Find(const char* name) {
        return reinterpret_cast<Entry>(host_.state().module->Find(name));
    }

    host::Host& host_;
};

struct Arguments {
    double val;
    const char16_t* in_units;
    const char16_t* out_units;
};

// Conversions, errors, vectors, several requests, user units and a solved equation.
constexpr std::array<Arguments, 12> kArguments = {{
    {3.5, u"ft", u"m"},
    {20.0, u"degC", u"degF"},
    {60.0, u"miles/hour", u"FPS"},
    {2.0, u"yard + 2 ft", u"m; cm"},
    {3.5, u"ft", u"kg"},
    {3.5, u"xyz", u"m"},
    {1.0, u"m", u"nonsense"},
    {1.0, u"* [1,2,3] m", u""},
    {2.0, u"* magnitude([3, 4, 0] ft)", u"in"},
    {1.0, u"\nDefUnit(ell, 18 in)\nv = [1, 2, 3] ell", u"cm"},
    {9.0, u"\nbegin\nx = 2\ny = x^2 - 9\nend\nsolve(y, x)", u""},
    {1.0, u"* sqrt(-1) * (((", u"m"},
}};

// A number that differs if the result does. Nothing is allocated.
std::uint64_t DigestOf(const XLOPER12& record, std::uint64_t digest = 0xCBF29CE484222325) {
    const auto add = [&digest](std::uint64_t value) { digest = (digest ^ value) * 0x100000001B3; };
    add(TypeOf(record));
    if (TypeOf(record) == xltypeNum) {
        std::uint64_t bits = 0;
        std::memcpy(&bits, &record.val.num, sizeof bits);
        add(bits);
    }
    if (TypeOf(record) == xltypeStr)
        for (const char16_t unit : TextOf(record))
            add(unit);
    if (TypeOf(record) == xltypeMulti)
        for (std::size_t i = 0; i < CellCountOf(record); ++i)
            digest = DigestOf(record.val.array.lparray[i], digest);
    return digest;
}

std::uint64_t DigestOfCall(const LoadedAddIn& add_in, const Arguments& arguments) {
    XLOPER12* const result = add_in.convert(arguments.val, arguments.in_units, arguments.out_units);
    const std::uint64_t digest = DigestOf(*result);
    if ((result->xltype & xlbitDLLFree) != 0)
        add_in.release(result);
    return digest;
}

bool IsFlat(const char* what, std::size_t early, std::size_t late, std::size_t allowed = 0) {
    std::cout << what << ": " << early / 1024 << " KiB at 10 %, " << late / 1024 << " KiB at the end\n";
    return late <= early + allowed + kTolerance;
}

// The digests of all results, from a thread of its own.
std::array<std::uint64_t, kArguments.size()> Digests(const LoadedAddIn& add_in) {
    std::array<std::uint64_t, kArguments.size()> digests{};
    std::jthread([&] {
        for (std::size_t i = 0; i < kArguments.size(); ++i)
            digests[i] = DigestOfCall(add_in, kArguments[i]);
    }).join();
    return digests;
}

bool IsBalanced(host::Host& host) {
    const host::LedgerCounts counts = host.state().ledger.Counts();
    if (counts.Outstanding() == 0 && counts.refused == 0)
        return true;
    std::cout << "values of the host: " << counts.handed_out << " handed out, " << counts.Outstanding()
              << " not given back, " << counts.refused << " given back wrongly\n";
    return false;
}

// All threads wait for each other at 10 % and at the end, while the memory is read. They also do so at the
// beginning, since reading it takes memory at first.
bool RunCalls(std::uint64_t calls) {
    host::Host host(15);
    const LoadedAddIn add_in(host);
    const std::array<std::uint64_t, kArguments.size()> expected = Digests(add_in);
    std::atomic<std::uint64_t> differences = 0;
    std::vector<std::size_t> sizes;
    std::barrier barrier(kThreads, [&sizes]() noexcept { sizes.push_back(ResidentMemory()); });
    sizes.reserve(3);
    const std::uint64_t each = calls / kThreads;
    const auto work = [&](unsigned thread) {
        barrier.arrive_and_wait();
        for (std::uint64_t call = 0; call < each; ++call) {
            if (call == each / 10)
                barrier.arrive_and_wait();
            const auto i = static_cast<std::size_t>((call + thread) % kArguments.size());
            if (DigestOfCall(add_in, kArguments[i]) != expected[i])
                ++differences;
        }
        barrier.arrive_and_wait();
    };
    {
        std::vector<std::jthread> threads;
        for (unsigned thread = 0; thread < kThreads; ++thread)
            threads.emplace_back(work, thread);
    }
    std::cout << each * kThreads << " calls from " << kThreads << " threads, " << differences
              << " with another result\n";
    return IsFlat("calls", sizes[1], sizes[2]) && differences == 0 && IsBalanced(host);
}

// Each with a new host, since one keeps a record of its registrations.
bool RunLoads(std::uint64_t loads) {
    std::size_t early = 0;
    bool is_same = true;
    std::uint64_t first = 0;
    for (std::uint64_t load = 0; load < loads; ++load) {
        if (load == loads / 10)
            early = ResidentMemory();
        host::Host host(15);
        const std::uint64_t digest = Digests(LoadedAddIn(host)).front();
        first = load == 0 ? digest : first;
        is_same = is_same && digest == first && IsBalanced(host);
    }
    std::cout << loads << " loads and unloads" << (is_same ? "\n" : ", with different results\n");
    return IsFlat("loads", early, ResidentMemory(), static_cast<std::size_t>(loads) * kLeftByLoad) && is_same;
}

std::uint64_t NumberOr(int argc, char** argv, int index, std::uint64_t otherwise) {
    double number = 0.0;
    const std::string_view text = argc > index ? argv[index] : "";
    const bool is_number =
        std::from_chars(text.data(), text.data() + text.size(), number).ec == std::errc() && number >= 10.0;
    return is_number ? static_cast<std::uint64_t>(number) : otherwise;
}

} // namespace

int main(int argc, char** argv) {
    try {
#ifdef _WIN32
        const HostInterface host_interface;
#endif
        const bool calls_are_flat = RunCalls(NumberOr(argc, argv, 1, 1'000'000));
        const bool loads_are_flat = RunLoads(NumberOr(argc, argv, 2, 1000));
        const bool is_passed = calls_are_flat && loads_are_flat;
        std::cout << (is_passed ? "passed\n" : "FAILED\n");
        return is_passed ? 0 : 1;
    } catch (const std::exception& error) {
        std::cerr << "metrify-soak: " << error.what() << '\n';
        return 1;
    }
}
