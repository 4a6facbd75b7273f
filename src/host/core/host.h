#pragma once

// A spreadsheet host for one add-in, without windows. It answers the calls of the add-in as a spreadsheet
// does, logs them and accounts for the memory of records.
//
// `Excel4`, `Excel4v` and `MdCallBack12` call the newest host of the process.

#include "host/state/host_state.h"

#include <memory>
#include <span>
#include <string>

namespace metrify::host {

class Host {
  public:
    /// A host of a major version, from 4 to 16.
    explicit Host(int version);
    ~Host();
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    /// The newest host, or null.
    static Host* Current();

    HostState& state() { return state_; }

    // ---- Called by the add-in

    /// Gives the return code. `result` may be null.
    int Call4(int function, XLOPER* result, int count, XLOPER* const* arguments);
    /// As `Call4`; refused with `xlretFailed` before version 12.
    int Call12(int function, XLOPER12* result, int count, XLOPER12* const* arguments);

    // ---- Calls of the add-in

    /// Loads a module. False on failure, with the system's message in `error`.
    bool Load(const std::string& path, std::string& error);
    /// Takes over a module that is already loaded.
    void Adopt(std::unique_ptr<AddInModule> module);
    /// Removes the registrations of the module and unloads it, after the end of a command that is running.
    void Unload();

    /// Calls an entry without arguments, such as `xlAutoOpen`, and gives its result. Nothing if the module
    /// has no such entry.
    std::optional<std::int32_t> CallEntryPoint(const std::string& name);

    /// Calls `xlAddInManagerInfo12`, before version 12 `xlAddInManagerInfo`, for the name of the add-in.
    /// Nothing if the module has no such entry.
    std::optional<CellValue> AddInManagerInfo(const CellValue& action);

    /// The value of a formula with its "=", references in the A1 style, as if the first cell of the active
    /// sheet contained it. Nothing if it is not a formula.
    std::optional<CellValue> Evaluate(std::u16string_view formula);

    /// The values of formulas, calculated on several threads.
    std::vector<std::optional<CellValue>> EvaluateAll(std::span<const std::u16string> formulas,
                                                      unsigned threads);

    /// Enters a text into a cell of the active sheet, which is given in the A1 style. False on failure.
    bool Enter(std::u16string_view cell, const std::u16string& text);
    /// The value of a cell of the active sheet.
    CellValue ValueOf(std::u16string_view cell);

    /// Runs a registered command and gives its result. Nothing if there is no command of that name.
    std::optional<CellValue> RunCommand(std::u16string_view name,
                                        const std::vector<CellValue>& arguments = {});

  private:
    template <class Record>
    int Call(int function, Record* result, int count, Record* const* arguments);
    template <class Record>
    int FreeRecords(int count, Record* const* arguments);

    HostState state_;
    std::unique_ptr<AddInModule> module_;
    Host* previous_;
};

} // namespace metrify::host
