#include "integration/real_integration.h"

#include "integration/event_call.h"
#include "integration/wizard_detector.h"
#include "integration/wizard_hook.h"
#include "integration/wizard_registry.h"
#include "integration/xll_com.h"

namespace metrify {

namespace {

[[noreturn]] void Throw(const ComFailure& failure) {
    throw CXlComException(failure.text, static_cast<std::uint32_t>(failure.code));
}

// Starts the road to the host, and ends it.
class ComHolder final : public IXlComHolder {
  public:
    ComHolder() {
        ComFailure failure;
        if (!com_.Init(failure)) {
            Throw(failure);
        }
    }

    void Connect() override {
        ComFailure failure;
        if (!com_.SetEvents(true, failure)) {
            Throw(failure);
        }
    }

  private:
    CXllCom com_;
};

class ComHelper final : public IXlComHelper {
  public:
    void HoldRegistry(IXlWizardRegistry& registry) override {
        if (auto* const functions = dynamic_cast<IXlWizExUIFunctionRegistry*>(&registry)) {
            CWizardHook::Install(*functions);
            holds_registry_ = true;
        }
    }
    bool HoldsRegistry() const override { return holds_registry_; }
    void ReleaseRegistry() override {
        CWizardHook::Remove();
        holds_registry_ = false;
    }
    bool Run(const XlEventCall& call, CXlOper& answer) override { return RunEventCall(call, answer); }
    ~ComHelper() override {
        if (holds_registry_) {
            CWizardHook::Remove();
        }
    }

  private:
    bool holds_registry_ = false;
};

} // namespace

std::unique_ptr<IXlComHelper> CXlRealIntegration::MakeComHelper() const {
    return std::make_unique<ComHelper>();
}

std::unique_ptr<IXlWizardRegistry> CXlRealIntegration::MakeWizardRegistry() const {
    return std::make_unique<CXlWizExUIFunctionRegistry>();
}

std::unique_ptr<IXlFormulaWizardDetector> CXlRealIntegration::MakeWizardDetector() const {
    return std::make_unique<CXlFormulaWizardDetector>();
}

std::unique_ptr<IXlComHolder> CXlRealIntegration::MakeComHolder() const {
    return std::make_unique<ComHolder>();
}

} // namespace metrify
