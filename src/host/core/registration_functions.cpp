// Functions for registration.

#include "host/core/host_functions.h"
#include "host/sheet/coercion.h"

namespace metrify::host {

namespace {

// A text argument; nothing if it is omitted or not a text.
std::optional<std::u16string> Text(const HostCall& call, std::size_t index) {
    const auto* text = call.Argument(index).As<std::u16string>();
    return text ? std::optional(*text) : std::nullopt;
}

std::string NameOfExport(const std::u16string& name) {
    std::string ascii;
    for (const char16_t c : name)
        ascii += c < 0x80 ? static_cast<char>(c) : '?';
    return ascii;
}

} // namespace

// Arguments: module, procedure, type text, name in the host, names of the arguments, kind of macro, category,
// shortcut, help topic, description, descriptions of the arguments.
HostAnswer Register(const HostCall& call) {
    HostState& state = call.state;
    const auto module = Text(call, 0);
    const auto procedure = Text(call, 1);
    const auto type_text = Text(call, 2);
    const auto name = call.IsMissing(3) ? procedure : Text(call, 3);
    if (!module || !procedure || !type_text || !name || name->empty())
        return CellError{xlerrValue};
    const auto type = ReadEntryType(*type_text, state.IsWide());
    const bool is_loaded = state.module && EqualIgnoringCase(state.module->Path(), *module);
    void* entry = is_loaded ? state.module->Find(NameOfExport(*procedure)) : nullptr;
    if (!type || !entry)
        return CellError{xlerrValue};
    const double id = state.registrations.Add(
        {0.0, *module, *procedure, *type_text, *name, call.arguments, call.is_wide, *type, entry, 0});
    state.registrations.SetName(*name, id);
    return id;
}

// Argument: the id of a function, or the path of a module for all its functions.
HostAnswer Unregister(const HostCall& call) {
    if (const auto* module = call.arguments[0].As<std::u16string>())
        return call.state.registrations.RemoveModule(*module);
    const CellValue id = ToNumberValue(call.arguments[0]);
    const auto* number = id.As<double>();
    return number ? CellValue(call.state.registrations.Remove(*number)) : id;
}

// Arguments: name, id. Without an id, the name is deleted.
HostAnswer SetName(const HostCall& call) {
    const auto name = Text(call, 0);
    if (!name || name->empty())
        return CellError{xlerrValue};
    if (call.IsMissing(1)) {
        call.state.registrations.DeleteName(*name);
        return true;
    }
    const CellValue id = ToNumberValue(call.Argument(1));
    const auto* number = id.As<double>();
    if (!number || !call.state.registrations.Find(*number))
        return CellError{xlerrValue};
    call.state.registrations.SetName(*name, *number);
    return true;
}

} // namespace metrify::host
