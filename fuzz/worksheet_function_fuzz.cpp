// Arbitrary numbers and unit texts through both entries of the worksheet function, as a host calls them.
//
// Input: eight bytes of the number, then the two texts, separated by a zero byte.

#include "addin/worksheet_function.h"
#include "fuzz/input.h"
#include "host/core/host.h"
#include "host/core/host_exports.h"
#include "host/sheet/cell_records.h"
#include "machine/solver_binding.h"
#include "xllrt/gate/host_version.h"
#include "xllrt/text/code_page.h"
#include "xllrt/value/return_record.h"
#include "xllrt/value/thread_state.h"

#include <cstdint>
#include <cstring>
#include <string>

namespace {

using namespace metrify;
using namespace metrify_fuzz;
using host::CellValue;

constexpr int kNarrowHost = 11;
constexpr int kWideHost = 15;

// The content of the cells. The record is returned as by a host.
template <class Record>
CellValue Take(Record* record, void (*auto_free)(Record*)) {
    CellValue value;
    Require(host::ReadRecord(*record, 0, value));
    if ((record->xltype & xlbitDLLFree) != 0)
        auto_free(record);
    return value;
}

// A number or a message in the first cell, a text in the second; or a single text, for a fault.
void CheckForm(const CellValue& value) {
    if (const auto* text = value.As<std::u16string>())
        return Require(text->starts_with(u"#ERROR: "));
    const auto* cells = value.As<host::CellArray>();
    Require(cells && cells->rows == 1 && cells->columns == 2);
    const bool is_error = cells->At(0, 0).Is<std::u16string>();
    Require(is_error || cells->At(0, 0).Is<double>());
    Require(cells->At(0, 1).Is<std::u16string>());
    Require(!is_error || cells->At(0, 1) == CellValue(u""));
}

// A wide cell's text as a narrow one holds it.
CellValue Cut(const CellValue& cell) {
    constexpr std::size_t kLongest = 255;
    const auto* text = cell.As<std::u16string>();
    return text ? CellValue(text->substr(0, kLongest)) : cell;
}

bool AreSame(const CellValue& left, const CellValue& right) {
    const auto* l = left.As<double>();
    const auto* r = right.As<double>();
    return l && r ? std::memcmp(l, r, sizeof *l) == 0 : left == right;
}

void CheckSame(const CellValue& wide, const CellValue& narrow) {
    const auto* wide_cells = wide.As<host::CellArray>();
    const auto* narrow_cells = narrow.As<host::CellArray>();
    if (!wide_cells || !narrow_cells)
        return Require(Cut(wide) == narrow);
    for (std::int32_t column = 0; column < 2; ++column)
        Require(AreSame(Cut(wide_cells->At(0, column)), narrow_cells->At(0, column)));
}

CellValue CallWide(double val, const std::u16string& in_units, const std::u16string& out_units) {
    SetHostVersion(kWideHost);
    return Take(Metrify_12(val, in_units.c_str(), out_units.c_str()), AutoFree12);
}

CellValue CallNarrow(double val, const std::string& in_units, const std::string& out_units) {
    SetHostVersion(kNarrowHost);
    return Take(Metrify_4(val, in_units.c_str(), out_units.c_str()), AutoFree4);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const bool has_slot = AllocateThreadStates();
    Require(has_slot);
    Input input(data, size);
    const double val = input.TakeNumber();
    const std::string in_units = input.TakeText();
    const std::string out_units = input.TakeText();

    host::Host host(kWideHost);
    ConnectHost(host::NewestHostPrimitives());
    // A call does not depend on the previous one, except for a report that is still due.
    teardown_solver_binding();
    const CellValue wide = CallWide(val, ToWide(in_units), ToWide(out_units));
    teardown_solver_binding();
    const CellValue narrow = CallNarrow(val, in_units, out_units);
    CheckForm(wide);
    CheckForm(narrow);
    CheckSame(wide, narrow);
    const host::LedgerCounts counts = host.state().ledger.Counts();
    Require(counts.Outstanding() == 0 && counts.refused == 0);
    return 0;
}
