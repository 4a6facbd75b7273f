#include "host/state/registration_table.h"

#include "host/sheet/coercion.h"

#include <algorithm>

namespace metrify::host {

namespace {

std::u16string Folded(std::u16string_view name) {
    std::u16string folded(name);
    std::transform(folded.begin(), folded.end(), folded.begin(), FoldedCase);
    return folded;
}

} // namespace

bool Registration::IsCommand() const {
    // The index of the macro type, a number or its text, among the registered arguments.
    constexpr std::size_t kMacroType = 5;
    constexpr std::int32_t kCommand = 2;
    if (arguments.size() <= kMacroType)
        return false;
    const CellValue kind = ToIntegerValue(arguments[kMacroType], 0, kCommand);
    const auto* number = kind.As<std::int32_t>();
    return number && *number == kCommand;
}

double RegistrationTable::Add(Registration registration) {
    const auto same = [&registration](const Registration& other) {
        return other.uses > 0 && other.procedure == registration.procedure &&
               other.name == registration.name && EqualIgnoringCase(other.module, registration.module);
    };
    const auto found = std::find_if(registrations_.begin(), registrations_.end(), same);
    registration.id = static_cast<double>(registrations_.size() + 1);
    registration.uses = 1;
    if (found == registrations_.end()) {
        registrations_.push_back(std::move(registration));
    } else {
        registration.id = found->id;
        registration.uses = found->uses + 1;
        *found = std::move(registration);
        return found->id;
    }
    return registrations_.back().id;
}

bool RegistrationTable::Remove(double id) {
    const auto found = std::find_if(registrations_.begin(), registrations_.end(),
                                    [id](const Registration& one) { return one.id == id && one.uses > 0; });
    if (found == registrations_.end())
        return false;
    --found->uses;
    return true;
}

bool RegistrationTable::RemoveModule(std::u16string_view module) {
    bool is_known = false;
    for (Registration& registration : registrations_) {
        if (registration.uses == 0 || !EqualIgnoringCase(registration.module, module))
            continue;
        registration.uses = 0;
        is_known = true;
    }
    return is_known;
}

void RegistrationTable::SetName(std::u16string_view name, double id) {
    names_[Folded(name)] = id;
}

void RegistrationTable::DeleteName(std::u16string_view name) {
    names_.erase(Folded(name));
}

bool RegistrationTable::HasName(std::u16string_view name) const {
    return names_.contains(Folded(name));
}

const Registration* RegistrationTable::Find(std::u16string_view name) const {
    const auto found = names_.find(Folded(name));
    return found != names_.end() ? Find(found->second) : nullptr;
}

const Registration* RegistrationTable::Find(double id) const {
    const auto found = std::find_if(registrations_.begin(), registrations_.end(),
                                    [id](const Registration& one) { return one.id == id && one.uses > 0; });
    return found != registrations_.end() ? &*found : nullptr;
}

std::vector<const Registration*> RegistrationTable::All() const {
    std::vector<const Registration*> in_use;
    for (const Registration& registration : registrations_)
        if (registration.uses > 0)
            in_use.push_back(&registration);
    return in_use;
}

} // namespace metrify::host
