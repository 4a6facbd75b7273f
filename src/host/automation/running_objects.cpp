#include "host/automation/running_objects.h"

#include "integration/com/com_value.h"

#include <array>
#include <objbase.h>

namespace metrify::host {

namespace {

constexpr CLSID kApplicationClass = {
    0x00024500, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
constexpr const char* kApplicationClassText = "{00024500-0000-0000-C000-000000000046}";
constexpr std::array<const char*, 2> kProgramNames = {"Excel.Application", "Excel.Application.5"};

std::string ClassKey(const char* program_name) {
    return std::string(program_name) + "\\CLSID";
}

ComPtr<IRunningObjectTable> Table() {
    ComPtr<IRunningObjectTable> table;
    GetRunningObjectTable(0, table.Receive());
    return table;
}

} // namespace

void RegisterProgramNames() {
    for (const char* name : kProgramNames)
        RegSetValueA(HKEY_CLASSES_ROOT, ClassKey(name).c_str(), REG_SZ, kApplicationClassText, 0);
}

void UnregisterProgramNames() {
    for (const char* name : kProgramNames) {
        RegDeleteKeyA(HKEY_CLASSES_ROOT, ClassKey(name).c_str());
        RegDeleteKeyA(HKEY_CLASSES_ROOT, name);
    }
}

RunningObjects::~RunningObjects() {
    while (!workbooks_.empty())
        RemoveWorkbook();
    if (application_ != 0)
        RevokeActiveObject(application_, nullptr);
}

void RunningObjects::ShowApplication(IUnknown* application) {
    RegisterActiveObject(application, kApplicationClass, ACTIVEOBJECT_STRONG, &application_);
}

void RunningObjects::AddWorkbook(const std::u16string& name, IUnknown* workbook) {
    ComPtr<IMoniker> moniker;
    DWORD cookie = 0;
    if (const auto table = Table();
        table && SUCCEEDED(CreateFileMoniker(AsSystemText(name), moniker.Receive())))
        table->Register(ROTFLAGS_REGISTRATIONKEEPSALIVE, workbook, moniker.Get(), &cookie);
    workbooks_.push_back(cookie);
}

void RunningObjects::RemoveWorkbook() {
    if (const auto table = Table(); table && workbooks_.back() != 0)
        table->Revoke(workbooks_.back());
    workbooks_.pop_back();
}

} // namespace metrify::host
