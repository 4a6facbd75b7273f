#include "xllrt/registry/registration.h"

#include "xllrt/gate/host_gate.h"
#include "xllrt/gate/host_version.h"
#include "xllrt/registry/registration_arguments.h"
#include "xllrt/value/thread_state.h"

#include <algorithm>
#include <array>
#include <span>

namespace metrify {

namespace {

enum class Family { none, narrow, wide };

// True if the host takes the function in the wide family.
bool IsForWide(const CXlFunctionDescriptor& descriptor) {
    return HostFlag() && !descriptor.wideEntry.empty() && !descriptor.wideType.empty() &&
           (!descriptor.wideArgumentNames.empty() || descriptor.narrowType.empty() ||
            descriptor.narrowArgumentNames.empty());
}

bool IsForNarrow(const CXlFunctionDescriptor& descriptor) {
    return !descriptor.narrowEntry.empty() && !descriptor.narrowType.empty() &&
           (!descriptor.narrowArgumentNames.empty() || descriptor.wideType.empty() ||
            descriptor.wideArgumentNames.empty());
}

bool IsForThisVersion(const CXlFunctionDescriptor& descriptor) {
    const int version = HostVersion();
    return (descriptor.minimumVersion == 0 || descriptor.minimumVersion <= version) &&
           (descriptor.maximumVersion == 0 || descriptor.maximumVersion >= version);
}

Family FamilyOf(const CXlFunctionDescriptor& descriptor) {
    if (!IsForThisVersion(descriptor))
        return Family::none;
    if (IsForWide(descriptor))
        return Family::wide;
    return IsForNarrow(descriptor) ? Family::narrow : Family::none;
}

int CallInFamily(CXlOper& result, Family family, int function, std::span<const CXlOper> arguments) {
    return family == Family::wide ? CallArray12(result, function, arguments)
                                  : Call4(result, function, arguments);
}

CXlOper ModuleName(CXllApp& application) {
    CXlOper name;
    name.SetText(application.GetModuleText());
    return name;
}

// True if the function was dealt with.
bool Register(const CXllApp& application, CXlFunctionDescriptor& descriptor, const CXlOper& module_name) {
    const Family family = FamilyOf(descriptor);
    if (family == Family::none)
        return true;
    const bool is_wide = family == Family::wide;
    const std::u16string help = HelpText(descriptor, application.helpFile, application.helpIds);
    const std::vector<CXlOper> values = is_wide ? WideRegistration(descriptor, module_name, help)
                                                : NarrowRegistration(descriptor, module_name, help);
    std::span<const CXlOper> sent = values;
    if (application.shortRegistration &&
        CountArguments(is_wide ? descriptor.wideType : descriptor.narrowType) == 0)
        sent = sent.first(kShortRegistration);
    CXlOper id;
    if (CallInFamily(id, family, xlfRegister, sent) == xlretSuccess)
        descriptor.registerId = id.ToNumber();
    descriptor.registered = descriptor.registerId != 0.0 ? 1 : 0;
    return descriptor.registered != 0;
}

// The host forgets a name for good only when another procedure has been registered under it, as a hidden one.
void HideName(CXllApp& application, const CXlFunctionDescriptor& descriptor, Family family,
              const CXlOper& module_name) {
    std::array<CXlOper, 6> values;
    if (application.GetHostName(values[0]) != xlretSuccess)
        values[0] = module_name;
    values[1].SetText("xlAutoRemove");
    values[2].SetText("J");
    values[3].SetText(descriptor.functionName);
    values[4] = ThisThreadState().missing;
    values[5].SetInt(0);
    CXlOper dropped;
    CallInFamily(dropped, family, xlfRegister, values);
}

void Unregister(CXllApp& application, CXlFunctionDescriptor& descriptor, const CXlOper& module_name) {
    const Family family = IsForWide(descriptor) ? Family::wide : Family::narrow;
    CXlOper dropped;
    if (descriptor.registerId != 0.0) {
        const std::array<CXlOper, 1> id{CXlOper(descriptor.registerId)};
        CallInFamily(dropped, family, xlfUnregister, id);
        descriptor.registerId = 0.0;
    }
    std::array<CXlOper, 1> name;
    name[0].SetText(descriptor.functionName);
    CallInFamily(dropped, family, xlfSetName, name);
    descriptor.registered = 0;
    HideName(application, descriptor, family, module_name);
}

} // namespace

bool RegisterAll(CXllApp& application) {
    // Observers may still add functions, or change them.
    CXlEventArgs args;
    application.events.registerFunctions.Notify(args);
    application.helpIds = AssignHelpIds(application.functions.All());
    const CXlOper module_name = ModuleName(application);
    bool is_complete = true;
    for (CXlFunctionDescriptor* descriptor : application.functions.All())
        is_complete &= Register(application, *descriptor, module_name);
    return is_complete;
}

bool RegisterFunction(CXllApp& application, CXlFunctionDescriptor& descriptor) {
    return Register(application, descriptor, ModuleName(application));
}

void UnregisterFunction(CXllApp& application, CXlFunctionDescriptor& descriptor) {
    Unregister(application, descriptor, ModuleName(application));
}

void UnregisterAll(CXllApp& application) {
    const CXlOper module_name = ModuleName(application);
    for (CXlFunctionDescriptor* descriptor : application.functions.All())
        Unregister(application, *descriptor, module_name);
}

} // namespace metrify
