// The add-in in a host process in which one allocation of a call fails, each in turn. The call then ends in
// one of two ways: std::bad_alloc reaches the host, or the process ends with status 1, the message of the
// calculator and its exit handlers. Results that the host had got before are whole in both cases.
//
// exhausted_add_in MODULE           the entries of the add-in
// exhausted_add_in MODULE observed  events, of a module with observers

#include "xllrt/value/host_records.h"

#include <array>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <new>
#include <span>
#include <string>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>

using namespace metrify;

#define METRIFY_VISIBLE extern "C" __attribute__((visibility("default")))

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void __libc_free(void* block);
}

namespace {

// The allocations that succeed before the one that fails; negative: none fails.
long until_failure = -1;
bool has_failed = false;
// The blocks that were allocated and not released.
long live_blocks = 0;

bool IsFailing() {
    const bool fails = until_failure == 0;
    has_failed = has_failed || fails;
    if (until_failure >= 0)
        --until_failure;
    return fails;
}

} // namespace

METRIFY_VISIBLE void* malloc(std::size_t size) {
    void* const block = IsFailing() ? nullptr : __libc_malloc(size);
    live_blocks += block ? 1 : 0;
    return block;
}
METRIFY_VISIBLE void* calloc(std::size_t count, std::size_t size) {
    void* const block = IsFailing() ? nullptr : __libc_calloc(count, size);
    live_blocks += block ? 1 : 0;
    return block;
}
METRIFY_VISIBLE void* realloc(void* old, std::size_t size) {
    void* const block = IsFailing() ? nullptr : __libc_realloc(old, size);
    live_blocks += block && !old ? 1 : 0;
    return block;
}
METRIFY_VISIBLE void free(void* block) {
    live_blocks -= block ? 1 : 0;
    __libc_free(block);
}

// ---- A host that allocates nothing

METRIFY_VISIBLE int MdCallBack12(int function, int /*count*/, XLOPER12* /*arguments*/[], XLOPER12* result) {
    if (result) {
        // The release, the id of a registration, and TRUE. The action of the add-in manager is 1.
        result->xltype = function == xlGetName ? xltypeStr : xltypeNum;
        result->val.num = function == xlCoerce ? 1.0 : 14.0;
        static char16_t path[] = u"\x10"
                                 u"C:\\A\\Metrify.xll";
        if (function == xlGetName)
            result->val.str = path;
    }
    return xlretSuccess;
}
METRIFY_VISIBLE int Excel4v(int function, XLOPER* result, int /*count*/, XLOPER* /*arguments*/[]) {
    static char version[] = "\4"
                            "14.0";
    if (result && function == (xlfGetWorkspace | xlIntl)) {
        result->xltype = xltypeStr;
        result->val.str = version;
    } else if (result) {
        result->xltype = xltypeInt;
        result->val.w = 14;
    }
    return xlretSuccess;
}
METRIFY_VISIBLE int Excel4(int function, XLOPER* result, int count, ...) {
    return Excel4v(function, result, count, nullptr);
}

namespace {

using Convert = XLOPER12* (*)(double, const char16_t*, const char16_t*);
using NarrowConvert = XLOPER* (*)(double, const char*, const char*);
using Release = void (*)(XLOPER12*);
using NarrowRelease = void (*)(XLOPER*);
using Entry = int (*)();
using Macro = XLOPER12* (*)();
using NarrowMacro = XLOPER* (*)();
using Observer = XLOPER12* (*)(std::int32_t, XLOPER12*, XLOPER12*, XLOPER12*);
using NarrowObserver = XLOPER* (*)(std::int32_t, XLOPER*, XLOPER*, XLOPER*);
using Information = XLOPER12* (*)(XLOPER12*);

Convert convert;
NarrowConvert convert_narrow;
Release release_record;
NarrowRelease release_narrow_record;
Entry open_add_in;
Entry close_add_in;
Entry remove_add_in;
Macro run_macro;
NarrowMacro run_narrow_macro;
Observer observe;
NarrowObserver observe_narrowly;
Information describe_add_in;

bool IsText(const XLOPER12& cell, std::u16string_view text) {
    return (cell.xltype & 0x0FFFU) == xltypeStr &&
           std::u16string_view(cell.val.str + 1, cell.val.str[0]) == text;
}
bool IsText(const XLOPER& cell, std::string_view text) {
    return (cell.xltype & 0x0FFFU) == xltypeStr &&
           std::string_view(cell.val.str + 1, static_cast<unsigned char>(cell.val.str[0])) == text;
}
template <class Record, class Text>
bool IsConverted(const Record* row, double number, Text units) {
    return row && (row->xltype & 0x0FFFU) == xltypeMulti && row->val.array.rows == 1 &&
           row->val.array.columns == 2 && row->val.array.lparray[0].val.num == number &&
           IsText(row->val.array.lparray[1], units);
}

// Earlier results, whose memory is the add-in's until they are released.
const XLOPER12* held;
const XLOPER* held_narrow;

void HoldResults() {
    held = convert(3.5, u"ft", u"m");
    held_narrow = convert_narrow(2.5, "ft", "cm");
}
bool AreHeldWhole() {
    return IsConverted(held, 1.0668, u"m\n\n") && IsConverted(held_narrow, 76.2, "cm\n\n");
}

// ---- The calls

struct Case {
    const char* name;
    void (*call)();
    bool is_warm; // the same call was made before, so that all memory of a call that fails is released
    void (*prepare)() = nullptr;
};

template <class Record>
bool IsToBeReleased(const Record* record) {
    return record && (record->xltype & xlbitDLLFree) != 0;
}
void Release12(XLOPER12* record) {
    if (IsToBeReleased(record))
        release_record(record);
}
void Release4(XLOPER* record) {
    if (IsToBeReleased(record))
        release_narrow_record(record);
}

void ConvertAndRelease(const char16_t* in_units, const char16_t* out_units) {
    Release12(convert(2.0, in_units, out_units));
}
void ConvertSimply() {
    ConvertAndRelease(u"ft", u"m");
}
void ConvertWrongly() {
    ConvertAndRelease(u"xyz", u"m");
}
void ConvertNarrowly() {
    Release4(convert_narrow(2.0, "ft", "m"));
}
void ConvertNarrowlyAndWrongly() {
    Release4(convert_narrow(2.0, "xyz", "m"));
}
void RunProgram() {
    ConvertAndRelease(
        u"# a comment, long enough for a text of its own: ....................................\n"
        u"DefUnit(ell, 18 in)\nx = 2\nbegin\ny = x^2 - 9\nend\nsolve(y, x)\nfmin(y, x)\n"
        u"1 foo\nx * [1, 2, 3] ell",
        u"cm");
}
void Open() {
    open_add_in();
}
void Close() {
    close_add_in();
}
void Remove() {
    remove_add_in();
}
void RunMacro() {
    Release12(run_macro());
}
void RunNarrowMacro() {
    Release4(run_narrow_macro());
}
// Before a workbook is closed. Its name is too long for a text without memory of its own.
void Observe() {
    static char16_t name[] = u"\x1B"
                             u"A workbook of some name.xls";
    XLOPER12 workbook{};
    workbook.xltype = xltypeStr;
    workbook.val.str = name;
    Release12(observe(11, &workbook, nullptr, nullptr));
}
void ObserveNarrowly() {
    static char name[] = "\x1B"
                         "A workbook of some name.xls";
    XLOPER workbook{};
    workbook.xltype = xltypeStr;
    workbook.val.str = name;
    Release4(observe_narrowly(11, &workbook, nullptr, nullptr));
}
void Describe() {
    XLOPER12 action{};
    action.xltype = xltypeNum;
    action.val.num = 1.0;
    Release12(describe_add_in(&action));
}

constexpr std::array cases = {
    Case{"a first conversion", ConvertSimply, false},
    Case{"a repeated conversion", ConvertSimply, true},
    Case{"an error", ConvertWrongly, true},
    Case{"a program", RunProgram, true},
    Case{"a first narrow conversion", ConvertNarrowly, false},
    Case{"a repeated narrow conversion", ConvertNarrowly, true},
    Case{"a narrow error", ConvertNarrowlyAndWrongly, true},
    Case{"the opening", Open, false},
    Case{"the macro", RunMacro, true},
    Case{"the narrow macro", RunNarrowMacro, true},
    Case{"the add-in's name", Describe, false, Open},
    Case{"the closing", Close, false, Open},
    Case{"the removal", Remove, false, Open},
    Case{"the removal of a closed add-in", Remove, false,
         [] {
             Open();
             Close();
         }},
};

constexpr std::array cases_with_observers = {
    Case{"the opening", Open, false},
    Case{"an event", Observe, false, Open},
    Case{"a narrow event", ObserveNarrowly, false, Open},
    Case{"the closing", Close, false, Open},
};

// ---- Each in a process of its own

// Without an effect, the allocation that failed is one that the add-in can do without.
enum Outcome : int { succeeded = 10, without_effect = 11, thrown = 12, broken = 13 };
constexpr std::string_view fatal_lines_begin = "Numerical Recipes run-time error ...\nAllocation failure ";
constexpr std::string_view fatal_lines_end = "\n... now exiting to system ...\n\n";

// The exit handlers run: one of them reports what the host still has.
void ReportAtExit() {
    std::fputs(AreHeldWhole() ? "whole" : "damaged", stderr);
}

// The next line that is run resets the calculator, which keeps what a program has defined until then.
void ForgetProgram() {
    XLOPER12* const row = convert(1.0, u"no units", u"");
    release_record(row);
}

int Broken(const char* reason) {
    std::fputs(reason, stderr);
    return broken;
}

int CallWithFailure(const Case& tested, long others) {
    HoldResults();
    if (!AreHeldWhole())
        return Broken("the first call fails");
    if (tested.prepare)
        tested.prepare();
    if (tested.is_warm) {
        release_record(convert(3.5, u"ft", u"m"));
        release_narrow_record(convert_narrow(2.5, "ft", "cm"));
        tested.call();
        ForgetProgram();
        HoldResults();
    }
    std::atexit(ReportAtExit);
    const long before = live_blocks;
    Outcome outcome = succeeded;
    until_failure = others;
    try {
        tested.call();
    } catch (const std::bad_alloc&) {
        outcome = thrown;
    }
    until_failure = -1;
    if (outcome == succeeded && has_failed)
        outcome = without_effect;
    if (outcome == thrown && !AreHeldWhole())
        return Broken("an earlier result is damaged");
    // The add-in goes on.
    ForgetProgram();
    HoldResults();
    if (!AreHeldWhole())
        return Broken("the next call fails");
    return tested.is_warm && live_blocks != before ? Broken("memory is lost") : outcome;
}

struct Ended {
    int status;
    std::string errors;
};

Ended RunInChild(const Case& tested, long others) {
    std::array<int, 2> errors{};
    if (pipe(errors.data()) != 0)
        return {broken, "no pipe"};
    const pid_t child = fork();
    if (child == 0) {
        dup2(errors[1], STDERR_FILENO);
        _exit(CallWithFailure(tested, others));
    }
    close(errors[1]);
    Ended ended{broken, {}};
    std::array<char, 256> piece{};
    for (ssize_t size = 0; (size = read(errors[0], piece.data(), piece.size())) > 0;)
        ended.errors.append(piece.data(), static_cast<std::size_t>(size));
    close(errors[0]);
    int status = 0;
    waitpid(child, &status, 0);
    ended.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    return ended;
}

// The end of the process that is documented: its status, its three lines, and its exit handlers.
bool IsFatalEnd(const Ended& ended) {
    const std::string_view text = ended.errors;
    return ended.status == 1 && text.starts_with(fatal_lines_begin) &&
           text.ends_with(std::string(fatal_lines_end) + "whole");
}

bool Passes(const Case& tested) {
    int exceptions = 0;
    int ends = 0;
    int ignored = 0;
    for (long others = 0;; ++others) {
        std::fflush(stdout); // the child's exit writes what is left in its buffer
        const Ended ended = RunInChild(tested, others);
        if (ended.status == succeeded && ended.errors.empty())
            break;
        if (ended.status == without_effect) {
            ++ignored;
        } else if (ended.status == thrown && ended.errors.empty()) {
            ++exceptions;
        } else if (IsFatalEnd(ended)) {
            ++ends;
        } else {
            std::printf("%s: status %d after %ld allocations: %s\n", tested.name, ended.status, others,
                        ended.errors.c_str());
            return false;
        }
    }
    std::printf("%s: %d exceptions, %d ends of the process, %d without effect\n", tested.name, exceptions,
                ends, ignored);
    return exceptions + ends > 0;
}

template <class Function>
void Find(void* module, const char* name, Function& function) {
    function = reinterpret_cast<Function>(dlsym(module, name));
}

} // namespace

int main(int argc, char** argv) {
    void* const module = dlopen(argc > 1 ? argv[1] : "Metrify.so", RTLD_NOW | RTLD_LOCAL);
    if (!module) {
        std::puts(dlerror());
        return 1;
    }
    Find(module, "Metrify_12", convert);
    Find(module, "Metrify_4", convert_narrow);
    Find(module, "xlAutoFree12", release_record);
    Find(module, "xlAutoFree", release_narrow_record);
    Find(module, "xlAutoOpen", open_add_in);
    Find(module, "xlAutoClose", close_add_in);
    Find(module, "xlAutoRemove", remove_add_in);
    Find(module, "Metrify_Macro_12", run_macro);
    Find(module, "Metrify_Macro_4", run_narrow_macro);
    Find(module, "CXlApp_ObserverEventHandler12", observe);
    Find(module, "CXlApp_ObserverEventHandler4", observe_narrowly);
    Find(module, "xlAddInManagerInfo12", describe_add_in);
    const bool has_observers = argc > 2 && std::string_view(argv[2]) == "observed";
    bool passed = true;
    for (const Case& tested :
         has_observers ? std::span<const Case>(cases_with_observers) : std::span<const Case>(cases))
        passed = Passes(tested) && passed;
    std::puts(passed ? "passed" : "failed");
    return passed ? 0 : 1;
}
