#include "host/automation/automation_host.h"

#include <objbase.h>

namespace metrify::host {

namespace {

// The table is shared by the whole machine.
std::u16string RunningName(std::size_t book) {
    const std::string name =
        "C:\\Spreadsheet" + std::to_string(GetCurrentProcessId()) + "\\Book" + std::to_string(book) + ".xls";
    return {name.begin(), name.end()};
}

} // namespace

AutomationHost::Apartment::Apartment() {
    CoInitialize(nullptr);
}

AutomationHost::Apartment::~Apartment() {
    CoUninitialize();
}

AutomationHost::AutomationHost(Host& host)
    : host_(host), application_(MakeObject<ApplicationObject>(context_, host.state())) {
    HostState& state = host.state();
    context_->faults = &state.faults;
    state.window_handle = static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(windows_.main()));
    windows_.SetNativeObject(ComPtr<IDispatch>(
        MakeObject<WindowObject>(context_, ComVariant(static_cast<IDispatch*>(application_.Get()))).Get()));
    state.books.on_change = [this] { FollowWorkbooks(); };
    FollowWorkbooks();
}

AutomationHost::~AutomationHost() {
    host_.state().books.on_change = nullptr;
    running_.reset();
    application_->Disconnect();
    context_->faults = nullptr;
}

void AutomationHost::FollowWorkbooks() {
    const std::size_t count = host_.state().books.count();
    windows_.SetWorkbookCount(count);
    if (!running_)
        return;
    while (running_->workbooks() > count)
        running_->RemoveWorkbook();
    while (running_->workbooks() < count) {
        const std::u16string name = RunningName(running_->workbooks());
        running_->AddWorkbook(name, MakeWorkbook(name).Get());
    }
}

void AutomationHost::ShowAsRunning() {
    running_ = std::make_unique<RunningObjects>();
    running_->ShowApplication(static_cast<IDispatch*>(application_.Get()));
    FollowWorkbooks();
}

ComPtr<IDispatch> AutomationHost::MakeWorkbook(const std::u16string& name) {
    return ComPtr<IDispatch>(
        MakeObject<WorkbookObject>(context_, ComPtr<IDispatch>(application_.Get()), name).Get());
}

ComPtr<IDispatch> AutomationHost::MakeWorksheet(const std::u16string& workbook, const std::u16string& name) {
    return ComPtr<IDispatch>(MakeObject<WorksheetObject>(context_, MakeWorkbook(workbook), name).Get());
}

ComPtr<IDispatch> AutomationHost::MakeRange(const ComPtr<IDispatch>& worksheet, RangeAddresses addresses) {
    return ComPtr<IDispatch>(MakeObject<RangeObject>(context_, worksheet, std::move(addresses)).Get());
}

} // namespace metrify::host
