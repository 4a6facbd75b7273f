#pragma once

#include "host/state/add_in_module.h"

namespace metrify::gnumeric {

/// The add-in, which Gnumeric keeps loaded. What Gnumeric opened as the add-in finds the exports of the
/// bridge before those of the add-in.
class LoadedModule final : public host::AddInModule {
  public:
    explicit LoadedModule(std::u16string path);

    const std::u16string& Path() const override { return path_; }
    void* Find(const std::string& name) const override;

  private:
    std::u16string path_; ///< of what Gnumeric opened
    std::string add_in_path_;
};

} // namespace metrify::gnumeric
