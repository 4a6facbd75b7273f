#pragma once

// Calls of the host as an add-in makes them, and an add-in whose entries are functions of the test.

#include "host/core/host.h"
#include "host/core/host_functions.h"
#include "host/entry/registered_call.h"
#include "host/sheet/cell_records.h"
#include "xllrt/value/record_memory.h"

#include <map>
#include <vector>

namespace metrify::host {

/// The result of a call: the code, and with code 0 the value.
struct Answer {
    int code;
    CellValue value;
    friend bool operator==(const Answer&, const Answer&) = default;
};

inline Answer Success(CellValue value) {
    return {xlretSuccess, std::move(value)};
}

inline Answer Refusal(int code) {
    return {code, CellValue()};
}

inline int CallHost(Host& host, int function, XLOPER* result, int count, XLOPER* const* arguments) {
    return host.Call4(function, result, count, arguments);
}

inline int CallHost(Host& host, int function, XLOPER12* result, int count, XLOPER12* const* arguments) {
    return host.Call12(function, result, count, arguments);
}

/// Calls the host in a family and frees the result.
template <class Record>
Answer Ask(Host& host, int function, const std::vector<CellValue>& arguments = {}) {
    std::vector<RecordOwner<Record>> records(arguments.size());
    std::vector<Record*> pointers;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        WriteRecord(arguments[i], records[i].record);
        pointers.push_back(&records[i].record);
    }
    Record result{};
    Answer answer{CallHost(host, function, &result, static_cast<int>(pointers.size()), pointers.data()), {}};
    if (answer.code != xlretSuccess)
        return answer;
    const Sheet* sheet = host.state().books.Active();
    ReadRecord(result, sheet ? sheet->id() : 0, answer.value);
    Record* to_free = &result;
    CallHost(host, xlFree, static_cast<Record*>(nullptr), 1, &to_free);
    return answer;
}

inline Answer Ask12(Host& host, int function, const std::vector<CellValue>& arguments = {}) {
    return Ask<XLOPER12>(host, function, arguments);
}

inline Answer Ask4(Host& host, int function, const std::vector<CellValue>& arguments = {}) {
    return Ask<XLOPER>(host, function, arguments);
}

/// A reference to one cell of the active sheet, counted from 0.
inline Reference CellOf(Host& host, std::int32_t row, std::int32_t column) {
    return {host.state().books.Active()->id(), {{row, row, column, column}}, true};
}

/// An add-in that is part of the test.
class TestAddIn final : public AddInModule {
  public:
    TestAddIn(std::map<std::string, void*> entries, std::u16string path)
        : path_(std::move(path)), entries_(std::move(entries)) {}

    const std::u16string& Path() const override { return path_; }
    void* Find(const std::string& name) const override {
        const auto found = entries_.find(name);
        return found != entries_.end() ? found->second : nullptr;
    }

  private:
    std::u16string path_;
    std::map<std::string, void*> entries_;
};

/// Gives the host an add-in with these entries.
inline void Adopt(Host& host, std::map<std::string, void*> entries,
                  const std::u16string& path = u"C:\\AddIns\\Test.xll") {
    host.Adopt(std::make_unique<TestAddIn>(std::move(entries), path));
}

template <class Function>
void* EntryOf(Function* function) {
    return reinterpret_cast<void*>(function);
}

/// Registers an entry of the add-in under a name.
inline Answer RegisterEntry(Host& host, const char16_t* procedure, const char16_t* type, const char16_t* name,
                            double macro_type = 1.0) {
    const std::vector<CellValue> arguments{
        host.state().module->Path(), procedure, type, name, u"", macro_type};
    return host.state().IsWide() ? Ask12(host, xlfRegister, arguments) : Ask4(host, xlfRegister, arguments);
}

} // namespace metrify::host
