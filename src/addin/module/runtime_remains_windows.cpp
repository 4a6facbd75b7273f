// What the C++ library and the thread library would leave in the host's process when the module, which
// contains them, is unloaded: 73 KiB for exceptions and an index of thread-local storage, of which a process
// has 1088.

#include <array>
#include <atomic>
#include <windows.h>

namespace __gnu_cxx {
/// Releases the library's memory for exceptions. Not declared in a header.
void __freeres();
} // namespace __gnu_cxx

namespace metrify {

namespace {

template <class Function>
Function SystemFunction(const char* module, const char* name) {
    return reinterpret_cast<Function>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA(module), name)));
}

// The allocated indices plus 1; 0 is a free entry.
constinit std::array<std::atomic<DWORD>, 16> allocated{};

void Exchange(DWORD from, DWORD to) {
    for (std::atomic<DWORD>& entry : allocated) {
        DWORD expected = from;
        if (entry.compare_exchange_strong(expected, to))
            return;
    }
}

DWORD WINAPI AllocateIndex() {
    const DWORD index = SystemFunction<decltype(&TlsAlloc)>("kernel32", "TlsAlloc")();
    if (index != TLS_OUT_OF_INDEXES)
        Exchange(0, index + 1);
    return index;
}

BOOL WINAPI FreeIndex(DWORD index) {
    Exchange(index + 1, 0);
    return SystemFunction<decltype(&TlsFree)>("kernel32", "TlsFree")(index);
}

// Constructed first and destroyed last.
class RuntimeRemains {
  public:
    RuntimeRemains() = default;
    RuntimeRemains(const RuntimeRemains&) = delete;
    RuntimeRemains& operator=(const RuntimeRemains&) = delete;
    ~RuntimeRemains() {
        // At the end of the process, the system releases everything.
        if (SystemFunction<BOOLEAN(WINAPI*)()>("ntdll", "RtlDllShutdownInProgress")() != FALSE)
            return;
        __gnu_cxx::__freeres();
        for (const std::atomic<DWORD>& entry : allocated)
            if (const DWORD value = entry)
                FreeIndex(value - 1);
    }
};

__attribute__((init_priority(101))) const RuntimeRemains remains;

} // namespace

// The pointers through which all code of the module calls these functions of the system.
#ifdef __i386__
#define METRIFY_IMPORT(function, bytes) __asm__("__imp__" function "@" bytes)
#else
#define METRIFY_IMPORT(function, bytes) __asm__("__imp_" function)
#endif
extern decltype(&TlsAlloc) allocate_index METRIFY_IMPORT("TlsAlloc", "0");
extern decltype(&TlsFree) free_index METRIFY_IMPORT("TlsFree", "4");
constinit decltype(&TlsAlloc) allocate_index = AllocateIndex;
constinit decltype(&TlsFree) free_index = FreeIndex;

} // namespace metrify
