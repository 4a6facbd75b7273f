// The published numbers of the host interface as literals: the add-in, the stand-in host and the other tests
// share one set of constants, so a wrong one would not be noticed anywhere else.

#include "host/core/host_functions.h"
#include "xllrt/gate/host_alert.h"
#include "xllrt/gate/host_gate.h"
#include "xllrt/registry/registration_arguments.h"
#include "xllrt/value/record_family.h"
#include "xllrt/value/xl_oper.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <vector>

namespace {

using namespace metrify;

struct NumberRow {
    const char* name;
    long actual;
    long published;
};

void ExpectPublished(const std::vector<NumberRow>& rows) {
    for (const NumberRow& row : rows)
        EXPECT_EQ(row.actual, row.published) << row.name;
}

TEST(HostNumbers, of_functions) {
    ExpectPublished({
        {"xlFree", xlFree, 16384},
        {"xlAbort", xlAbort, 16385},
        {"xlCoerce", xlCoerce, 16386},
        {"xlGetHwnd", xlGetHwnd, 16392},
        {"xlGetName", xlGetName, 16393},
        {"xlfSetName", xlfSetName, 88},
        {"xlfActiveCell", xlfActiveCell, 94},
        {"xlfGetFormula", xlfGetFormula, 106},
        {"xlfRegister", xlfRegister, 149},
        {"xlfAddMenu", xlfAddMenu, 152},
        {"xlfAddCommand", xlfAddCommand, 153},
        {"xlfDeleteMenu", xlfDeleteMenu, 158},
        {"xlfGetCell", xlfGetCell, 185},
        {"xlfGetWorkspace", xlfGetWorkspace, 186},
        {"xlfUnregister", xlfUnregister, 201},
        {"xlfFormulaConvert", xlfFormulaConvert, 241},
        {"xlfInfo", xlfInfo, 244},
        {"xlfRtd", xlfRtd, 379},
    });
}

TEST(HostNumbers, of_commands) {
    ExpectPublished({
        {"xlcClose", xlcClose, 32784},
        {"xlcFormula", xlcFormula, 32864},
        {"xlcFormulaArray", xlcFormulaArray, 32866},
        {"xlcAlert", xlcAlert, 32886},
        {"xlcNew", xlcNew, 32887},
        {"xlcEcho", xlcEcho, 32909},
        {"xlcFunctionWizard", xlcFunctionWizard, 33218},
    });
}

TEST(HostNumbers, of_options_in_a_function_number) {
    ExpectPublished({
        {"xlIntl", xlIntl, 0x2000},
        {"xlSpecial", xlSpecial, 0x4000},
        {"xlCommand", xlCommand, 0x8000},
    });
}

TEST(HostNumbers, of_types) {
    ExpectPublished({
        {"xltypeNum", xltypeNum, 1},
        {"xltypeStr", xltypeStr, 2},
        {"xltypeBool", xltypeBool, 4},
        {"xltypeRef", xltypeRef, 8},
        {"xltypeErr", xltypeErr, 16},
        {"xltypeFlow", xltypeFlow, 32},
        {"xltypeMulti", xltypeMulti, 64},
        {"xltypeMissing", xltypeMissing, 128},
        {"xltypeNil", xltypeNil, 256},
        {"xltypeSRef", xltypeSRef, 1024},
        {"xltypeInt", xltypeInt, 2048},
        {"xltypeBigData", xltypeBigData, 2050},
        {"xlbitXLFree", xlbitXLFree, 0x1000},
        {"xlbitDLLFree", xlbitDLLFree, 0x4000},
        {"kTypeMask", kTypeMask, 0x0DFF},
    });
}

TEST(HostNumbers, of_errors) {
    ExpectPublished({
        {"xlerrNull", xlerrNull, 0},
        {"xlerrDiv0", xlerrDiv0, 7},
        {"xlerrValue", xlerrValue, 15},
        {"xlerrRef", xlerrRef, 23},
        {"xlerrName", xlerrName, 29},
        {"xlerrNum", xlerrNum, 36},
        {"xlerrNA", xlerrNA, 42},
    });
}

TEST(HostNumbers, of_return_codes) {
    ExpectPublished({
        {"xlretSuccess", xlretSuccess, 0},
        {"xlretAbort", xlretAbort, 1},
        {"xlretInvXlfn", xlretInvXlfn, 2},
        {"xlretInvCount", xlretInvCount, 4},
        {"xlretInvXloper", xlretInvXloper, 8},
        {"xlretStackOvfl", xlretStackOvfl, 16},
        {"xlretFailed", xlretFailed, 32},
        {"xlretUncalced", xlretUncalced, 64},
        {"kRetNotThreadSafe", host::kRetNotThreadSafe, 128},
        {"kRetWrongFamily", kRetWrongFamily, 256},
    });
}

TEST(HostNumbers, of_limits) {
    ExpectPublished({
        {"rows of a narrow array", RecordFamily<XLOPER>::kMaxRows, 65536},
        {"columns of a narrow array", RecordFamily<XLOPER>::kMaxColumns, 256},
        {"rows of a wide array", RecordFamily<XLOPER12>::kMaxRows, 1048576},
        {"columns of a wide array", RecordFamily<XLOPER12>::kMaxColumns, 16384},
        {"bytes of a narrow text", static_cast<long>(RecordFamily<XLOPER>::kMaxText), 255},
        {"units of a wide text", static_cast<long>(RecordFamily<XLOPER12>::kMaxText), 32767},
        {"arguments of a narrow call", RecordFamily<XLOPER>::kMaxArguments, 30},
        {"arguments of a wide call", RecordFamily<XLOPER12>::kMaxArguments, 255},
        {"argument helps of a narrow registration", static_cast<long>(kMaxNarrowArgumentHelps), 20},
        {"first wide version", RecordFamily<XLOPER12>::kFirstVersion, 12},
        {"alert with a question", kAlertQuestion, 1},
        {"alert of a failure", kAlertFailure, 3},
    });
}

TEST(HostNumbers, of_the_state_of_a_value) {
    ExpectPublished({
        {"kOwned4", CXlOper::kOwned4, 0x01},
        {"kHostOwned4", CXlOper::kHostOwned4, 0x02},
        {"kValid4", CXlOper::kValid4, 0x04},
        {"kOwned12", CXlOper::kOwned12, 0x10},
        {"kHostOwned12", CXlOper::kHostOwned12, 0x20},
        {"kValid12", CXlOper::kValid12, 0x40},
    });
}

// ---- Layouts

struct LayoutRow {
    const char* name;
    std::size_t actual;
    std::size_t with_pointers_of_32_bits;
    std::size_t with_pointers_of_64_bits;
};

void ExpectLayout(const std::vector<LayoutRow>& rows) {
    for (const LayoutRow& row : rows) {
        EXPECT_EQ(row.actual,
                  sizeof(void*) == 8 ? row.with_pointers_of_64_bits : row.with_pointers_of_32_bits)
            << row.name;
    }
}

TEST(HostNumbers, of_the_layout_of_rectangles) {
    ExpectLayout({
        {"size of XLREF", sizeof(XLREF), 6, 6},
        {"rwFirst", offsetof(XLREF, rwFirst), 0, 0},
        {"rwLast", offsetof(XLREF, rwLast), 2, 2},
        {"colFirst", offsetof(XLREF, colFirst), 4, 4},
        {"colLast", offsetof(XLREF, colLast), 5, 5},
        {"size of XLMREF", sizeof(XLMREF), 8, 8},
        {"count", offsetof(XLMREF, count), 0, 0},
        {"reflft", offsetof(XLMREF, reflft), 2, 2},
        {"size of XLREF12", sizeof(XLREF12), 16, 16},
        {"wide rwFirst", offsetof(XLREF12, rwFirst), 0, 0},
        {"wide rwLast", offsetof(XLREF12, rwLast), 4, 4},
        {"wide colFirst", offsetof(XLREF12, colFirst), 8, 8},
        {"wide colLast", offsetof(XLREF12, colLast), 12, 12},
        {"size of XLMREF12", sizeof(XLMREF12), 20, 20},
        {"wide count", offsetof(XLMREF12, count), 0, 0},
        {"wide reflft", offsetof(XLMREF12, reflft), 4, 4},
    });
}

TEST(HostNumbers, of_the_layout_of_a_narrow_record) {
    ExpectLayout({
        {"size", sizeof(XLOPER), 16, 24},
        {"alignment", alignof(XLOPER), 8, 8},
        {"xltype", offsetof(XLOPER, xltype), 8, 16},
        {"size of xltype", sizeof(XLOPER::xltype), 2, 2},
        {"num", offsetof(XLOPER, val.num), 0, 0},
        {"str", offsetof(XLOPER, val.str), 0, 0},
        {"xbool", offsetof(XLOPER, val.xbool), 0, 0},
        {"err", offsetof(XLOPER, val.err), 0, 0},
        {"w", offsetof(XLOPER, val.w), 0, 0},
        {"size of xbool", sizeof(XLOPER{}.val.xbool), 2, 2},
        {"size of err", sizeof(XLOPER{}.val.err), 2, 2},
        {"size of w", sizeof(XLOPER{}.val.w), 2, 2},
        {"sref.count", offsetof(XLOPER, val.sref.count), 0, 0},
        {"sref.ref", offsetof(XLOPER, val.sref.ref), 2, 2},
        {"mref.lpmref", offsetof(XLOPER, val.mref.lpmref), 0, 0},
        {"mref.idSheet", offsetof(XLOPER, val.mref.idSheet), 4, 8},
        {"array.lparray", offsetof(XLOPER, val.array.lparray), 0, 0},
        {"array.rows", offsetof(XLOPER, val.array.rows), 4, 8},
        {"array.columns", offsetof(XLOPER, val.array.columns), 6, 10},
        {"flow.rw", offsetof(XLOPER, val.flow.rw), 4, 8},
        {"flow.col", offsetof(XLOPER, val.flow.col), 6, 10},
        {"flow.xlflow", offsetof(XLOPER, val.flow.xlflow), 7, 11},
        {"bigdata.h", offsetof(XLOPER, val.bigdata.h), 0, 0},
        {"bigdata.cbData", offsetof(XLOPER, val.bigdata.cbData), 4, 8},
    });
}

TEST(HostNumbers, of_the_layout_of_a_wide_record) {
    ExpectLayout({
        {"size", sizeof(XLOPER12), 32, 32},
        {"alignment", alignof(XLOPER12), 8, 8},
        {"xltype", offsetof(XLOPER12, xltype), 24, 24},
        {"size of xltype", sizeof(XLOPER12::xltype), 4, 4},
        {"num", offsetof(XLOPER12, val.num), 0, 0},
        {"str", offsetof(XLOPER12, val.str), 0, 0},
        {"size of a unit of text", sizeof(XCHAR), 2, 2},
        {"xbool", offsetof(XLOPER12, val.xbool), 0, 0},
        {"err", offsetof(XLOPER12, val.err), 0, 0},
        {"w", offsetof(XLOPER12, val.w), 0, 0},
        {"size of xbool", sizeof(XLOPER12{}.val.xbool), 4, 4},
        {"size of err", sizeof(XLOPER12{}.val.err), 4, 4},
        {"size of w", sizeof(XLOPER12{}.val.w), 4, 4},
        {"sref.count", offsetof(XLOPER12, val.sref.count), 0, 0},
        {"sref.ref", offsetof(XLOPER12, val.sref.ref), 4, 4},
        {"mref.lpmref", offsetof(XLOPER12, val.mref.lpmref), 0, 0},
        {"mref.idSheet", offsetof(XLOPER12, val.mref.idSheet), 4, 8},
        {"array.lparray", offsetof(XLOPER12, val.array.lparray), 0, 0},
        {"array.rows", offsetof(XLOPER12, val.array.rows), 4, 8},
        {"array.columns", offsetof(XLOPER12, val.array.columns), 8, 12},
        {"flow.rw", offsetof(XLOPER12, val.flow.rw), 4, 8},
        {"flow.col", offsetof(XLOPER12, val.flow.col), 8, 12},
        {"flow.xlflow", offsetof(XLOPER12, val.flow.xlflow), 12, 16},
        {"bigdata.h", offsetof(XLOPER12, val.bigdata.h), 0, 0},
        {"bigdata.cbData", offsetof(XLOPER12, val.bigdata.cbData), 4, 8},
    });
}

} // namespace
