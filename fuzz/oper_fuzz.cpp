// Sequences of operations on a few values. Each is compared with a simple model of the content of both record
// families, and a host accounts for the records that it hands out.

#include "fuzz/input.h"
#include "host/core/host.h"
#include "host/core/host_exports.h"
#include "host/sheet/cell_records.h"
#include "xllrt/fault/exceptions.h"
#include "xllrt/gate/host_gate.h"
#include "xllrt/gate/host_version.h"
#include "xllrt/text/code_page.h"
#include "xllrt/value/return_record.h"
#include "xllrt/value/thread_state.h"
#include "xllrt/value/xl_cell_view.h"

#include <array>
#include <cstdint>
#include <cstdlib>
#include <optional>

namespace {

using namespace metrify;
using namespace metrify_fuzz;
using host::CellValue;

constexpr std::size_t kSlots = 4;
constexpr int kNarrowHost = 11;
constexpr int kWideHost = 15;

// A short text, or one about as long as the limit of the narrow family.
std::u16string TakeText(Input& input) {
    std::u16string text;
    const unsigned length = input.Take(6);
    for (unsigned i = 0; i < length; ++i)
        text += static_cast<char16_t>(1 + input.Take(255) + (input.Take(8) == 0 ? 0x2100U : 0U));
    if (input.Take(8) == 0)
        text.append(253 + input.Take(5), u'x');
    return text;
}

// The content of a value in both families.
struct Model {
    std::optional<CellValue> narrow;
    std::optional<CellValue> wide;

    std::optional<CellValue>& Side(bool is_wide) { return is_wide ? wide : narrow; }
    void Set(CellValue value) {
        *this = Model();
        Side(HostFlag()) = std::move(value);
    }
};

CellValue NarrowText(const std::u16string& text) {
    return ToWide(ToNarrow(std::u16string_view(text).substr(0, 255)).substr(0, 255));
}

// The value in the narrow family; nothing if that cannot hold it.
std::optional<CellValue> Narrowed(const CellValue& value) {
    if (const auto* text = value.As<std::u16string>()) {
        if (text->size() > 255)
            return std::nullopt;
        return NarrowText(*text);
    }
    if (const auto* integer = value.As<std::int32_t>())
        return CellValue(std::int32_t{static_cast<std::int16_t>(*integer)});
    if (const auto* array = value.As<host::CellArray>()) {
        host::CellArray narrow = *array;
        for (CellValue& cell : narrow.cells) {
            const std::optional<CellValue> turned = Narrowed(cell);
            if (!turned)
                return std::nullopt;
            cell = *turned;
        }
        return CellValue(narrow);
    }
    return value;
}

// New cells of an array have no type, which the host would refuse; they are read as empty here.
template <class Record>
CellValue Read(const Record& record) {
    CellValue value;
    const std::uint16_t type = TypeOf(record);
    if (type == 0)
        return value;
    if (type != xltypeMulti) {
        Require(host::ReadRecord(record, 0, value));
        return value;
    }
    const XlSize size = ArraySizeOf(record);
    host::CellArray array{size.rows, size.columns, {}};
    for (std::size_t i = 0; i < CellCountOf(record); ++i)
        array.cells.push_back(Read(record.val.array.lparray[i]));
    return array;
}

class Session {
  public:
    explicit Session(Input input) : input_(input) {}

    void Run() {
        while (!input_.IsEmpty()) {
            Step(values_[input_.Take(kSlots)]);
            for (const Slot& slot : values_)
                Check(slot);
        }
    }

  private:
    struct Slot {
        CXlOper value;
        Model model;
    };

    static void Check(const Slot& slot) {
        Require(((slot.value.State() & CXlOper::kValid4) != 0) == slot.model.narrow.has_value());
        Require(((slot.value.State() & CXlOper::kValid12) != 0) == slot.model.wide.has_value());
        if (slot.model.narrow)
            Require(Read(*slot.value.Record4()) == *slot.model.narrow);
        if (slot.model.wide)
            Require(Read(*slot.value.Record12()) == *slot.model.wide);
    }

    void Step(Slot& slot) {
        switch (input_.Take(10)) {
        case 0:
            return SetScalar(slot.value, slot.model);
        case 1:
            return SetText(slot);
        case 2:
            return Copy(slot);
        case 3:
            return MakeArray(slot);
        case 4:
            return SetCell(slot);
        case 5:
            slot.value.Free();
            slot.model = Model();
            return;
        case 6:
            return AskHost(slot);
        case 7:
            return Return12(slot);
        case 8:
            return Return4(slot);
        default:
            // Values made for one host are used with another.
            SetHostVersion(HostFlag() ? kNarrowHost : kWideHost);
        }
    }

    void SetScalar(CXlOper& value, Model& model) {
        const std::int32_t integer = input_.TakeInteger();
        switch (input_.Take(5)) {
        case 0:
            value.SetNumber(integer / 16.0);
            return model.Set(integer / 16.0);
        case 1:
            value.SetBool(static_cast<std::uint8_t>(integer & 1));
            return model.Set((integer & 1) != 0);
        case 2:
            value.SetInt(integer);
            return model.Set(HostFlag() ? integer : std::int32_t{static_cast<std::int16_t>(integer)});
        case 3:
            value.SetError(xlerrNA);
            return model.Set(host::CellError{xlerrNA});
        default:
            value.SetMissing();
            return model.Set(host::MissingArgument{});
        }
    }

    void SetText(Slot& slot) {
        const std::u16string text = TakeText(input_);
        if (input_.Take(2) == 0) {
            slot.value.SetText(text);
            slot.model.Set(HostFlag() ? CellValue(text) : NarrowText(text));
        } else {
            const std::string narrow = ToNarrow(text);
            slot.value.SetText(narrow);
            slot.model.Set(ToWide(HostFlag() ? narrow : narrow.substr(0, 255)));
        }
    }

    void Copy(Slot& slot) {
        const Slot& source = values_[input_.Take(kSlots)];
        const bool is_self = &source == &slot;
        if (input_.Take(2) == 0) {
            slot.value = source.value;
            slot.model = source.model;
        } else {
            slot.value.CopyFrom(source.value);
            if (!is_self && source.model.narrow)
                slot.model.narrow = source.model.narrow;
            if (!is_self && source.model.wide)
                slot.model.wide = source.model.wide;
        }
    }

    void MakeArray(Slot& slot) {
        const auto rows = static_cast<std::int32_t>(1 + input_.Take(3));
        const auto columns = static_cast<std::int32_t>(1 + input_.Take(3));
        Require(slot.value.MakeArray(rows, columns));
        host::CellArray array{rows, columns, {}};
        array.cells.resize(static_cast<std::size_t>(rows) * static_cast<std::size_t>(columns));
        slot.model.Set(array);
    }

    void SetCell(Slot& slot) {
        const auto row = static_cast<std::int32_t>(input_.Take(4));
        const auto column = static_cast<std::int32_t>(input_.Take(4));
        const double number = input_.TakeInteger();
        const std::u16string text = TakeText(input_);
        // The wide record is compared.
        const bool is_wide = slot.model.wide.has_value();
        std::optional<CellValue>& side = slot.model.Side(is_wide);
        const auto* old = side ? side->As<host::CellArray>() : nullptr;
        const bool is_inside = old && row < old->rows && column < old->columns;
        if (!old || (slot.value.State() & (CXlOper::kHostOwned4 | CXlOper::kHostOwned12)) != 0)
            return;
        try {
            CXlCellView cell = slot.value.Cell(row, column);
            Require(is_inside);
            host::CellArray array = *old;
            CellValue& target = array.cells[static_cast<std::size_t>(row * array.columns + column)];
            if (text.empty()) {
                cell->SetNumber(number);
                target = number;
            } else {
                cell->SetText(text);
                target = is_wide ? CellValue(text) : NarrowText(text);
            }
            side = array;
        } catch (const CXlOutOfRangeException&) {
            Require(!is_inside);
        }
    }

    // The host copies the argument, so it owns the result.
    void AskHost(Slot& slot) {
        const Slot& source = values_[input_.Take(kSlots)];
        CXlOper type;
        constexpr int kEverything = 0x0DFF;
        type.SetInt(kEverything);
        const bool has_value = source.model.narrow || source.model.wide;
        const std::optional<CellValue> sent = Sent(source.model);
        const int code = Call(slot.value, xlCoerce, source.value, type);
        if (!has_value)
            return Require(code == xlretInvXloper);
        if (!sent)
            return Require(code == kRetWrongFamily);
        // Cells without a type are not values of the host.
        if (code == xlretSuccess)
            slot.model.Set(*sent);
        else
            Require(code == xlretInvXloper && sent->Is<host::CellArray>());
    }

    // The value that the host receives.
    static std::optional<CellValue> Sent(const Model& model) {
        if (HostFlag())
            return model.wide ? model.wide : model.narrow;
        return model.narrow ? model.narrow : model.wide ? Narrowed(*model.wide) : std::nullopt;
    }

    // A value that was returned keeps its bits, but nothing that it owned.
    void Return12(Slot& slot) {
        const std::optional<CellValue> given = slot.model.wide ? slot.model.wide : slot.model.narrow;
        XLOPER12* record = slot.value.ReturnValue12();
        Require(Read(*record) == given.value_or(host::CellError{xlerrValue}));
        Finish(slot, record);
    }

    void Return4(Slot& slot) {
        const std::optional<CellValue> given = slot.model.narrow ? slot.model.narrow
                                               : slot.model.wide ? Narrowed(*slot.model.wide)
                                                                 : std::nullopt;
        XLOPER* record = slot.value.ReturnValue4();
        Require(Read(*record) == given.value_or(host::CellError{xlerrValue}));
        Finish(slot, record);
    }

    template <class Record>
    void Finish(Slot& slot, Record* record) {
        slot.value.Free();
        slot.model = Model();
        // A host that does not return a record costs the memory of one record at most.
        if ((record->xltype & xlbitDLLFree) != 0 && input_.Take(4) != 0) {
            if constexpr (std::is_same_v<Record, XLOPER12>)
                AutoFree12(record);
            else
                AutoFree4(record);
            Require(record->xltype == 0);
        }
    }

    Input input_;
    std::array<Slot, kSlots> values_;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const bool has_slot = AllocateThreadStates();
    Require(has_slot);
    host::Host host(kWideHost);
    ConnectHost(host::NewestHostPrimitives());
    DetectHostVersion();
    Require(HostFlag());
    { Session(Input(data, size)).Run(); }
    DestroyThreadState();
    const host::LedgerCounts counts = host.state().ledger.Counts();
    Require(counts.Outstanding() == 0 && counts.refused == 0);
    return 0;
}
