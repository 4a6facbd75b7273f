#pragma once

// Adapts CXllCom to the interface used by the application object.

#include "integration/application/xll_com.h"
#include "xllrt/event/integration.h"

namespace metrify {

class CXlComHolder final : public IXlComHolder {
  public:
    bool Start(XlComFailure& failure) override;
    bool Connect(XlComFailure& failure) override;
    bool DescribeWorkbook(XlHostObject* workbook, std::u16string& name) override;
    bool DescribeSheet(XlHostObject* sheet, std::u16string& workbook, std::u16string& name) override;
    bool DescribeRange(XlHostObject* range, std::u16string& address) override;
    bool Run(std::span<const XlComValue> values, CXlOper& answer) override;
    bool RunText(const std::u16string& text, CXlOper& answer) override;

  private:
    CXllCom com_;
};

} // namespace metrify
