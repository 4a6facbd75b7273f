#include "xllrt/host_language.h"

#include "xllrt/string_resource.h"
#include "xllrt/workspace_items.h"

#include <algorithm>
#include <atomic>
#include <optional>

namespace metrify {

namespace {

constexpr int kCountryItem = 0;
constexpr double kLargestCountry = 0xFFFF;

constexpr std::int64_t kUnknown = -1;

// Threads that find these at the same time find the same.
std::atomic<std::int64_t> host_country = kUnknown;
std::atomic<std::int64_t> host_language = kUnknown;

std::int64_t HostCountry() {
    const std::int64_t kept = host_country.load(std::memory_order_relaxed);
    CXlOper item;
    if (kept != kUnknown || !GetWorkspaceItem(kCountryItem, item))
        return kept;
    const double code = item.ToNumber(false);
    // A host that tells no sensible code is of no country.
    const std::int64_t country = code > 0.0 && code <= kLargestCountry ? static_cast<std::int64_t>(code) : 0;
    host_country.store(country, std::memory_order_relaxed);
    return country;
}

std::uint16_t LanguageOfCountry(std::int64_t country) {
    const std::vector<std::uint16_t> languages = Resources().ModuleLanguages();
    const auto found = std::find_if(languages.begin(), languages.end(), [country](std::uint16_t language) {
        return Resources().CountryCode(language) == country;
    });
    return found != languages.end() ? *found : std::uint16_t{0};
}

} // namespace

std::uint16_t HostLanguage() {
    const std::int64_t kept = host_language.load(std::memory_order_relaxed);
    if (kept != kUnknown)
        return static_cast<std::uint16_t>(kept);
    const std::int64_t country = HostCountry();
    if (country == kUnknown)
        return 0;
    const std::uint16_t language = LanguageOfCountry(country);
    host_language.store(language, std::memory_order_relaxed);
    return language;
}

void ForgetHostLanguage() {
    host_country.store(kUnknown, std::memory_order_relaxed);
    host_language.store(kUnknown, std::memory_order_relaxed);
}

} // namespace metrify
