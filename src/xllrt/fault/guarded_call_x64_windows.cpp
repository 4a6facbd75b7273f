#ifdef __x86_64__

#include "xllrt/fault/fault_code_windows.h"
#include "xllrt/fault/guarded_call.h"

#include <cstddef>
#include <cstring>
#include <malloc.h>
#include <windows.h>

// A guard is an ordinary frame with an exception handler, so that the handlers of inner frames are called
// first: code called from here that handles its own faults, in particular the host's, still does. The
// compiler has no syntax for such frames, so this one is written in assembly.
//
// The unwinder resumes at .Lfault_of_guarded_call with the frame's stack pointer. The filter has stored the
// code in the frame by then.
asm(R"(
    .text
    .globl  metrify_guarded_call
    .def    metrify_guarded_call; .scl 2; .type 32; .endef
    .seh_proc metrify_guarded_call
metrify_guarded_call:
    subq    $40, %rsp
    .seh_stackalloc 40
    .seh_endprologue
    movq    %rcx, %rax
    movq    %rdx, %rcx
.Lbegin_of_guarded_call:
    call    *%rax
    nop
.Lend_of_guarded_call:
    movl    $0, 32(%rsp)
.Lfault_of_guarded_call:
    movl    32(%rsp), %eax
    addq    $40, %rsp
    ret
    .seh_handler __C_specific_handler, @except
    .seh_handlerdata
    .long   1
    .rva    .Lbegin_of_guarded_call, .Lend_of_guarded_call
    .rva    metrify_fault_filter, .Lfault_of_guarded_call
    .text
    .seh_endproc
)");

extern "C" std::uint32_t metrify_guarded_call(void (*body)(void*), void* context);

extern "C" __attribute__((used)) LONG metrify_fault_filter(EXCEPTION_POINTERS* exception, void* frame) {
    constexpr std::size_t kCodeOffset = 32;
    const std::uint32_t code = exception->ExceptionRecord->ExceptionCode;
    if (!metrify::IsFault(code))
        return EXCEPTION_CONTINUE_SEARCH;
    std::memcpy(static_cast<std::byte*>(frame) + kCodeOffset, &code, sizeof code);
    return EXCEPTION_EXECUTE_HANDLER;
}

namespace metrify {

std::uint32_t CallGuarded(void (*body)(void*), void* context) {
    // After a stack overflow this much stack must be left for finding the guard and unwinding to it.
    ULONG guarantee = 32 * 1024;
    SetThreadStackGuarantee(&guarantee);
    const std::uint32_t code = metrify_guarded_call(body, context);
    if (code == kFaultStackOverflow) {
        // The page that caught the overflow is used up; without another, the next one would end the process.
        _resetstkoflw();
    }
    return code;
}

} // namespace metrify

#endif
