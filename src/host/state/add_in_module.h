#pragma once

// A loaded module.

#include <memory>
#include <string>

namespace metrify::host {

class AddInModule {
  public:
    virtual ~AddInModule() = default;

    /// The whole path of the module.
    virtual const std::u16string& Path() const = 0;

    /// The address of an export, or null.
    virtual void* Find(const std::string& name) const = 0;
};

/// Loads a module from a file, whose path is in UTF-8. Null on failure, with the system's message in `error`.
/// The module is unloaded when the object is destroyed.
std::unique_ptr<AddInModule> LoadAddInModule(const std::string& path, std::string& error);

} // namespace metrify::host
