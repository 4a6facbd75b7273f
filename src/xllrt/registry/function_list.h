#pragma once

// The functions of an application.

#include "xllrt/registry/function_descriptor.h"

#include <deque>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

namespace metrify {

/// A list of descriptors whose addresses do not change: one that is removed from the list exists as long as
/// the list itself.
class CXlFunctionList {
  public:
    CXlFunctionList() = default;
    CXlFunctionList(const CXlFunctionList&) = delete;
    CXlFunctionList& operator=(const CXlFunctionList&) = delete;

    /// Adds a descriptor at the end.
    CXlFunctionDescriptor& Add(CXlFunctionDescriptor descriptor);

    /// Adds a descriptor for each linked record, the last linked first. Returns their number.
    int BuildDescriptors();

    /// The first descriptor of that name, case ignored, or null.
    CXlFunctionDescriptor* FindFunction(std::u16string_view name) const;
    CXlFunctionDescriptor* FindFunction(std::string_view name) const;

    /// Removes the first descriptor of that name from the list.
    void RemoveFunction(std::u16string_view name);

    /// Lists these descriptors and no others. They must be in this list, or have been in it.
    void Restore(std::vector<CXlFunctionDescriptor*> listed) { listed_ = std::move(listed); }

    /// Empties the list. The descriptors become unregistered.
    void Clear();

    std::span<CXlFunctionDescriptor* const> All() const { return listed_; }

  private:
    std::vector<CXlFunctionDescriptor*> listed_;
    std::deque<CXlFunctionDescriptor> owned_;
};

} // namespace metrify
