#pragma once

// The integration with a real host: formula dialog, automation, events.

#include "xllrt/event/integration.h"

namespace metrify {

class CXlRealIntegration final : public CXlIntegration {
  public:
    std::unique_ptr<IXlComHelper> MakeComHelper() const override;
    std::unique_ptr<IXlWizExUIFunctionRegistry> MakeWizardRegistry() const override;
    std::unique_ptr<IXlFormulaWizardDetector> MakeWizardDetector() const override;
    std::unique_ptr<IXlComHolder> MakeComHolder() const override;
    void KeepModule() const override;
};

} // namespace metrify
