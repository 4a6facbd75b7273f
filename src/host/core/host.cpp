#include "host/core/host.h"

#include "host/core/host_exports.h"
#include "host/core/host_functions.h"
#include "host/entry/calculation.h"
#include "host/entry/registered_call.h"
#include "host/sheet/cell_records.h"
#include "xllrt/value/record_memory.h"

#include <algorithm>
#include <atomic>
#include <thread>

namespace metrify::host {

namespace {

std::atomic<Host*> newest_host = nullptr;

// The code of an injected failure, or success.
int FaultOf(HostState& state, int function) {
    if (CurrentContext() == CallContext::calculation_thread)
        return xlretSuccess;
    return state.faults.IsCallFailing() ? xlretFailed : state.faults.RefusalOf(WithoutOptions(function));
}

template <class Record>
std::optional<CellValue> AskName(HostState& state, const char* entry_name, const CellValue& action) {
    using Entry = Record*(METRIFY_HOST_CALL*)(Record*);
    const auto entry = reinterpret_cast<Entry>(state.module->Find(entry_name));
    if (!entry)
        return std::nullopt;
    RecordOwner<Record> argument;
    WriteRecord(action, argument.record);
    const ContextScope scope(CallContext::command);
    return TakeResultRecord(state, entry(&argument.record));
}

} // namespace

Host::Host(int version) : state_(version), previous_(newest_host.exchange(this)) {
    KeepHostExports();
}

Host::~Host() {
    Unload();
    newest_host.store(previous_);
}

Host* Host::Current() {
    return newest_host.load(std::memory_order_relaxed);
}

template <class Record>
int Host::FreeRecords(int count, Record* const* arguments) {
    for (int i = 0; i < count; ++i) {
        if (!arguments[i])
            return xlretInvXloper;
        state_.ledger.TakeBack(*arguments[i]);
    }
    return xlretSuccess;
}

template <class Record>
int Host::Call(int function, Record* result, int count, Record* const* arguments) {
    std::vector<CellValue> values;
    const auto finish = [&](const HostAnswer& answer) {
        state_.log.Note(function, RecordFamily<Record>::kIsWide, values, answer.code, answer.value);
        return answer.code;
    };
    if (count < 0 || count > RecordFamily<Record>::kMaxArguments)
        return finish(HostAnswer::Code(xlretInvCount));
    if (WithoutOptions(function) == xlFree)
        return finish(HostAnswer::Code(FreeRecords(count, arguments)));
    const Sheet* sheet = state_.books.Active();
    for (int i = 0; i < count; ++i)
        if (!arguments[i] || !ReadRecord(*arguments[i], sheet ? sheet->id() : 0, values.emplace_back()))
            return finish(HostAnswer::Code(xlretInvXloper));
    if (const int refusal = FaultOf(state_, function); refusal != xlretSuccess)
        return finish(HostAnswer::Code(refusal));
    const HostAnswer answer =
        CallHostFunction(state_, function, values, CurrentContext(), RecordFamily<Record>::kIsWide);
    if (answer.code == xlretSuccess && result) {
        WriteRecord(answer.value, *result);
        state_.ledger.HandOut(*result);
    }
    return finish(answer);
}

int Host::Call4(int function, XLOPER* result, int count, XLOPER* const* arguments) {
    return Call(function, result, count, arguments);
}

int Host::Call12(int function, XLOPER12* result, int count, XLOPER12* const* arguments) {
    return state_.IsWide() ? Call(function, result, count, arguments) : xlretFailed;
}

bool Host::Load(const std::string& path, std::string& error) {
    std::unique_ptr<AddInModule> module = LoadAddInModule(path, error);
    const bool is_loaded = module != nullptr;
    if (is_loaded)
        Adopt(std::move(module));
    return is_loaded;
}

void Host::Adopt(std::unique_ptr<AddInModule> module) {
    Unload();
    module_ = std::move(module);
    state_.module = module_.get();
}

void Host::Unload() {
    if (!module_)
        return;
    state_.registrations.RemoveModule(module_->Path());
    if (state_.running_commands > 0) {
        state_.unloading = std::move(module_);
        return;
    }
    // The module may call the host while it is unloaded.
    module_.reset();
    state_.module = nullptr;
}

std::optional<std::int32_t> Host::CallEntryPoint(const std::string& name) {
    using Entry = int(METRIFY_HOST_CALL*)();
    const auto entry = module_ ? reinterpret_cast<Entry>(module_->Find(name)) : nullptr;
    if (!entry)
        return std::nullopt;
    const ContextScope scope(CallContext::command);
    return entry();
}

std::optional<CellValue> Host::AddInManagerInfo(const CellValue& action) {
    if (!module_)
        return std::nullopt;
    return state_.IsWide() ? AskName<XLOPER12>(state_, "xlAddInManagerInfo12", action)
                           : AskName<XLOPER>(state_, "xlAddInManagerInfo", action);
}

std::optional<CellValue> Host::Evaluate(std::u16string_view formula) {
    return EvaluateText(state_, formula, ReferenceStyle::a1, {}, CallContext::worksheet_function);
}

std::vector<std::optional<CellValue>> Host::EvaluateAll(std::span<const std::u16string> formulas,
                                                        unsigned threads) {
    std::vector<std::optional<CellValue>> values(formulas.size());
    std::atomic<std::size_t> next = 0;
    const auto work = [&] {
        for (std::size_t i = next++; i < formulas.size(); i = next++)
            values[i] =
                EvaluateText(state_, formulas[i], ReferenceStyle::a1, {}, CallContext::calculation_thread);
    };
    // This thread only waits, so that the add-in's state of each calculating thread is destroyed with the
    // thread.
    std::vector<std::jthread> calculating;
    for (unsigned i = 0; i < threads; ++i)
        calculating.emplace_back(work);
    calculating.clear();
    return values;
}

bool Host::Enter(std::u16string_view cell, const std::u16string& text) {
    const auto read = ReadCellReference(cell, ReferenceStyle::a1, {}, state_.books.size());
    if (!read || read->length != cell.size())
        return false;
    const CellPosition at = read->reference.at;
    return EnterCells(state_, {at.row, at.row, at.column, at.column}, text, ReferenceStyle::a1, false);
}

CellValue Host::ValueOf(std::u16string_view cell) {
    return EvaluateText(state_, u"=" + std::u16string(cell), ReferenceStyle::a1, {},
                        CallContext::worksheet_function)
        .value_or(CellError{xlerrRef});
}

std::optional<CellValue> Host::RunCommand(std::u16string_view name, const std::vector<CellValue>& arguments) {
    const Registration* registration = state_.registrations.Find(name);
    if (!registration || !registration->IsCommand())
        return std::nullopt;
    return CallRegistered(state_, *registration, arguments, CallContext::command);
}

} // namespace metrify::host
