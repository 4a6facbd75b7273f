#include "host/automation/macro_text.h"

#include "host/entry/registered_call.h"
#include "host/sheet/utf8.h"

namespace metrify::host {

namespace {

struct MacroCall {
    std::u16string name;
    std::vector<CellValue> arguments;
};

// text := '"' { any character but '"', or '""' } '"'. Called before the opening quote.
std::optional<std::u16string> ReadQuoted(std::u16string_view& text) {
    std::u16string quoted;
    for (std::size_t i = 1; i < text.size(); ++i) {
        if (text[i] != u'"') {
            quoted += text[i];
        } else if (i + 1 < text.size() && text[i + 1] == u'"') {
            quoted += text[++i];
        } else {
            text.remove_prefix(i + 1);
            return quoted;
        }
    }
    return std::nullopt;
}

// argument := text | word. TRUE, FALSE and numbers are values; an empty word is an omitted argument.
std::optional<CellValue> ReadArgument(std::u16string_view& text) {
    if (text.starts_with(u'"')) {
        auto quoted = ReadQuoted(text);
        return quoted ? std::optional<CellValue>(std::move(*quoted)) : std::nullopt;
    }
    const std::size_t end = text.find_first_of(u",)");
    if (end == std::u16string_view::npos)
        return std::nullopt;
    const std::u16string_view word = text.substr(0, end);
    text.remove_prefix(end);
    double number = 0.0;
    if (const std::optional<bool> boolean = ReadBoolean(word))
        return *boolean;
    if (ReadNumber(word, number))
        return number;
    return word.empty() ? std::optional<CellValue>(MissingArgument{}) : std::nullopt;
}

// call := name "(" [ argument { "," argument } ] ")"
std::optional<MacroCall> ReadCall(std::u16string_view text) {
    const std::size_t opening = text.find(u'(');
    if (opening == std::u16string_view::npos || opening == 0)
        return std::nullopt;
    MacroCall call{std::u16string(text.substr(0, opening)), {}};
    text.remove_prefix(opening + 1);
    while (!text.starts_with(u')')) {
        const auto argument = ReadArgument(text);
        if (!argument || text.empty())
            return std::nullopt;
        call.arguments.push_back(*argument);
        if (text.front() == u',')
            text.remove_prefix(1);
    }
    return text.size() == 1 ? std::optional(std::move(call)) : std::nullopt;
}

// Calls an entry point without arguments that returns an integer. A sign before the module's path is ignored.
std::optional<CellValue> CallEntry(HostState& state, const std::vector<CellValue>& arguments) {
    if (!state.module || arguments.size() != 3)
        return std::nullopt;
    const auto* path = arguments[0].As<std::u16string>();
    const auto* entry_name = arguments[1].As<std::u16string>();
    const auto* types = arguments[2].As<std::u16string>();
    if (!path || !entry_name || !types || !EqualIgnoringCase(*types, u"j"))
        return std::nullopt;
    std::u16string_view module = *path;
    module.remove_prefix(module.starts_with(u'%') ? 1 : 0);
    using Entry = std::int32_t(METRIFY_HOST_CALL*)();
    const auto entry = EqualIgnoringCase(module, state.module->Path())
                           ? reinterpret_cast<Entry>(state.module->Find(ToUtf8(*entry_name)))
                           : nullptr;
    if (!entry)
        return std::nullopt;
    const ContextScope scope(CallContext::command);
    return entry();
}

} // namespace

std::optional<CellValue> RunMacro(HostState& state, std::u16string_view name,
                                  const std::vector<CellValue>& arguments) {
    const Registration* registration = state.registrations.Find(name);
    if (!registration)
        return std::nullopt;
    return CallRegistered(state, *registration, arguments, CallContext::command);
}

std::optional<CellValue> RunMacroText(HostState& state, std::u16string_view text) {
    const auto call = ReadCall(text);
    if (!call)
        return std::nullopt;
    return EqualIgnoringCase(call->name, u"CALL") ? CallEntry(state, call->arguments)
                                                  : RunMacro(state, call->name, call->arguments);
}

} // namespace metrify::host
