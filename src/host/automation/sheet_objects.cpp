#include "host/automation/sheet_objects.h"

namespace metrify::host {

std::span<const MemberRow<WorkbookObject>> WorkbookObject::Members() {
    static constexpr MemberRow<WorkbookObject> members[] = {
        {L"Application", &WorkbookObject::Parent},
        {L"Name", &WorkbookObject::Name},
    };
    return members;
}

std::span<const MemberRow<WorksheetObject>> WorksheetObject::Members() {
    static constexpr MemberRow<WorksheetObject> members[] = {
        {L"Parent", &WorksheetObject::Parent},
        {L"Name", &WorksheetObject::Name},
    };
    return members;
}

RangeObject::RangeObject(std::shared_ptr<ObjectContext> context, ComPtr<IDispatch> worksheet,
                         RangeAddresses addresses)
    : DispatchObject(std::move(context)), worksheet_(std::move(worksheet)), addresses_(std::move(addresses)) {
}

std::span<const MemberRow<RangeObject>> RangeObject::Members() {
    static constexpr MemberRow<RangeObject> members[] = {
        {L"AddressLocal", &RangeObject::AddressLocal},
        {L"Worksheet", &RangeObject::Worksheet},
    };
    return members;
}

// Arguments: row absolute, column absolute, reference style, external, relative to. All are optional.
HRESULT RangeObject::AddressLocal(const MemberCall& call, ComVariant& answer) {
    constexpr std::size_t kExternal = 3;
    const ComVariant external = call.At(kExternal);
    const bool is_external = external.Type() == VT_BOOL && V_BOOL(&external.Get()) != VARIANT_FALSE;
    answer = ComVariant(is_external ? addresses_.external : addresses_.plain);
    return S_OK;
}

HRESULT RangeObject::Worksheet(const MemberCall& /*call*/, ComVariant& answer) {
    answer = ComVariant(worksheet_.Get());
    return S_OK;
}

WindowObject::WindowObject(std::shared_ptr<ObjectContext> context, ComVariant application)
    : DispatchObject(std::move(context)), application_(std::move(application)) {}

std::span<const MemberRow<WindowObject>> WindowObject::Members() {
    static constexpr MemberRow<WindowObject> members[] = {{L"Application", &WindowObject::Application}};
    return members;
}

HRESULT WindowObject::Application(const MemberCall& /*call*/, ComVariant& answer) {
    answer = application_;
    return S_OK;
}

} // namespace metrify::host
