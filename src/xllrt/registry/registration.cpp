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

// True if the texts of a family register the function. If both families have entry and type, it is the one
// with argument names.
template <class Char, class OtherChar>
bool IsUsable(const FunctionTexts<Char>& texts, const FunctionTexts<OtherChar>& other) {
    return !texts.entry.empty() && !texts.type.empty() &&
           (!texts.argumentNames.empty() || other.type.empty() || other.argumentNames.empty());
}

bool IsForWide(const CXlFunctionDescriptor& descriptor) {
    return HostFlag() && IsUsable(descriptor.wide, descriptor.narrow);
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
    return IsUsable(descriptor.narrow, descriptor.wide) ? Family::narrow : Family::none;
}

int CallInFamily(CXlOper& result, Family family, int function, std::span<const CXlOper> arguments) {
    return family == Family::wide ? CallArray12(result, function, arguments)
                                  : Call4(result, function, arguments);
}

// The host forgets a name for good only when another procedure has been registered under it, as a hidden one.
void HideName(const RegistrationContext& context, const CXlFunctionDescriptor& descriptor, Family family) {
    std::array<CXlOper, 6> values;
    if (context.askHostName(values[0]) != xlretSuccess)
        values[0] = context.moduleName;
    values[1].SetText("xlAutoRemove");
    values[2].SetText("J");
    values[3].SetText(descriptor.functionName);
    values[4] = ThisThreadState().missing;
    values[5].SetInt(0);
    CXlOper ignored;
    CallInFamily(ignored, family, xlfRegister, values);
}

} // namespace

bool RegisterFunction(const RegistrationContext& context, CXlFunctionDescriptor& descriptor) {
    const Family family = FamilyOf(descriptor);
    if (family == Family::none)
        return true;
    const bool is_wide = family == Family::wide;
    const std::u16string help = HelpText(descriptor, context.helpFile, context.helpIds);
    const std::vector<CXlOper> values = is_wide ? WideRegistration(descriptor, context.moduleName, help)
                                                : NarrowRegistration(descriptor, context.moduleName, help);
    std::span<const CXlOper> sent = values;
    if (context.shortRegistration &&
        CountArguments(is_wide ? descriptor.wide.type : descriptor.narrow.type) == 0)
        sent = sent.first(kShortRegistration);
    CXlOper id;
    if (CallInFamily(id, family, xlfRegister, sent) == xlretSuccess)
        descriptor.registerId = id.ToNumber();
    descriptor.registered = descriptor.registerId != 0.0 ? 1 : 0;
    return descriptor.registered != 0;
}

void UnregisterFunction(const RegistrationContext& context, CXlFunctionDescriptor& descriptor) {
    const Family family = IsForWide(descriptor) ? Family::wide : Family::narrow;
    CXlOper ignored;
    if (descriptor.registerId != 0.0) {
        const std::array<CXlOper, 1> id{CXlOper(descriptor.registerId)};
        CallInFamily(ignored, family, xlfUnregister, id);
        descriptor.registerId = 0.0;
    }
    std::array<CXlOper, 1> name;
    name[0].SetText(descriptor.functionName);
    CallInFamily(ignored, family, xlfSetName, name);
    descriptor.registered = 0;
    HideName(context, descriptor, family);
}

} // namespace metrify
