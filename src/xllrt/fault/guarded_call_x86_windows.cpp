#ifdef __i386__

#include "xllrt/fault/fault_code_windows.h"
#include "xllrt/fault/guarded_call.h"

#include <malloc.h>
#include <windows.h>

namespace metrify {

namespace {

// A guard is a link in the thread's chain of exception handlers, like all other frames with a handler, so
// that the handlers of inner frames are called first.
struct FaultScope;

using Handler = EXCEPTION_DISPOSITION(__cdecl*)(EXCEPTION_RECORD*, FaultScope*, CONTEXT*, void*);

struct FaultScope {
    FaultScope* earlier; // the system reads this member and the next
    Handler handler;
    volatile std::uint32_t code;
    void* resume[5];
};

// The head of the chain is at fs:0, which the system reads at any fault. The compiler does not know this, so
// it must be kept from removing or reordering these accesses, and from delaying other writes past them. The
// functions of <windows.h> for this segment do not prevent that.
FaultScope* InnermostScope() {
    FaultScope* scope = nullptr;
    asm volatile("movl %%fs:0, %0" : "=r"(scope) : : "memory");
    return scope;
}

void SetInnermostScope(FaultScope* scope) {
    asm volatile("movl %0, %%fs:0" : : "r"(scope) : "memory");
}

EXCEPTION_DISPOSITION __cdecl OnException(EXCEPTION_RECORD* record, FaultScope* scope, CONTEXT* /*context*/,
                                          void* /*dispatcher*/) {
    constexpr DWORD kUnwinding = 0x02 | 0x04;
    if ((record->ExceptionFlags & kUnwinding) != 0 || !IsFault(record->ExceptionCode))
        return ExceptionContinueSearch;
    // Registers do not survive the unwinding of the frames inside.
    FaultScope* volatile kept = scope;
    kept->code = record->ExceptionCode;
    RtlUnwind(scope, nullptr, record, nullptr);
    __builtin_longjmp(kept->resume, 1);
}

// Makes a scope the innermost one while it exists, also when an exception passes.
class ScopeLink {
  public:
    explicit ScopeLink(FaultScope& scope) : scope_(scope) {
        scope.earlier = InnermostScope();
        scope.handler = OnException;
        SetInnermostScope(&scope);
    }
    ScopeLink(const ScopeLink&) = delete;
    ScopeLink& operator=(const ScopeLink&) = delete;
    ~ScopeLink() { SetInnermostScope(scope_.earlier); }

  private:
    FaultScope& scope_;
};

// The jump returns into this call, so the compiler must not inline it.
__attribute__((noinline)) std::uint32_t CallInScope(FaultScope& scope, void (*body)(void*), void* context) {
    if (__builtin_setjmp(scope.resume) != 0)
        return scope.code;
    body(context);
    return 0;
}

} // namespace

std::uint32_t CallGuarded(void (*body)(void*), void* context) {
    FaultScope scope{};
    std::uint32_t code = 0;
    {
        const ScopeLink link(scope);
        code = CallInScope(scope, body, context);
    }
    if (code == kFaultStackOverflow) {
        // The page that caught the overflow is used up; without another, the next one would end the process.
        _resetstkoflw();
    }
    return code;
}

} // namespace metrify

#endif
