#pragma once

// The automation objects of workbooks, worksheets, ranges and workbook windows.

#include "host/automation/dispatch_object.h"

#include <string>

namespace metrify::host {

class WorkbookObject final : public DispatchObject<WorkbookObject> {
  public:
    WorkbookObject(std::shared_ptr<ObjectContext> context, ComPtr<IDispatch> application,
                   std::u16string name);

    static std::span<const MemberRow<WorkbookObject>> Members();

  private:
    HRESULT Application(const MemberCall& call, ComVariant& answer);
    HRESULT Name(const MemberCall& call, ComVariant& answer);

    ComPtr<IDispatch> application_;
    std::u16string name_;
};

class WorksheetObject final : public DispatchObject<WorksheetObject> {
  public:
    WorksheetObject(std::shared_ptr<ObjectContext> context, ComPtr<IDispatch> workbook, std::u16string name);

    static std::span<const MemberRow<WorksheetObject>> Members();

  private:
    HRESULT Parent(const MemberCall& call, ComVariant& answer);
    HRESULT Name(const MemberCall& call, ComVariant& answer);

    ComPtr<IDispatch> workbook_;
    std::u16string name_;
};

/// The address of a range.
struct RangeAddresses {
    std::u16string plain;    ///< for example "$A$1"
    std::u16string external; ///< with workbook and sheet, which a host may omit
};

class RangeObject final : public DispatchObject<RangeObject> {
  public:
    RangeObject(std::shared_ptr<ObjectContext> context, ComPtr<IDispatch> worksheet,
                RangeAddresses addresses);

    static std::span<const MemberRow<RangeObject>> Members();

  private:
    HRESULT AddressLocal(const MemberCall& call, ComVariant& answer);
    HRESULT Worksheet(const MemberCall& call, ComVariant& answer);

    ComPtr<IDispatch> worksheet_;
    RangeAddresses addresses_;
};

/// The window of a workbook.
class WindowObject final : public DispatchObject<WindowObject> {
  public:
    /// `application` is the value of the property of that name: an object or any other value.
    WindowObject(std::shared_ptr<ObjectContext> context, ComVariant application);

    static std::span<const MemberRow<WindowObject>> Members();

  private:
    HRESULT Application(const MemberCall& call, ComVariant& answer);

    ComVariant application_;
};

} // namespace metrify::host
