#include "bridge.h"

#include "gnumeric_records.h"
#include "host/entry/entry_arguments.h"
#include "host/entry/registered_call.h"
#include "host/sheet/cell_records.h"
#include "host/sheet/utf8.h"
#include "loaded_module.h"

#include <algorithm>
#include <cstdlib>
#include <deque>
#include <iostream>
#include <string_view>

namespace metrify::gnumeric {

namespace {

using host::CellError;
using host::CellValue;
using host::HostAnswer;

constexpr int kNarrowVersion = 11;
constexpr int kWideVersion = 14;

// Gnumeric takes no other type text: the result and the arguments of a procedure.
const std::u16string kProcedureType(1 + RecordFamily<XLOPER>::kMaxArguments, u'P');
constexpr const char16_t* kProcedureName = u"MetrifyProcedure";

// The version of the family that the user chose.
int ChosenVersion() {
    const char* family = std::getenv("METRIFY_GNUMERIC"); // NOLINT(concurrency-mt-unsafe): read only
    const std::string_view name = family ? family : "wide";
    if (name != "wide" && name != "narrow")
        std::cerr << "Metrify: METRIFY_GNUMERIC is \"" << name << "\" instead of \"wide\" or \"narrow\"\n";
    return name == "narrow" ? kNarrowVersion : kWideVersion;
}

// Writes a call to standard error if the user wants a log.
void Log(const std::string& call) {
    // NOLINTNEXTLINE(concurrency-mt-unsafe): read only
    static const bool is_on = std::getenv("METRIFY_GNUMERIC_LOG") != nullptr;
    if (is_on)
        std::cerr << "Metrify: " << call << '\n';
}

// The arguments that were given: Gnumeric passes a missing one for each that was not.
std::vector<CellValue> GivenArguments(std::span<XLOPER* const> arguments) {
    std::vector<CellValue> values;
    for (const XLOPER* argument : arguments)
        values.push_back(argument ? ReadGnumericRecord(*argument) : CellValue(host::MissingArgument{}));
    while (!values.empty() && values.back().Is<host::MissingArgument>())
        values.pop_back();
    return values;
}

// The value of a record that the add-in returned, and its mark that the record has to be given back.
CellValue ReadResult(const host::EntryResult& result, bool& is_marked) {
    CellValue value = CellError{xlerrNum};
    const auto read = [&](const auto* record) {
        if (!record)
            return;
        host::ReadRecord(*record, 0, value);
        is_marked = (record->xltype & xlbitDLLFree) != 0;
    };
    if (const auto* narrow = std::get_if<XLOPER*>(&result))
        read(*narrow);
    else if (const auto* wide = std::get_if<XLOPER12*>(&result))
        read(*wide);
    return value;
}

// A record for an answer of Gnumeric, which owns what the record points at.
class GnumericRecord {
  public:
    explicit GnumericRecord(Excel4vFunction gnumeric) : gnumeric_(gnumeric) {}
    GnumericRecord(const GnumericRecord&) = delete;
    GnumericRecord& operator=(const GnumericRecord&) = delete;
    ~GnumericRecord() {
        XLOPER* released = &record;
        gnumeric_(xlFree, nullptr, 1, &released);
    }

    XLOPER record = XLOPER();

  private:
    Excel4vFunction gnumeric_;
};

template <class Record>
void GiveBack(const host::AddInModule& module, const char* auto_free, Record* record) {
    const auto entry = reinterpret_cast<void (*)(Record*)>(module.Find(auto_free));
    if (!entry)
        return;
    entry(record);
    Log(std::string(auto_free) + " leaves type " + std::to_string(record->xltype));
}

} // namespace

Bridge& Bridge::Instance() {
    static Bridge bridge;
    return bridge;
}

Bridge::Bridge() : state_(ChosenVersion()) {}

// ---- Calls of the add-in

int Bridge::Call(int function, XLOPER* result, int count, XLOPER* const* arguments) {
    return CallAny(function, result, count, arguments);
}

int Bridge::Call(int function, XLOPER12* result, int count, XLOPER12* const* arguments) {
    return state_.IsWide() ? CallAny(function, result, count, arguments) : xlretFailed;
}

template <class Record>
int Bridge::CallAny(int function, Record* result, int count, Record* const* arguments) {
    const std::span given(arguments, static_cast<std::size_t>(std::max(count, 0)));
    if (host::WithoutOptions(function) == xlFree) {
        for (Record* record : given)
            state_.ledger.TakeBack(*record);
        return xlretSuccess;
    }
    std::vector<CellValue> values;
    for (const Record* record : given)
        if (!host::ReadRecord(*record, 0, values.emplace_back()))
            return xlretInvXloper;
    FindModule();
    const HostAnswer answer = Answer(function, values, RecordFamily<Record>::kIsWide);
    if (answer.code == xlretSuccess && result) {
        host::WriteRecord(answer.value, *result);
        state_.ledger.HandOut(*result);
    }
    ShowAlerts();
    Log(std::to_string(host::WithoutOptions(function)) + " gives " + std::to_string(answer.code));
    return answer.code;
}

HostAnswer Bridge::Answer(int function, const std::vector<CellValue>& arguments, bool is_wide) {
    switch (host::WithoutOptions(function)) {
    case xlGetName:
        return AskGnumeric(xlGetName, arguments);
    case xlfRegister:
        return RegisterFunction(arguments, is_wide);
    default:
        return host::CallHostFunction(state_, function, arguments, host::CurrentContext(), is_wide);
    }
}

HostAnswer Bridge::AskGnumeric(int function, const std::vector<CellValue>& arguments) {
    std::deque<RecordOwner<XLOPER>> records;
    std::vector<XLOPER*> pointers;
    for (const CellValue& argument : arguments) {
        WriteGnumericRecord(argument, records.emplace_back().record);
        pointers.push_back(&records.back().record);
    }
    GnumericRecord answer(gnumeric_);
    const int code = gnumeric_(function, &answer.record, static_cast<int>(pointers.size()), pointers.data());
    return code == xlretSuccess ? HostAnswer(ReadGnumericRecord(answer.record)) : HostAnswer::Code(code);
}

// Commands are registered here only: Gnumeric would make functions of them.
HostAnswer Bridge::RegisterFunction(const std::vector<CellValue>& arguments, bool is_wide) {
    HostAnswer answer =
        host::CallHostFunction(state_, xlfRegister, arguments, host::CurrentContext(), is_wide);
    const auto* id = answer.value.As<double>();
    const host::Registration* registration = id ? state_.registrations.Find(*id) : nullptr;
    if (!registration || registration->IsCommand())
        return answer;
    // There is one procedure, for one function.
    if (function_)
        return CellError{xlerrValue};
    std::vector<CellValue> passed = arguments;
    passed[1] = kProcedureName;
    passed[2] = kProcedureType;
    HostAnswer accepted = AskGnumeric(xlfRegister, passed);
    if (accepted.code != xlretSuccess || !accepted.value.Is<double>())
        return accepted;
    function_ = registration;
    return answer;
}

// Gnumeric names the add-in from the moment when it opens it.
void Bridge::FindModule() {
    if (module_)
        return;
    const HostAnswer name = AskGnumeric(xlGetName, {});
    if (const auto* path = name.value.As<std::u16string>()) {
        module_ = std::make_unique<LoadedModule>(*path);
        state_.module = module_.get();
    }
}

void Bridge::ShowAlerts() {
    for (const host::Alert& alert : state_.alerts)
        std::cerr << "Metrify: " << host::ToUtf8(alert.text) << '\n';
    state_.alerts.clear();
}

// ---- Calls of Gnumeric

XLOPER* Bridge::CallFunction(std::span<XLOPER* const> arguments) {
    const std::vector<CellValue> given = GivenArguments(arguments);
    const std::vector<std::string>& parameters = function_->type.parameters;
    const std::string signature = function_->type.Signature();
    if (!host::IsCallable(signature) || given.size() > parameters.size())
        return ReturnCopy(CellError{xlerrValue});
    host::EntryArguments prepared;
    for (std::size_t i = 0; i < parameters.size(); ++i)
        if (const auto error =
                prepared.Add(parameters[i], i < given.size() ? given[i] : CellValue(host::MissingArgument{})))
            return ReturnCopy(*error);
    const host::ContextScope scope(host::CallContext::worksheet_function);
    Log(host::ToUtf8(function_->procedure));
    result_ = host::CallEntry(function_->entry, signature, prepared.words());
    bool is_marked = false;
    XLOPER* copy = ReturnCopy(ReadResult(result_, is_marked));
    if (is_marked)
        copy->xltype |= xlbitDLLFree;
    return copy;
}

XLOPER* Bridge::ReturnCopy(const CellValue& value) {
    DeepFree(returned_.record);
    WriteGnumericRecord(value, returned_.record);
    return &returned_.record;
}

void Bridge::GiveBackResult() {
    DeepFree(returned_.record);
    if (auto* const* narrow = std::get_if<XLOPER*>(&result_))
        GiveBack(*module_, "xlAutoFree", *narrow);
    else if (auto* const* wide = std::get_if<XLOPER12*>(&result_))
        GiveBack(*module_, "xlAutoFree12", *wide);
}

} // namespace metrify::gnumeric
