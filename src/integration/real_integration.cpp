#include "integration/real_integration.h"

#include "integration/application/com_holder.h"
#include "integration/com/kept_module.h"
#include "integration/wizard/wizard_detector.h"
#include "integration/wizard/wizard_hook.h"
#include "integration/wizard/wizard_registry.h"

#include <utility>

namespace metrify {

namespace {

// Hooks the host's formula dialog while it holds a registry.
class ComHelper final : public IXlComHelper {
  public:
    ComHelper() = default;
    ComHelper(const ComHelper&) = delete;
    ComHelper& operator=(const ComHelper&) = delete;
    ~ComHelper() override { ComHelper::ReleaseRegistry(); }

    void HoldRegistry(IXlWizExUIFunctionRegistry& registry) override {
        CWizardHook::Install(registry);
        holds_registry_ = true;
    }

    bool HoldsRegistry() const override { return holds_registry_; }

    void ReleaseRegistry() override {
        if (std::exchange(holds_registry_, false))
            CWizardHook::Remove();
    }

  private:
    bool holds_registry_ = false;
};

} // namespace

std::unique_ptr<IXlComHelper> CXlRealIntegration::MakeComHelper() const {
    return std::make_unique<ComHelper>();
}

std::unique_ptr<IXlWizExUIFunctionRegistry> CXlRealIntegration::MakeWizardRegistry() const {
    return std::make_unique<CXlWizExUIFunctionRegistry>();
}

std::unique_ptr<IXlFormulaWizardDetector> CXlRealIntegration::MakeWizardDetector() const {
    return std::make_unique<CXlFormulaWizardDetector>();
}

std::unique_ptr<IXlComHolder> CXlRealIntegration::MakeComHolder() const {
    return std::make_unique<CXlComHolder>();
}

void CXlRealIntegration::KeepModule() const {
    metrify::KeepModule();
}

} // namespace metrify
