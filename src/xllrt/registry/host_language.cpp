#include "xllrt/registry/host_language.h"

#include "xllrt/gate/workspace_items.h"
#include "xllrt/text/string_resource.h"

#include <algorithm>
#include <atomic>
#include <optional>

namespace metrify {

namespace {

constexpr int kCountryItem = 0;
constexpr double kLargestCountry = 0xFFFF;

constexpr std::int32_t kUnknown = -1;

// The country is needed only to find the language, so it is not stored. Threads that look for it at the same
// time find the same.
std::atomic<std::int32_t> host_language = kUnknown;

// None if the host does not report its country.
std::optional<long> HostCountry() {
    CXlOper item;
    if (!GetWorkspaceItem(kCountryItem, item))
        return std::nullopt;
    const double code = item.ToNumber(false);
    // A code outside the range of country codes is no country.
    return code > 0.0 && code <= kLargestCountry ? static_cast<long>(code) : 0;
}

std::uint16_t LanguageOfCountry(long country) {
    const std::vector<std::uint16_t> languages = Resources().ModuleLanguages();
    const auto found = std::find_if(languages.begin(), languages.end(), [country](std::uint16_t language) {
        return Resources().CountryCode(language) == country;
    });
    return found != languages.end() ? *found : std::uint16_t{0};
}

} // namespace

std::uint16_t HostLanguage() {
    const std::int32_t kept = host_language.load(std::memory_order_relaxed);
    if (kept != kUnknown)
        return static_cast<std::uint16_t>(kept);
    const std::optional<long> country = HostCountry();
    if (!country)
        return 0;
    const std::uint16_t language = LanguageOfCountry(*country);
    host_language.store(language, std::memory_order_relaxed);
    return language;
}

void ForgetHostLanguage() {
    host_language.store(kUnknown, std::memory_order_relaxed);
}

} // namespace metrify
