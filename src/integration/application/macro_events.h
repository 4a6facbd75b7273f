#pragma once

// The events of old hosts, which call a macro named by one of their properties.

#include "integration/com/com_failure.h"
#include "integration/com/com_ptr.h"
#include "xllrt/app/xll_app.h"

#include <array>
#include <oaidl.h>

namespace metrify {

/// The events in the order of the host's properties.
enum XlMacroEvent : std::size_t {
    kMacroSheetActivate,
    kMacroSheetDeactivate,
    kMacroCalculate,
};

class CMacroEvents {
  public:
    /// Registers the macros and sets the host's properties. Returns false, with the reason and the properties
    /// restored, on failure.
    bool Connect(IDispatch* application, CXllApp* add_in, ComFailure& failure);

    /// Restores the properties.
    bool Disconnect(IDispatch* application, ComFailure& failure);

    /// Calls the add-in's operation, if there is an add-in, and then the macro that the property named
    /// before, even if the operation throws. The operation may destroy this object.
    void Handle(XlMacroEvent event, ComPtr<IDispatch> application, CXllApp* add_in);

  private:
    struct Entry {
        std::u16string macro; // that the property names while the add-in is connected
        std::u16string saved_name;
    };

    static constexpr std::size_t kCount = 3;

    bool Register(CXllApp& add_in);
    bool Restore(IDispatch* application, std::size_t count, ComFailure& failure);

    std::array<Entry, kCount> entries_;
};

} // namespace metrify
