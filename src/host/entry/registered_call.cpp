#include "host/entry/registered_call.h"

#include "host/entry/calculation.h"
#include "host/entry/entry_arguments.h"
#include "host/sheet/cell_records.h"
#include "host/sheet/coercion.h"

#include <optional>

namespace metrify::host {

namespace {

thread_local CallContext current_context = CallContext::command;

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

// A module that a command unloads stays until the outermost command has returned.
class CommandScope {
  public:
    CommandScope(HostState& state, CallContext context)
        : state_(context == CallContext::command ? &state : nullptr) {
        if (state_)
            ++state_->running_commands;
    }
    ~CommandScope() {
        if (!state_ || --state_->running_commands > 0 || !state_->unloading)
            return;
        const bool is_current = state_->module == state_->unloading.get();
        state_->unloading.reset(); // which may call the host
        if (is_current)
            state_->module = nullptr;
    }
    CommandScope(const CommandScope&) = delete;
    CommandScope& operator=(const CommandScope&) = delete;

  private:
    HostState* state_;
};

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
    EntryArguments prepared;
    for (std::size_t i = 0; i < type.parameters.size(); ++i) {
        const std::string& parameter = type.parameters[i];
        const CellValue given = i < arguments.size() ? arguments[i] : CellValue(MissingArgument{});
        const auto* reference = given.As<Reference>();
        const bool is_read = reference && !TakesReferences(parameter);
        if (const auto error = prepared.Add(parameter, is_read ? ValueOfReference(state, *reference) : given))
            return *error;
    }
    std::unique_lock main_thread(state.main_thread, std::defer_lock);
    if (context == CallContext::calculation_thread && !type.is_thread_safe) {
        main_thread.lock();
        context = CallContext::worksheet_function;
    }
    if (context == CallContext::worksheet_function && type.is_macro)
        context = CallContext::macro_function;
    const ContextScope scope(context);
    const CommandScope command(state, context);
    return TakeResult(state, type, CallEntry(registration.entry, signature, prepared.words()));
}

} // namespace metrify::host
