#pragma once

// Parts of an add-in that record calls in the host's call list: observers, a ribbon, a registry of wizard
// functions and its holder.

#include "tests/xllrt/gate/scripted_host.h"
#include "xllrt/app/ribbon.h"
#include "xllrt/event/app_events.h"
#include "xllrt/event/integration.h"

namespace metrify {

class RecordingObserver final : public CXlStaticEventObserver<CXlEventArgs> {
  public:
    RecordingObserver(ScriptedHost& host, CXlStaticEventObserver<CXlEventArgs>*& chain, std::string line)
        : CXlStaticEventObserver(chain), host_(host), line_(std::move(line)) {}
    void Notify(CXlEventArgs& /*args*/) override { host_.Note(line_); }

  private:
    ScriptedHost& host_;
    std::string line_;
};

class RecordingRibbon final : public IXlpRibbonImpl {
  public:
    explicit RecordingRibbon(ScriptedHost& host, bool enabled = true, bool available = true)
        : host_(host), enabled_(enabled), available_(available) {}
    RecordingRibbon(const RecordingRibbon&) = delete;
    RecordingRibbon& operator=(const RecordingRibbon&) = delete;
    ~RecordingRibbon() override { host_.Note("ribbon gone"); }
    bool IsEnabled() const override { return enabled_; }
    bool SetEnabled(bool /*enabled*/) override { return enabled_; }
    bool IsAvailable() const override { return available_; }
    void Activate() override { host_.Note("ribbon on"); }
    void Deactivate() override { host_.Note("ribbon off"); }
    void Reset() override {}
    void Refresh() override {}
    void Invalidate(const CXlOper& /*item*/) override {}

  private:
    ScriptedHost& host_;
    bool enabled_;
    bool available_;
};

class RecordingRegistry final : public IXlWizExUIFunctionRegistry {
  public:
    RecordingRegistry(ScriptedHost& host, bool has_entries, bool ready)
        : host_(host), has_entries_(has_entries), ready_(ready) {}
    RecordingRegistry(const RecordingRegistry&) = delete;
    RecordingRegistry& operator=(const RecordingRegistry&) = delete;
    ~RecordingRegistry() override { host_.Note("registry gone"); }
    bool HasEntries() const override { return has_entries_; }
    bool UsesThemes() const override { return false; }
    IXlWizExFunction* FindFunction(std::string_view /*name*/) const override { return nullptr; }
    const XlIconSize* IconSize(int /*kind*/) const override { return nullptr; }
    bool MakeReady() override {
        host_.Note("registry readied");
        return ready_;
    }
    void Close() override { host_.Note("registry closed"); }

  private:
    ScriptedHost& host_;
    bool has_entries_;
    bool ready_;
};

class RecordingComHelper final : public IXlComHelper {
  public:
    explicit RecordingComHelper(ScriptedHost& host) : host_(host) {}
    RecordingComHelper(const RecordingComHelper&) = delete;
    RecordingComHelper& operator=(const RecordingComHelper&) = delete;
    ~RecordingComHelper() override { host_.Note("helper gone"); }
    void HoldRegistry(IXlWizExUIFunctionRegistry& /*registry*/) override {
        host_.Note("registry held");
        holds_ = true;
    }
    bool HoldsRegistry() const override { return holds_; }
    void ReleaseRegistry() override {
        host_.Note("registry released");
        holds_ = false;
    }

  private:
    ScriptedHost& host_;
    bool holds_ = false;
};

class RecordingDetector final : public IXlFormulaWizardDetector {
  public:
    explicit RecordingDetector(ScriptedHost& host) : host_(host) {}
    RecordingDetector(const RecordingDetector&) = delete;
    RecordingDetector& operator=(const RecordingDetector&) = delete;
    ~RecordingDetector() override { host_.Note("detector gone"); }
    bool IsOpen() const override { return false; }

  private:
    ScriptedHost& host_;
};

class WizardIntegration final : public CXlIntegration {
  public:
    WizardIntegration(ScriptedHost& host, bool has_entries, bool ready)
        : host_(host), has_entries_(has_entries), ready_(ready) {}
    std::unique_ptr<IXlWizExUIFunctionRegistry> MakeWizardRegistry() const override {
        return std::make_unique<RecordingRegistry>(host_, has_entries_, ready_);
    }
    std::unique_ptr<IXlFormulaWizardDetector> MakeWizardDetector() const override {
        return std::make_unique<RecordingDetector>(host_);
    }
    std::unique_ptr<IXlComHelper> MakeComHelper() const override {
        return std::make_unique<RecordingComHelper>(host_);
    }

  private:
    ScriptedHost& host_;
    bool has_entries_;
    bool ready_;
};

} // namespace metrify
