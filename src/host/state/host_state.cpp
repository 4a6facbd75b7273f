#include "host/state/host_state.h"

namespace metrify::host {

namespace {

SheetSize SizeOfSheets(int version) {
    using Narrow = RecordFamily<XLOPER>;
    using Wide = RecordFamily<XLOPER12>;
    if (version >= Wide::kFirstVersion)
        return {Wide::kMaxRows, Wide::kMaxColumns};
    return {version >= 8 ? Narrow::kMaxRows : 16384, Narrow::kMaxColumns};
}

// The settings of a host in the United States: the country of the program and of the system, separators,
// letters, brackets, codes of dates and times, formats of currencies and dates.
std::vector<CellValue> UnitedStates() {
    return {1.0,  1.0,        u".", u",",  u",",  u"R",  u"C", u"r", u"c",  u"[",  u"]",  u"{",
            u"}", u",",       u";", u"\\", u"/",  u":",  u"y", u"m", u"d",  u"h",  u"m",  u"s",
            u"$", u"General", 2.0,  1.0,   2.0,   3.0,   3.0,  0.0,  false, false, false, false,
            true, true,       true, false, false, false, true, true, false};
}

} // namespace

HostState::HostState(int host_version)
    : version(host_version), books(SizeOfSheets(host_version)), international(UnitedStates()) {}

} // namespace metrify::host
