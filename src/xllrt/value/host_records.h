#pragma once

// The host's C interface: the two record families, and the numbers of types, errors, functions and return
// codes. Layouts, values and names are the published ones.

#include "xllrt/text/xchar.h"

#include <cstddef>
#include <cstdint>

namespace metrify {

/// The id of a sheet, as wide as a pointer.
using IDSHEET = std::uintptr_t;

// ---- The narrow family: hosts before version 12, and what a later host still accepts.

struct XLREF {
    std::uint16_t rwFirst;
    std::uint16_t rwLast;
    std::uint8_t colFirst;
    std::uint8_t colLast;
};

/// A list of rectangles: `count` of them, starting at `reflft`.
struct XLMREF {
    std::uint16_t count;
    XLREF reflft[1];
};

struct XLOPER {
    union {
        alignas(8) double num;
        char* str; ///< the first byte is the length
        std::uint16_t xbool;
        std::uint16_t err;
        std::int16_t w;
        struct {
            std::uint16_t count; ///< always 1
            XLREF ref;
        } sref;
        struct {
            XLMREF* lpmref;
            IDSHEET idSheet;
        } mref;
        struct {
            XLOPER* lparray;
            std::uint16_t rows;
            std::uint16_t columns;
        } array;
        struct {
            union {
                std::int16_t level;
                std::int16_t tbctrl;
                IDSHEET idSheet;
            } valflow;
            std::uint16_t rw;
            std::uint8_t col;
            std::uint8_t xlflow;
        } flow;
        struct {
            union {
                std::uint8_t* lpbData;
                void* hdata;
            } h;
            std::int32_t cbData;
        } bigdata;
    } val;
    std::uint16_t xltype;
};

// ---- The wide family: version 12 and later.

struct XLREF12 {
    std::int32_t rwFirst;
    std::int32_t rwLast;
    std::int32_t colFirst;
    std::int32_t colLast;
};

/// A list of rectangles: `count` of them, starting at `reflft`.
struct XLMREF12 {
    std::uint16_t count;
    XLREF12 reflft[1];
};

struct XLOPER12 {
    union {
        alignas(8) double num;
        XCHAR* str; ///< the first unit is the length
        std::int32_t xbool;
        std::int32_t err;
        std::int32_t w;
        struct {
            std::uint16_t count; ///< always 1
            XLREF12 ref;
        } sref;
        struct {
            XLMREF12* lpmref;
            IDSHEET idSheet;
        } mref;
        struct {
            XLOPER12* lparray;
            std::int32_t rows;
            std::int32_t columns;
        } array;
        struct {
            union {
                std::int32_t level;
                std::int32_t tbctrl;
                IDSHEET idSheet;
            } valflow;
            std::int32_t rw;
            std::int32_t col;
            std::uint8_t xlflow;
        } flow;
        struct {
            union {
                std::uint8_t* lpbData;
                void* hdata;
            } h;
            std::int32_t cbData;
        } bigdata;
    } val;
    std::uint32_t xltype;
};

// ---- Layouts, for 32 and 64 bits.

inline constexpr bool kPointersOf64Bits = sizeof(void*) == 8;

static_assert(sizeof(void*) == 4 || sizeof(void*) == 8);
static_assert(sizeof(XLREF) == 6 && sizeof(XLREF12) == 16);
static_assert(offsetof(XLREF, rwFirst) == 0 && offsetof(XLREF, rwLast) == 2);
static_assert(offsetof(XLREF, colFirst) == 4 && offsetof(XLREF, colLast) == 5);
static_assert(offsetof(XLREF12, rwFirst) == 0 && offsetof(XLREF12, rwLast) == 4);
static_assert(offsetof(XLREF12, colFirst) == 8 && offsetof(XLREF12, colLast) == 12);
static_assert(sizeof(XLMREF) == 8 && offsetof(XLMREF, reflft) == 2);
static_assert(sizeof(XLMREF12) == 20 && offsetof(XLMREF12, reflft) == 4);

static_assert(alignof(XLOPER) == 8 && alignof(XLOPER12) == 8);
static_assert(sizeof(XLOPER) == (kPointersOf64Bits ? 24 : 16));
static_assert(offsetof(XLOPER, xltype) == (kPointersOf64Bits ? 16 : 8));
static_assert(offsetof(XLOPER, val.sref.ref) == 2);
static_assert(offsetof(XLOPER, val.mref.idSheet) == sizeof(void*));
static_assert(offsetof(XLOPER, val.array.rows) == sizeof(void*));
static_assert(offsetof(XLOPER, val.array.columns) == sizeof(void*) + 2);
static_assert(offsetof(XLOPER, val.flow.rw) == sizeof(void*));
static_assert(offsetof(XLOPER, val.flow.col) == sizeof(void*) + 2);
static_assert(offsetof(XLOPER, val.flow.xlflow) == sizeof(void*) + 3);
static_assert(offsetof(XLOPER, val.bigdata.cbData) == sizeof(void*));

static_assert(sizeof(XLOPER12) == 32);
static_assert(offsetof(XLOPER12, xltype) == 24);
static_assert(offsetof(XLOPER12, val.sref.ref) == 4);
static_assert(offsetof(XLOPER12, val.mref.idSheet) == sizeof(void*));
static_assert(offsetof(XLOPER12, val.array.rows) == sizeof(void*));
static_assert(offsetof(XLOPER12, val.array.columns) == sizeof(void*) + 4);
static_assert(offsetof(XLOPER12, val.flow.rw) == sizeof(void*));
static_assert(offsetof(XLOPER12, val.flow.col) == sizeof(void*) + 4);
static_assert(offsetof(XLOPER12, val.flow.xlflow) == sizeof(void*) + 8);
static_assert(offsetof(XLOPER12, val.bigdata.cbData) == sizeof(void*));

// ---- Types. A type word may also have one of the two memory marks.

inline constexpr std::uint16_t xltypeNum = 0x0001;
inline constexpr std::uint16_t xltypeStr = 0x0002;
inline constexpr std::uint16_t xltypeBool = 0x0004;
inline constexpr std::uint16_t xltypeRef = 0x0008;
inline constexpr std::uint16_t xltypeErr = 0x0010;
inline constexpr std::uint16_t xltypeFlow = 0x0020;
inline constexpr std::uint16_t xltypeMulti = 0x0040;
inline constexpr std::uint16_t xltypeMissing = 0x0080;
inline constexpr std::uint16_t xltypeNil = 0x0100;
inline constexpr std::uint16_t xltypeSRef = 0x0400;
inline constexpr std::uint16_t xltypeInt = 0x0800;
inline constexpr std::uint16_t xltypeBigData = xltypeStr | xltypeInt;

/// The host owns the memory that the record points at; it is returned by `xlFree`.
inline constexpr std::uint16_t xlbitXLFree = 0x1000;
/// The add-in owns it, and the host has it released by `xlAutoFree` or `xlAutoFree12`.
inline constexpr std::uint16_t xlbitDLLFree = 0x4000;

/// The bits of a type word that hold the type.
inline constexpr std::uint16_t kTypeMask = 0x0DFF;

// ---- Errors of a cell.

inline constexpr std::uint16_t xlerrNull = 0;
inline constexpr std::uint16_t xlerrDiv0 = 7;
inline constexpr std::uint16_t xlerrValue = 15;
inline constexpr std::uint16_t xlerrRef = 23;
inline constexpr std::uint16_t xlerrName = 29;
inline constexpr std::uint16_t xlerrNum = 36;
inline constexpr std::uint16_t xlerrNA = 42;

// ---- Return codes of a host call.

inline constexpr int xlretSuccess = 0;
inline constexpr int xlretAbort = 1;
inline constexpr int xlretInvXlfn = 2;
inline constexpr int xlretInvCount = 4;
inline constexpr int xlretInvXloper = 8;
inline constexpr int xlretStackOvfl = 16;
inline constexpr int xlretFailed = 32;
inline constexpr int xlretUncalced = 64;

// ---- Functions: the special ones of the C interface, worksheet and macro functions, commands.

inline constexpr int xlSpecial = 0x4000;
inline constexpr int xlIntl = 0x2000; ///< option: texts are in the form of US English
inline constexpr int xlCommand = 0x8000;

inline constexpr int xlFree = 0 | xlSpecial;
inline constexpr int xlAbort = 1 | xlSpecial;
inline constexpr int xlCoerce = 2 | xlSpecial;
inline constexpr int xlGetHwnd = 8 | xlSpecial;
inline constexpr int xlGetName = 9 | xlSpecial;

inline constexpr int xlfSetName = 88;
inline constexpr int xlfActiveCell = 94;
inline constexpr int xlfGetFormula = 106;
inline constexpr int xlfRegister = 149;
inline constexpr int xlfAddMenu = 152;
inline constexpr int xlfAddCommand = 153;
inline constexpr int xlfDeleteMenu = 158;
inline constexpr int xlfGetCell = 185;
inline constexpr int xlfGetWorkspace = 186;
inline constexpr int xlfUnregister = 201;
inline constexpr int xlfFormulaConvert = 241;
inline constexpr int xlfInfo = 244;
inline constexpr int xlfRtd = 379;

inline constexpr int xlcClose = 16 | xlCommand;
inline constexpr int xlcFormula = 96 | xlCommand;
inline constexpr int xlcFormulaArray = 98 | xlCommand;
inline constexpr int xlcAlert = 118 | xlCommand;
inline constexpr int xlcNew = 119 | xlCommand;
inline constexpr int xlcEcho = 141 | xlCommand;
inline constexpr int xlcFunctionWizard = 450 | xlCommand;

} // namespace metrify
