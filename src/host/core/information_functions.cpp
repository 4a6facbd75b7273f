// Functions for information: conversions, names, the version and the settings of the host, the break key.

#include "host/core/host_functions.h"
#include "host/entry/calculation.h"
#include "host/entry/registered_call.h"
#include "host/sheet/coercion.h"

#include <algorithm>
#include <iterator>
#include <limits>

namespace metrify::host {

namespace {

// ---- Conversion

// A reference converted to a wanted reference type.
CellValue ToReference(const HostState& state, Reference reference, int wanted) {
    if ((wanted & xltypeRef) != 0) {
        reference.is_simple = false;
        return reference;
    }
    const Sheet* active = state.books.Active();
    reference.is_simple = reference.areas.size() == 1 && active && active->id() == reference.sheet;
    return reference.is_simple ? CellValue(std::move(reference)) : CellValue(CellError{xlerrRef});
}

// A value converted to the first wanted type for which that is possible.
CellValue ToWanted(const HostCall& call, const CellValue& value, int wanted) {
    using Narrow = std::numeric_limits<std::int16_t>;
    using Wide = std::numeric_limits<std::int32_t>;
    if (value.Is<CellError>())
        return value;
    CellValue converted = CellError{xlerrValue};
    const auto is_done = [&converted] { return !converted.Is<CellError>(); };
    if ((wanted & xltypeNum) != 0)
        converted = ToNumberValue(value);
    if (!is_done() && (wanted & xltypeInt) != 0)
        converted = ToIntegerValue(value, call.is_wide ? Wide::min() : Narrow::min(),
                                   call.is_wide ? Wide::max() : Narrow::max());
    if (!is_done() && (wanted & xltypeBool) != 0)
        converted = ToBoolValue(value);
    if (!is_done() && (wanted & xltypeStr) != 0)
        converted = ToTextValue(value);
    if (!is_done() && (wanted & xltypeMulti) != 0)
        converted = RowOf({value});
    return converted;
}

// ---- The settings

std::u16string VersionText(const HostState& state) {
    return NumberText(state.version) + u".0";
}

struct InfoItem {
    std::u16string_view name;
    CellValue (*value)(const HostState&);
};

const InfoItem info_items[] = {
    {u"release", [](const HostState& state) -> CellValue { return VersionText(state); }},
    {u"system", [](const HostState&) -> CellValue { return u"pcdos"; }},
    {u"recalc", [](const HostState&) -> CellValue { return u"Automatic"; }},
    {u"numfile",
     [](const HostState& state) -> CellValue { return static_cast<double>(state.books.count()); }},
};

} // namespace

HostAnswer Abort(const HostCall& call) {
    const CellValue retain = call.IsMissing(0) ? CellValue(true) : ToBoolValue(call.Argument(0));
    const auto* is_retained = retain.As<bool>();
    if (!is_retained)
        return CellError{xlerrValue};
    if (!*is_retained && CurrentContext() == CallContext::calculation_thread)
        return HostAnswer::Code(kRetNotThreadSafe);
    const bool is_pressed = call.state.escape.IsPressed();
    if (!*is_retained)
        call.state.escape.Clear();
    return is_pressed;
}

HostAnswer Coerce(const HostCall& call) {
    const CellValue& given = call.arguments[0];
    // By default any type except a reference.
    constexpr int kAnyValue = kTypeMask & ~(xltypeRef | xltypeSRef);
    const CellValue type =
        call.IsMissing(1) ? CellValue(kAnyValue) : ToIntegerValue(call.Argument(1), 1, 0x0FFF);
    if (!type.Is<std::int32_t>())
        return CellError{xlerrValue};
    const std::int32_t wanted = *type.As<std::int32_t>();
    const auto* reference = given.As<Reference>();
    if (reference && (wanted & (xltypeRef | xltypeSRef)) != 0)
        return ToReference(call.state, *reference, wanted);
    const CellValue value = reference ? ValueOfReference(call.state, *reference) : given;
    return (wanted & TypeCodeOf(value)) != 0 ? value : ToWanted(call, value, wanted);
}

HostAnswer GetName(const HostCall& call) {
    if (!call.state.module)
        return HostAnswer::Code(xlretFailed);
    return call.state.module->Path();
}

HostAnswer GetWindow(const HostCall& call) {
    // An integer of the narrow family holds only the low half.
    const std::uint32_t handle = call.state.window_handle;
    return call.is_wide ? CellValue(static_cast<std::int32_t>(handle))
                        : CellValue(std::int32_t{static_cast<std::int16_t>(handle)});
}

HostAnswer Info(const HostCall& call) {
    CellValue item = ToTextValue(call.arguments[0]);
    const auto* name = item.As<std::u16string>();
    if (!name)
        return item;
    const auto* found =
        std::find_if(std::begin(info_items), std::end(info_items),
                     [name](const InfoItem& one) { return EqualIgnoringCase(one.name, *name); });
    return found != std::end(info_items) ? found->value(call.state) : CellValue(CellError{xlerrValue});
}

HostAnswer GetWorkspace(const HostCall& call) {
    constexpr std::int32_t kEnvironment = 1;
    constexpr std::int32_t kVersion = 2;
    constexpr std::int32_t kInternational = 37;
    constexpr std::int32_t kEcho = 40;
    const CellValue item = ToIntegerValue(call.arguments[0], 1, std::numeric_limits<std::int16_t>::max());
    const auto* number = item.As<std::int32_t>();
    switch (number ? *number : 0) {
    case kEnvironment:
        return u"Windows (64-bit) NT 6.01";
    case kVersion:
        return VersionText(call.state);
    case kInternational:
        return RowOf(call.state.international);
    case kEcho:
        return call.state.echo;
    default:
        return CellError{xlerrValue};
    }
}

} // namespace metrify::host
