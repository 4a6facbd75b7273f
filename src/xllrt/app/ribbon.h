#pragma once

// The ribbon of an add-in, an interface with several implementations.

#include "xllrt/value/xl_oper.h"

#include <string>
#include <utility>

namespace metrify {

class IXlpRibbonImpl {
  public:
    virtual ~IXlpRibbonImpl() = default;
    virtual bool IsEnabled() const = 0;
    /// Returns the previous state.
    virtual bool SetEnabled(bool enabled) = 0;
    /// True if the host can have a ribbon.
    virtual bool IsAvailable() const = 0;
    virtual void Activate() = 0;
    virtual void Deactivate() = 0;
    virtual void Reset() = 0;
    virtual void Refresh() = 0;
    virtual void Invalidate(const CXlOper& item) = 0;
};

/// The implementation without a ribbon.
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

/// A ribbon that add-ins share: a separate server, controlled by `SendRibbonCommand`.
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

// Ribbon modes of an application.
inline constexpr int kRibbonModeNone = -1;
inline constexpr int kRibbonModeShared = 0;

/// A callback from the ribbon to an add-in.
struct XlRibbonCallback {
    std::int32_t type = 0;
    std::string id;  ///< of the control
    std::string tag; ///< of the control
    std::int32_t index = 0;
    std::string text; ///< the changed text
    std::string selectedId;
    bool pressed = false;
};

/// Sets the result to the default for the type of the callback.
void PutRibbonDefault(CXlOper& result, const XlRibbonCallback& callback);

} // namespace metrify
