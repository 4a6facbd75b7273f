#pragma once

// A spreadsheet host for one add-in, without windows: what the add-in asks is answered as a spreadsheet
// answers it, and what goes in and out is kept account of.
//
// The newest host of a process is the one that `Excel4`, `Excel4v` and `MdCallBack12` reach.

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

    // ---- What the add-in calls

    /// Gives the return code. A result may be null if nobody wants it.
    int Call4(int function, XLOPER* result, int count, XLOPER* const* arguments);
    /// As `Call4`; refused with `xlretFailed` before version 12.
    int Call12(int function, XLOPER12* result, int count, XLOPER12* const* arguments);

    // ---- What the host calls

    /// Loads a module. False, with the system's words in `error`, if that fails.
    bool Load(const std::string& path, std::string& error);
    /// Takes a module that is there already.
    void Adopt(std::unique_ptr<AddInModule> module);
    /// Takes back what the module registered, and lets the module go.
    void Unload();

    /// Calls an entry of the module without arguments, as `xlAutoOpen`, and gives its result. Nothing without
    /// such an entry.
    std::optional<std::int32_t> CallEntryPoint(const std::string& name);

    /// Asks the module what it is called by `xlAddInManagerInfo12`, before version 12 by
    /// `xlAddInManagerInfo`. Nothing without such an entry.
    std::optional<CellValue> AddInManagerInfo(const CellValue& action);

    /// The value of a formula with its "=", references in the A1 style, in the first cell of the active
    /// sheet. Nothing if it is no formula.
    std::optional<CellValue> Evaluate(std::u16string_view formula);

    /// The values of formulas, calculated on several threads.
    std::vector<std::optional<CellValue>> EvaluateAll(std::span<const std::u16string> formulas,
                                                      unsigned threads);

    /// Puts a text into a cell of the active sheet, given in the A1 style. False if that cannot be.
    bool Enter(std::u16string_view cell, const std::u16string& text);
    /// The value of a cell of the active sheet.
    CellValue ValueOf(std::u16string_view cell);

    /// Runs a registered command, perhaps with arguments. Nothing without one of that name, otherwise what it
    /// gave.
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
