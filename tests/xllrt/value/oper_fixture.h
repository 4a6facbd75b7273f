#pragma once

// For the tests of values: a family, records made by hand, and a host that logs the records returned to it.

#include "tests/xllrt/gate/scripted_host.h"
#include "tests/xllrt/text/expected_messages.h"
#include "tests/xllrt/value/readable_records.h"
#include "xllrt/fault/exceptions.h"
#include "xllrt/gate/host_version.h"
#include "xllrt/value/record_family.h"
#include "xllrt/value/thread_state.h"
#include "xllrt/value/xl_cell_view.h"

#include <cstdarg>
#include <gtest/gtest.h>

namespace metrify {

/// Values are built wide by default.
class OperTest : public testing::Test {
  protected:
    OperTest() {
        AllocateThreadStates();
        ConnectHost({});
        HostIsWide();
    }
    ~OperTest() override {
        DestroyThreadState();
        ConnectHost({});
    }

    static void HostIsNarrow() { SetHostVersion(11); }
    static void HostIsWide() { SetHostVersion(12); }
};

/// Logs each `xlFree` with the family and the record, which it does not change. Connected as a host of the
/// wide family as long as it exists.
class ReleaseNotes {
  public:
    ReleaseNotes() {
        lines.clear();
        ConnectHost({.excel4 = Note4, .find_entry = FindNote12});
        SetHostVersion(12);
    }
    ~ReleaseNotes() { ConnectHost({}); }
    ReleaseNotes(const ReleaseNotes&) = delete;
    ReleaseNotes& operator=(const ReleaseNotes&) = delete;

    static inline std::vector<std::string> lines;

  private:
    static int Note4(int function, XLOPER* /*result*/, int count, ...) {
        std::va_list list;
        va_start(list, count);
        const XLOPER* record = va_arg(list, XLOPER*);
        va_end(list);
        lines.push_back(Line("4", function, *record));
        return xlretSuccess;
    }
    static int METRIFY_HOST_CALL Note12(int function, int /*count*/, XLOPER12* arguments[],
                                        XLOPER12* /*result*/) {
        lines.push_back(Line("12", function, *arguments[0]));
        return xlretSuccess;
    }
    static Excel12Entry FindNote12() { return Note12; }

    template <class Record>
    static std::string Line(const char* family, int function, const Record& record) {
        const std::string name = function == xlFree ? " xlFree " : " another function ";
        return family + name + Rendered(record);
    }
};

// Records as a host would pass them.

template <class Record>
Record PlainRecord(std::uint16_t type) {
    Record record = Record();
    record.xltype = type;
    return record;
}

/// The text begins with its length.
template <class Record>
Record TextRecord(typename RecordFamily<Record>::Unit* counted) {
    auto record = PlainRecord<Record>(xltypeStr);
    record.val.str = counted;
    return record;
}

template <class Record>
Record ReferenceRecord(typename RecordFamily<Record>::RectangleList& list, IDSHEET sheet = 7) {
    auto record = PlainRecord<Record>(xltypeRef);
    record.val.mref.lpmref = &list;
    record.val.mref.idSheet = sheet;
    return record;
}

template <class Record>
Record SingleReferenceRecord(const typename RecordFamily<Record>::Rectangle& rectangle) {
    auto record = PlainRecord<Record>(xltypeSRef);
    record.val.sref.count = 1;
    record.val.sref.ref = rectangle;
    return record;
}

template <class Record, class Count>
Record ArrayRecord(Record* cells, Count rows, Count columns) {
    auto record = PlainRecord<Record>(xltypeMulti);
    record.val.array.lparray = cells;
    StoreField(record.val.array.rows, rows);
    StoreField(record.val.array.columns, columns);
    return record;
}

/// A list of two rectangles; the second directly follows the declared one.
struct TwoRectangles12 {
    XLMREF12 list;
    XLREF12 second;
};
struct TwoRectangles4 {
    XLMREF list;
    XLREF second;
};

/// The message of the exception that an action throws; fails the test if it throws anything but an
/// `Exception`.
template <class Exception, class Action>
std::string MessageOf(Action action) {
    try {
        action();
    } catch (const Exception& thrown) {
        return thrown.what();
    } catch (...) {
        return "another exception";
    }
    return "nothing was thrown";
}

} // namespace metrify
