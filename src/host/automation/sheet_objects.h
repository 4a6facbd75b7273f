#pragma once

// Workbooks, worksheets and ranges as automation shows them, and the window of a workbook.

#include "host/automation/dispatch_object.h"

#include <string>

namespace metrify::host {

class WorkbookObject final : public DispatchObject<WorkbookObject> {
  public:
    WorkbookObject(std::shared_ptr<ObjectSurroundings> surroundings, ComPtr<IDispatch> application,
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
    WorksheetObject(std::shared_ptr<ObjectSurroundings> surroundings, ComPtr<IDispatch> workbook,
                    std::u16string name);

    static std::span<const MemberRow<WorksheetObject>> Members();

  private:
    HRESULT Parent(const MemberCall& call, ComVariant& answer);
    HRESULT Name(const MemberCall& call, ComVariant& answer);

    ComPtr<IDispatch> workbook_;
    std::u16string name_;
};

/// Where a range says that it lies.
struct RangeAddresses {
    std::u16string plain;    ///< as "$A$1"
    std::u16string external; ///< with workbook and sheet in front; a host may leave them away
};

class RangeObject final : public DispatchObject<RangeObject> {
  public:
    RangeObject(std::shared_ptr<ObjectSurroundings> surroundings, ComPtr<IDispatch> worksheet,
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
    /// `application` is what the window gives out as such: an object, or any other value.
    WindowObject(std::shared_ptr<ObjectSurroundings> surroundings, ComVariant application);

    static std::span<const MemberRow<WindowObject>> Members();

  private:
    HRESULT Application(const MemberCall& call, ComVariant& answer);

    ComVariant application_;
};

} // namespace metrify::host
