#include "xllrt/event/integration.h"

namespace metrify {

namespace {

class NoComHelper final : public IXlComHelper {
  public:
    void HoldRegistry(IXlWizExUIFunctionRegistry& /*registry*/) override {}
    bool HoldsRegistry() const override { return false; }
    void ReleaseRegistry() override {}
};

class EmptyWizardRegistry final : public IXlWizExUIFunctionRegistry {
  public:
    bool HasEntries() const override { return false; }
    bool UsesThemes() const override { return false; }
    IXlWizExFunction* FindFunction(std::string_view /*name*/) const override { return nullptr; }
    const XlIconSize* IconSize(int /*kind*/) const override { return nullptr; }
    bool MakeReady() override { return false; }
    void Close() override {}
};

class NoWizardDetector final : public IXlFormulaWizardDetector {
  public:
    bool IsOpen() const override { return false; }
};

class NoComHolder final : public IXlComHolder {
  public:
    bool Start(XlComFailure& /*failure*/) override { return true; }
    bool Connect(XlComFailure& /*failure*/) override { return true; }
    bool DescribeWorkbook(XlHostObject* /*workbook*/, std::u16string& /*name*/) override { return false; }
    bool DescribeSheet(XlHostObject* /*sheet*/, std::u16string& /*workbook*/,
                       std::u16string& /*name*/) override {
        return false;
    }
    bool DescribeRange(XlHostObject* /*range*/, std::u16string& /*address*/) override { return false; }
    bool Run(std::span<const XlComValue> /*values*/, CXlOper& /*answer*/) override { return false; }
    bool RunText(const std::u16string& /*text*/, CXlOper& /*answer*/) override { return false; }
};

} // namespace

std::unique_ptr<IXlComHelper> CXlIntegration::MakeComHelper() const {
    return std::make_unique<NoComHelper>();
}

std::unique_ptr<IXlWizExUIFunctionRegistry> CXlIntegration::MakeWizardRegistry() const {
    return std::make_unique<EmptyWizardRegistry>();
}

std::unique_ptr<IXlFormulaWizardDetector> CXlIntegration::MakeWizardDetector() const {
    return std::make_unique<NoWizardDetector>();
}

std::unique_ptr<IXlComHolder> CXlIntegration::MakeComHolder() const {
    return std::make_unique<NoComHolder>();
}

void CXlIntegration::KeepModule() const {}

const CXlIntegration& NoIntegration() {
    static const CXlIntegration none;
    return none;
}

} // namespace metrify
