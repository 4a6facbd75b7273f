#pragma once

// A host whose answers to chosen calls are false: of another type than the function has, malformed, or a
// value together with the code of a failure.

#include "host/core/argument_list.h"
#include "host/core/host.h"
#include "host/core/host_exports.h"
#include "host/sheet/cell_records.h"
#include "xllrt/gate/host_window.h"
#include "xllrt/value/record_memory.h"

#include <algorithm>
#include <array>
#include <cstdarg>
#include <functional>
#include <limits>
#include <list>
#include <optional>
#include <utility>

namespace metrify {

enum class Lie {
    number,
    text,
    long_text,
    null_text,
    truth,
    integer,
    error,
    empty_cell,
    missing,
    no_type,
    unknown_type,
    macro_flow,
    big_data,
    reference,
    null_reference,
    huge_reference,
    array,
    null_array,
    huge_array,
    negative_array,
    empty_array,
    array_of_malformed_cells,
    failure_with_text,
    failure_with_array,
    no_value,
};
inline constexpr int kLies = static_cast<int>(Lie::no_value) + 1;

/// Each code of a failure, and two that no host has.
inline constexpr std::array kFailureCodes = {1, 2, 4, 8, 16, 32, 64, 128, 256, 512, 1024, -1};

/// Connected to the runtime of this process while it exists. Truthful answers are those of the host below it.
class LyingHost final : public WindowPlatform {
  public:
    /// Asked at each call: the lie, or nothing for the truth.
    using Choice = std::function<std::optional<Lie>(int function)>;

    LyingHost(int version, Choice choice) : host_(version), choice_(std::move(choice)) {
        Current() = this;
        ConnectHost({.excel4 = Excel4, .excel4v = Excel4v, .find_entry = [] { return &Excel12; }});
        ReplaceWindows(this);
    }
    LyingHost(const LyingHost&) = delete;
    LyingHost& operator=(const LyingHost&) = delete;
    ~LyingHost() override {
        ReplaceWindows(nullptr);
        ConnectHost({});
        Current() = nullptr;
    }

    host::Host& host() { return host_; }

    /// The code of the failures from now on.
    void FailWith(int code) { failure_ = code; }

    /// True if the values that came with the code of a failure are as they were: they are not the add-in's.
    bool AreRefusedValuesWhole() const {
        const auto is_whole = [](const auto& refused) {
            host::CellValue value;
            return host::ReadRecord(refused.owner.record, 0, value) && value == refused.value;
        };
        return std::all_of(narrow_refused_.begin(), narrow_refused_.end(), is_whole) &&
               std::all_of(wide_refused_.begin(), wide_refused_.end(), is_whole);
    }

    WindowHandle FindWindowOfClass(const char* /*class_name*/, std::uint16_t /*low_bits*/) const override {
        return nullptr;
    }
    bool AskYesNo(WindowHandle /*owner*/, const std::u16string& /*text*/,
                  const std::u16string& /*title*/) const override {
        return true;
    }

  private:
    // A value that came with the code of a failure.
    template <class Record>
    struct Refused {
        RecordOwner<Record> owner;
        host::CellValue value;
    };

    static LyingHost*& Current() {
        static LyingHost* current = nullptr;
        return current;
    }
    static int METRIFY_HOST_CALL Excel12(int function, int count, XLOPER12* arguments[], XLOPER12* result) {
        return Current()->Answer(function, result, count, arguments);
    }
    static int METRIFY_HOST_CALL Excel4v(int function, XLOPER* result, int count, XLOPER* arguments[]) {
        return Current()->Answer(function, result, count, arguments);
    }
    static int Excel4(int function, XLOPER* result, int count, ...) {
        std::va_list list;
        va_start(list, count);
        const int code = host::CallWithList(Excel4v, function, result, count, list);
        va_end(list);
        return code;
    }

    int CallHost(int function, XLOPER* result, int count, XLOPER** arguments) {
        return host_.Call4(function, result, count, arguments);
    }
    int CallHost(int function, XLOPER12* result, int count, XLOPER12** arguments) {
        return host_.Call12(function, result, count, arguments);
    }

    template <class Record>
    int Answer(int function, Record* result, int count, Record** arguments) {
        // A record without memory is nothing to the host's accounts.
        if (function == xlFree && count == 1 && !host::MemoryOf(*arguments[0]))
            return xlretSuccess;
        // No host has so many cells.
        if (std::any_of(arguments, arguments + count,
                        [](const Record* argument) { return IsHuge(*argument); }))
            return xlretInvXloper;
        const int code = CallHost(function, result, count, arguments);
        const std::optional<Lie> lie = function != xlFree && result ? choice_(function) : std::nullopt;
        if (!lie)
            return code;
        if (code == xlretSuccess && host::MemoryOf(*result))
            host_.state().ledger.TakeBack(*result);
        *result = Record();
        return Tell(*lie, *result);
    }

    template <class Record>
    static bool IsHuge(const Record& argument) {
        return TypeOf(argument) == xltypeSRef &&
               argument.val.sref.ref.rwLast >= RecordFamily<Record>::kMaxRows - 1;
    }

    template <class Record>
    int Tell(Lie lie, Record& result) {
        if (lie == Lie::failure_with_text)
            return Refuse(u"a value that is not to be read", result);
        if (lie == Lie::failure_with_array)
            return Refuse(host::RowOf({1.0, u"a value that is not to be read"}), result);
        if (const std::optional<host::CellValue> value = WellFormed(lie)) {
            host::WriteRecord(*value, result);
            host_.state().ledger.HandOut(result);
        } else {
            Malform(lie, result);
        }
        return xlretSuccess;
    }

    template <class Record>
    int Refuse(host::CellValue value, Record& result) {
        Refused<Record>& refused = RefusedOf(result).emplace_back();
        refused.value = std::move(value);
        host::WriteRecord(refused.value, refused.owner.record);
        result = refused.owner.record;
        return failure_;
    }
    std::list<Refused<XLOPER>>& RefusedOf(const XLOPER& /*record*/) { return narrow_refused_; }
    std::list<Refused<XLOPER12>>& RefusedOf(const XLOPER12& /*record*/) { return wide_refused_; }

    static std::optional<host::CellValue> WellFormed(Lie lie) {
        using host::CellValue;
        switch (lie) {
        case Lie::number:
            return CellValue(0.25);
        case Lie::text:
            return CellValue(u"text");
        case Lie::long_text:
            return CellValue(std::u16string(32767, u'x'));
        case Lie::truth:
            return CellValue(true);
        case Lie::integer:
            return CellValue(std::int32_t{-1});
        case Lie::error:
            return CellValue(host::CellError{4711});
        case Lie::empty_cell:
            return CellValue();
        case Lie::missing:
            return CellValue(host::MissingArgument{});
        case Lie::reference:
            return CellValue(host::Reference{1, {{0, 1, 0, 1}, {5, 5, 5, 5}}, false});
        case Lie::array:
            return CellValue(host::RowOf({u"a", 2.0, true}));
        default:
            return std::nullopt;
        }
    }

    template <class Record>
    static void MakeHuge(Record& result, int sign) {
        result.xltype = xltypeMulti;
        StoreField(result.val.array.rows, sign * std::numeric_limits<std::int32_t>::max());
        StoreField(result.val.array.columns, sign * std::numeric_limits<std::int32_t>::max());
    }

    template <class Record>
    void Malform(Lie lie, Record& result) {
        switch (lie) {
        case Lie::null_text:
            result.xltype = xltypeStr;
            break;
        case Lie::unknown_type:
            // No type, and a mark that the add-in gives its own records.
            result.xltype = 0x0200 | xlbitDLLFree;
            break;
        case Lie::macro_flow:
            result.xltype = xltypeFlow;
            break;
        case Lie::big_data:
            result.xltype = xltypeBigData;
            result.val.bigdata.cbData = std::numeric_limits<std::int32_t>::max();
            break;
        case Lie::null_reference:
            result.xltype = xltypeRef;
            break;
        case Lie::huge_reference:
            result.xltype = xltypeSRef;
            result.val.sref.count = 1;
            StoreField(result.val.sref.ref.rwLast, std::numeric_limits<std::int32_t>::max());
            StoreField(result.val.sref.ref.colLast, std::numeric_limits<std::int32_t>::max());
            break;
        case Lie::null_array:
            result.xltype = xltypeMulti;
            result.val.array.rows = 1;
            result.val.array.columns = 11;
            break;
        case Lie::huge_array:
            MakeHuge(result, 1);
            break;
        case Lie::negative_array:
            MakeHuge(result, -1);
            break;
        case Lie::empty_array:
            result.xltype = xltypeMulti;
            break;
        case Lie::array_of_malformed_cells:
            MalformCells(result);
            break;
        default:
            break; // a code of success without a value
        }
    }

    // As many cells as there are international settings.
    template <class Record>
    void MalformCells(Record& result) {
        constexpr std::array lies = {Lie::null_text, Lie::huge_array, Lie::null_reference, Lie::macro_flow};
        MakeCells(result, {1, 11});
        for (std::size_t i = 0; i < CellCountOf(result); ++i)
            Malform(lies[i % lies.size()], result.val.array.lparray[i]);
        host_.state().ledger.HandOut(result);
    }

    host::Host host_;
    Choice choice_;
    int failure_ = xlretFailed;
    std::list<Refused<XLOPER>> narrow_refused_;
    std::list<Refused<XLOPER12>> wide_refused_;
};

} // namespace metrify
