#include "host/state/entry_type.h"

namespace metrify::host {

namespace {

constexpr std::u16string_view kTypes = u"ABCDEFGHIJKLMNOPR";
constexpr std::u16string_view kWideTypes = u"QU";
// A percent sign after these selects wide text, or large arrays.
constexpr std::u16string_view kTypesWithPercent = u"CDFGKO";

bool IsOneOf(char16_t c, std::u16string_view these) {
    return these.find(c) != these.npos;
}

} // namespace

std::string EntryType::Signature() const {
    std::string signature = result;
    for (const std::string& parameter : parameters)
        signature += parameter;
    return signature;
}

std::optional<EntryType> ReadEntryType(std::u16string_view text, bool is_wide_host) {
    EntryType type;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char16_t c = text[at];
        if (c == u'!')
            continue; // volatile has no effect: every calculation evaluates all cells
        if (c == u'#') {
            type.is_macro = true;
            continue;
        }
        if (c == u'$' && is_wide_host) {
            type.is_thread_safe = true;
            continue;
        }
        if (!IsOneOf(c, kTypes) && !(is_wide_host && IsOneOf(c, kWideTypes)))
            return std::nullopt;
        std::string letter(1, static_cast<char>(c));
        if (text.substr(at + 1).starts_with(u'%')) {
            if (!is_wide_host || !IsOneOf(c, kTypesWithPercent))
                return std::nullopt;
            letter += '%';
            ++at;
        }
        if (type.result.empty())
            type.result = std::move(letter);
        else
            type.parameters.push_back(std::move(letter));
    }
    // "$" has no effect together with "#".
    type.is_thread_safe = type.is_thread_safe && !type.is_macro;
    return type.result.empty() ? std::nullopt : std::optional(std::move(type));
}

} // namespace metrify::host
