#pragma once

// Whether an add-in has a ribbon is decided at run time. Load and close only ever call through this.

#include "xllrt/xl_oper.h"

namespace metrify {

class IXlpRibbonImpl {
  public:
    virtual ~IXlpRibbonImpl() = default;
    virtual bool IsEnabled() const = 0;
    /// Gives the earlier state.
    virtual bool SetEnabled(bool enabled) = 0;
    /// True if the host can have a ribbon.
    virtual bool IsAvailable() const = 0;
    virtual void Activate() = 0;
    virtual void Deactivate() = 0;
    virtual void Reset() = 0;
    virtual void Refresh() = 0;
    virtual void Invalidate(const CXlOper& item) = 0;
};

/// No ribbon.
class CXlpRibbonImplNull final : public IXlpRibbonImpl {
  public:
    bool IsEnabled() const override { return false; }
    bool SetEnabled(bool /*enabled*/) override { return false; }
    bool IsAvailable() const override { return false; }
    void Activate() override {}
    void Deactivate() override {}
    void Reset() override {}
    void Refresh() override {}
    void Invalidate(const CXlOper& /*item*/) override {}
};

/// The mode of an application without ribbon.
inline constexpr int kRibbonModeNone = -1;

/// A callback that the ribbon asks an add-in to answer.
struct XlRibbonCallback {
    std::int32_t type;
};

/// Makes the result what a callback of that type gets when the add-in has no answer.
void PutRibbonDefault(CXlOper& result, const XlRibbonCallback& callback);

} // namespace metrify
