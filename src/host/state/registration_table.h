#pragma once

// The functions and commands that add-ins registered.

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
    std::vector<CellValue> arguments; ///< all that were registered, in the host's order
    bool is_wide;                     ///< whether the call was one of the wide family
    EntryType type;
    void* entry;
    int uses; ///< how often it was registered and not taken back

    /// True for a command; otherwise it is a worksheet function.
    bool IsCommand() const;
};

class RegistrationTable {
  public:
    /// Adds a registration, or counts another use of the same procedure under the same name. Gives its id.
    double Add(Registration registration);

    /// Takes one use back. False for an id that is none.
    bool Remove(double id);

    /// Takes all of a module back. False if it has none.
    bool RemoveModule(std::u16string_view module);

    /// Gives a name to a registration.
    void SetName(std::u16string_view name, double id);
    /// Takes a name away.
    void DeleteName(std::u16string_view name);
    bool HasName(std::u16string_view name) const;

    /// The registration in use under a name, or null.
    const Registration* Find(std::u16string_view name) const;
    const Registration* Find(double id) const;

    /// All registrations in use, in the order in which they came.
    std::vector<const Registration*> All() const;

  private:
    std::deque<Registration> registrations_; // those out of use stay, so that no id comes twice
    std::map<std::u16string, double> names_; // by the name in small letters
};

} // namespace metrify::host
