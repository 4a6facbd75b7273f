#pragma once

// The registered functions and commands.

#include "host/sheet/cell_value.h"
#include "host/state/entry_type.h"

#include <deque>
#include <map>
#include <string>
#include <vector>

namespace metrify::host {

struct Registration {
    double id;
    std::u16string module;
    std::u16string procedure;
    std::u16string type_text;
    std::u16string name;
    std::vector<CellValue> arguments; ///< all arguments of the registration, in their order
    bool is_wide;                     ///< registered by a call of the wide family
    EntryType type;
    void* entry;
    int uses; ///< registrations minus removals

    /// True for a command; otherwise it is a worksheet function.
    bool IsCommand() const;
};

class RegistrationTable {
  public:
    /// Adds a registration, or increments the uses of the same procedure under the same name. Gives its id.
    double Add(Registration registration);

    /// Decrements the uses. False for an unknown id.
    bool Remove(double id);

    /// Removes all registrations of a module. False if it has none.
    bool RemoveModule(std::u16string_view module);

    /// Defines a name of a registration.
    void SetName(std::u16string_view name, double id);
    /// Deletes a name.
    void DeleteName(std::u16string_view name);
    bool HasName(std::u16string_view name) const;

    /// The registration in use under a name, or null.
    const Registration* Find(std::u16string_view name) const;
    const Registration* Find(double id) const;

    /// All registrations in use, in the order of their registration.
    std::vector<const Registration*> All() const;

  private:
    std::deque<Registration> registrations_; // unused ones are kept, so that ids stay unique
    std::map<std::u16string, double> names_; // keys in small letters
};

} // namespace metrify::host
