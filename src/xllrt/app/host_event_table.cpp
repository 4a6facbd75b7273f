#include "xllrt/app/host_event_table.h"

#include <algorithm>
#include <array>
#include <type_traits>
#include <utility>

namespace metrify {

namespace {

template <class Parameter>
auto ReadArgument(const CXlOper& value) {
    if constexpr (std::is_same_v<Parameter, bool>)
        return value.ToBool();
    else
        return value.ToText();
}

// Converts arguments by the operation's parameter types.
template <auto Operation>
struct Signature;

template <class Answer, class... Parameters, Answer (CXllApp::*Operation)(Parameters...)>
struct Signature<Operation> {
    static bool Call(CXllApp& application, std::span<const XlEventArgument> arguments) {
        return CallWith(application, arguments, std::index_sequence_for<Parameters...>());
    }

    template <auto Event>
    static bool Notify(const CXlAppEvents& events, const CXlOper& first, const CXlOper& second) {
        return NotifyWith(events.*Event, {&first, &second}, std::index_sequence_for<Parameters...>());
    }

  private:
    template <std::size_t... Index>
    static bool CallWith(CXllApp& application, std::span<const XlEventArgument> arguments,
                         std::index_sequence<Index...> /*indices*/) {
        if constexpr (std::is_void_v<Answer>) {
            (application.*Operation)(std::get<Parameters>(arguments[Index])...);
            return false;
        } else {
            return (application.*Operation)(std::get<Parameters>(arguments[Index])...);
        }
    }

    template <class Event, std::size_t... Index>
    static bool NotifyWith(const Event& event, [[maybe_unused]] std::array<const CXlOper*, 2> values,
                           std::index_sequence<Index...> /*indices*/) {
        typename Event::Args args{ReadArgument<Parameters>(*std::get<Index>(values))...};
        event.Notify(args);
        if constexpr (requires { args.cancel; })
            return args.cancel;
        else
            return false;
    }
};

template <auto Operation>
constexpr XlHostEventRow Row(XlHostEventNumber number, std::int32_t dispatch_id, std::string_view signature,
                             bool is_cancellable) {
    return {number, dispatch_id, signature, is_cancellable, Signature<Operation>::Call, nullptr};
}

template <auto Operation, auto Event>
constexpr XlHostEventRow Row(XlHostEventNumber number, std::int32_t dispatch_id, std::string_view signature,
                             bool is_cancellable) {
    XlHostEventRow row = Row<Operation>(number, dispatch_id, signature, is_cancellable);
    row.notify = Signature<Operation>::template Notify<Event>;
    return row;
}

using App = CXllApp;
using Events = CXlAppEvents;

// clang-format off
// The operation and the observed event; then number, dispatch identifier, signature, cancellable.
constexpr std::array kTable = {
    Row<&App::OnNewWorkbook, &Events::newWorkbook>                (kEventNewWorkbook,         1565, "B",  false),
    Row<&App::OnSelectionChange, &Events::selectionChange>        (kEventSelectionChange,     1558, "SR", false),
    Row<&App::OnBeforeDoubleClick, &Events::beforeDoubleClick>    (kEventBeforeDoubleClick,   1559, "SR", true),
    Row<&App::OnBeforeRightClick, &Events::beforeRightClick>      (kEventBeforeRightClick,    1560, "SR", true),
    Row<&App::OnSheetActivate, &Events::sheetActivate>            (kEventSheetActivate,       1561, "S",  false),
    Row<&App::OnSheetDeactivate, &Events::sheetDeactivate>        (kEventSheetDeactivate,     1562, "S",  false),
    Row<&App::OnCalculate, &Events::calculate>                    (kEventCalculate,           1563, "S",  false),
    Row<&App::OnSheetChange, &Events::sheetChange>                (kEventSheetChange,         1564, "SR", false),
    Row<&App::OnWorkbookOpen, &Events::workbookOpen>              (kEventWorkbookOpen,        1567, "B",  false),
    Row<&App::OnWorkbookActivate, &Events::workbookActivate>      (kEventWorkbookActivate,    1568, "B",  false),
    Row<&App::OnWorkbookDeactivate, &Events::workbookDeactivate>  (kEventWorkbookDeactivate,  1569, "B",  false),
    Row<&App::OnWorkbookBeforeClose, &Events::workbookBeforeClose>(kEventWorkbookBeforeClose, 1570, "B",  true),
    Row<&App::OnWorkbookBeforeSave, &Events::workbookBeforeSave>  (kEventWorkbookBeforeSave,  1571, "BF", true),
    Row<&App::OnWorkbookEvent13>                                  (kEventWorkbook13,          1572, "B",  true),
    Row<&App::OnWorkbookNewSheet, &Events::workbookNewSheet>      (kEventWorkbookNewSheet,    1573, "BS", false),
    Row<&App::OnWorkbookEvent15>                                  (kEventWorkbook15,          1574, "B",  false),
    Row<&App::OnWorkbookEvent16>                                  (kEventWorkbook16,          1575, "B",  false),
    // The host passes two objects of unknown kind, which are not used.
    Row<&App::OnReservedEvent17>                                  (kEventReserved17,          1554, "SR", false),
    Row<&App::OnReservedEvent18>                                  (kEventReserved18,          1556, "SR", false),
    Row<&App::OnReservedEvent19>                                  (kEventReserved19,          1557, "SR", false),
    Row<&App::OnAfterCalculate, &Events::afterCalculate>          (kEventAfterCalculate,      2612, "",   false),
    Row<&App::OnWorkbookAfterSave, &Events::workbookAfterSave>    (kEventWorkbookAfterSave,   2911, "BF", false),
};
// clang-format on

constexpr bool IsIndexedByNumber() {
    for (std::size_t i = 0; i < kTable.size(); ++i)
        if (kTable[i].number != static_cast<int>(i))
            return false;
    return kTable.size() == kEventCount;
}
static_assert(IsIndexedByNumber());

} // namespace

const XlHostEventRow* FindHostEvent(int number) {
    const auto index = static_cast<std::size_t>(number);
    return index < kTable.size() ? &kTable[index] : nullptr;
}

const XlHostEventRow* FindHostEventByDispatchId(std::int32_t dispatch_id) {
    const auto* const row = std::find_if(kTable.begin(), kTable.end(), [dispatch_id](const auto& candidate) {
        return candidate.dispatch_id == dispatch_id;
    });
    return row == kTable.end() ? nullptr : row;
}

} // namespace metrify
