#include "host/entry/registered_call.h"

#include "host/entry/calculation.h"
#include "host/entry/entry_call.h"
#include "host/sheet/cell_records.h"
#include "host/sheet/coercion.h"
#include "xllrt/text/code_page.h"
#include "xllrt/value/record_memory.h"

#include <limits>
#include <optional>

namespace metrify::host {

namespace {

thread_local CallContext current_context = CallContext::command;

// One argument of a call, with the memory that it points to.
class EntryArgument {
  public:
    // Converts a value to the type of a type letter. Gives the error if it cannot be converted.
    std::optional<CellError> Set(HostState& state, const std::string& type, const CellValue& given) {
        const char letter = type.front();
        const bool takes_references = letter == 'R' || letter == 'U';
        const auto* reference = given.As<Reference>();
        const CellValue value = reference && !takes_references ? ValueOfReference(state, *reference) : given;
        if (letter == 'P' || letter == 'R')
            word_ = SetRecord(narrow_record_, value);
        else if (letter == 'Q' || letter == 'U')
            word_ = SetRecord(wide_record_, value);
        else
            return SetScalar(type, value);
        return std::nullopt;
    }

    const MachineWord& word() const { return word_; }

  private:
    template <class Record>
    static void* SetRecord(RecordOwner<Record>& owner, const CellValue& value) {
        WriteRecord(value, owner.record);
        return &owner.record;
    }

    std::optional<CellError> SetScalar(const std::string& type, const CellValue& given) {
        // A scalar parameter takes no rectangle, and an omitted argument is converted as an empty cell.
        if (const auto* array = given.As<CellArray>(); array && array->cells.size() != 1)
            return CellError{xlerrValue};
        const CellValue value = given.Is<MissingArgument>() ? CellValue() : given;
        if (type.front() == 'C')
            return SetText(type, ToTextValue(value));
        const CellValue converted = Converted(type.front(), value);
        if (const auto* error = converted.As<CellError>())
            return *error;
        if (const auto* number = converted.As<double>())
            word_ = *number;
        else if (const auto* boolean = converted.As<bool>())
            word_ = std::int32_t{*boolean};
        else
            word_ = *converted.As<std::int32_t>();
        return std::nullopt;
    }

    static CellValue Converted(char letter, const CellValue& value) {
        using Int = std::numeric_limits<std::int32_t>;
        switch (letter) {
        case 'A':
            return ToBoolValue(value);
        case 'J':
            return ToIntegerValue(value, Int::min(), Int::max());
        default:
            return ToNumberValue(value);
        }
    }

    static std::optional<CellError> TooLong(std::size_t length, std::size_t most) {
        return length > most ? std::optional(CellError{xlerrValue}) : std::nullopt;
    }

    std::optional<CellError> SetText(const std::string& type, const CellValue& value) {
        if (const auto* error = value.As<CellError>())
            return *error;
        wide_text_ = *value.As<std::u16string>();
        if (type == "C%") {
            word_ = static_cast<void*>(wide_text_.data());
            return TooLong(wide_text_.size(), RecordFamily<XLOPER12>::kMaxText);
        }
        narrow_text_ = ToNarrow(wide_text_);
        word_ = static_cast<void*>(narrow_text_.data());
        return TooLong(narrow_text_.size(), RecordFamily<XLOPER>::kMaxText);
    }

    MachineWord word_ = std::int32_t{0};
    std::string narrow_text_;
    std::u16string wide_text_;
    RecordOwner<XLOPER> narrow_record_;
    RecordOwner<XLOPER12> wide_record_;
};

template <class Record>
constexpr const char* kAutoFreeName = "xlAutoFree12";
template <>
constexpr const char* kAutoFreeName<XLOPER> = "xlAutoFree";

template <class Record>
void GiveBack(HostState& state, Record& record) {
    using AutoFree = void(METRIFY_HOST_CALL*)(Record*);
    ++state.results.marked;
    if (const auto auto_free = reinterpret_cast<AutoFree>(state.module->Find(kAutoFreeName<Record>))) {
        auto_free(&record);
        ++state.results.given_back;
    }
}

CellValue TakeResult(HostState& state, const EntryType& type, const EntryResult& result) {
    if (const auto* integer = std::get_if<std::int32_t>(&result))
        return type.result == "A" ? CellValue(*integer != 0) : CellValue(static_cast<double>(*integer));
    if (const auto* narrow = std::get_if<XLOPER*>(&result))
        return TakeResultRecord(state, *narrow);
    return TakeResultRecord(state, std::get<XLOPER12*>(result));
}

template <class Record>
CellValue TakeAnyRecord(HostState& state, Record* record) {
    CellValue value;
    const Sheet* sheet = state.books.Active();
    if (!record || !ReadRecord(*record, sheet ? sheet->id() : 0, value) || value.Is<MissingArgument>())
        value = CellError{xlerrNum};
    if (record && (record->xltype & xlbitDLLFree) != 0)
        GiveBack(state, *record);
    else if (record && (record->xltype & xlbitXLFree) != 0)
        state.ledger.TakeBack(*record);
    return value;
}

} // namespace

CellValue TakeResultRecord(HostState& state, XLOPER* record) {
    return TakeAnyRecord(state, record);
}

CellValue TakeResultRecord(HostState& state, XLOPER12* record) {
    return TakeAnyRecord(state, record);
}

CallContext CurrentContext() {
    return current_context;
}

ContextScope::ContextScope(CallContext context) : previous_(current_context) {
    current_context = context;
}

ContextScope::~ContextScope() {
    current_context = previous_;
}

CellValue CallRegistered(HostState& state, const Registration& registration,
                         const std::vector<CellValue>& arguments, CallContext context) {
    const EntryType& type = registration.type;
    const std::string signature = type.Signature();
    if (!IsCallable(signature) || arguments.size() > type.parameters.size())
        return CellError{xlerrValue};
    std::deque<EntryArgument> prepared;
    std::vector<MachineWord> words;
    for (std::size_t i = 0; i < type.parameters.size(); ++i) {
        const CellValue given = i < arguments.size() ? arguments[i] : CellValue(MissingArgument{});
        if (const auto error = prepared.emplace_back().Set(state, type.parameters[i], given))
            return *error;
        words.push_back(prepared.back().word());
    }
    std::unique_lock main_thread(state.main_thread, std::defer_lock);
    if (context == CallContext::calculation_thread && !type.is_thread_safe) {
        main_thread.lock();
        context = CallContext::worksheet_function;
    }
    if (context == CallContext::worksheet_function && type.is_macro)
        context = CallContext::macro_function;
    const ContextScope scope(context);
    return TakeResult(state, type, CallEntry(registration.entry, signature, words));
}

} // namespace metrify::host
