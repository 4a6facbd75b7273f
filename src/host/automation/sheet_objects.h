#pragma once

// The automation objects of workbooks, worksheets, ranges and workbook windows.

#include "host/automation/dispatch_object.h"

#include <string>

namespace metrify::host {

/// An object with a name and a parent, which its class gives under a name of its choice.
template <class Self>
class NamedObject : public DispatchObject<Self> {
  public:
    NamedObject(std::shared_ptr<ObjectContext> context, ComPtr<IDispatch> parent, std::u16string name)
        : DispatchObject<Self>(std::move(context)), parent_(std::move(parent)), name_(std::move(name)) {}

  protected:
    HRESULT Parent(const MemberCall& /*call*/, ComVariant& answer) {
        answer = ComVariant(parent_.Get());
        return S_OK;
    }
    HRESULT Name(const MemberCall& /*call*/, ComVariant& answer) {
        answer = ComVariant(name_);
        return S_OK;
    }

  private:
    ComPtr<IDispatch> parent_;
    std::u16string name_;
};

/// Its parent is the application.
class WorkbookObject final : public NamedObject<WorkbookObject> {
  public:
    using NamedObject::NamedObject;

    static std::span<const MemberRow<WorkbookObject>> Members();
};

/// Its parent is a workbook.
class WorksheetObject final : public NamedObject<WorksheetObject> {
  public:
    using NamedObject::NamedObject;

    static std::span<const MemberRow<WorksheetObject>> Members();
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
