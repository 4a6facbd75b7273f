#include "xllrt/platform/resource_platform.h"

namespace metrify {

namespace {

// Modules have no string tables on this platform, so every message is a built-in one.
class NoResources final : public ResourcePlatform {
  public:
    std::uint16_t ThreadLanguage() const override { return 0; }
    std::vector<std::uint16_t> BlockLanguages(std::uint16_t) const override { return {}; }
    std::span<const char16_t> Block(std::uint16_t, std::uint16_t) const override { return {}; }
    std::vector<std::uint16_t> ModuleLanguages() const override { return {}; }
    std::optional<long> CountryCode(std::uint16_t) const override { return std::nullopt; }
};

} // namespace

const ResourcePlatform& SystemResources() {
    static const NoResources none;
    return none;
}

} // namespace metrify
