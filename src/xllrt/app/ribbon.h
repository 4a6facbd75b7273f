#pragma once

// Whether an add-in has a ribbon is decided at run time. Load and close only ever call through this.

#include "xllrt/value/xl_oper.h"

#include <string>
#include <utility>

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

/// A ribbon that add-ins share: a server outside of them, which is told by `SendRibbonCommand`.
class CXlpRibbonImplShared final : public IXlpRibbonImpl {
  public:
    bool IsEnabled() const override { return enabled_; }
    bool SetEnabled(bool enabled) override { return std::exchange(enabled_, enabled); }
    bool IsAvailable() const override;
    void Activate() override;
    void Deactivate() override;
    void Reset() override;
    void Refresh() override;
    void Invalidate(const CXlOper& item) override;

  private:
    bool enabled_ = false;
};

// The modes of an application.
inline constexpr int kRibbonModeNone = -1;
inline constexpr int kRibbonModeShared = 0;

/// A callback that the ribbon asks an add-in to answer.
struct XlRibbonCallback {
    std::int32_t type = 0;
    std::string id;  ///< of the control
    std::string tag; ///< of the control
    std::int32_t index = 0;
    std::string text; ///< as changed
    std::string selectedId;
    bool pressed = false;
};

/// Makes the result what a callback of that type gets when the add-in has no answer.
void PutRibbonDefault(CXlOper& result, const XlRibbonCallback& callback);

} // namespace metrify
