#pragma once

// The platform's string-table resources and languages. A language is a 16-bit language id; its
// low 10 bits are the primary language.

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace metrify {

/// The resources of one module, and the languages of the platform.
class ResourcePlatform {
  public:
    virtual ~ResourcePlatform() = default;

    /// The language of the calling thread.
    virtual std::uint16_t ThreadLanguage() const = 0;

    /// The languages in which the module has this block of 16 strings, in the module's order.
    virtual std::vector<std::uint16_t> BlockLanguages(std::uint16_t block) const = 0;

    /// The units of a block of strings; empty if there is none. With language 0 the system chooses.
    virtual std::span<const char16_t> Block(std::uint16_t block, std::uint16_t language) const = 0;

    /// The languages of all resources of the module, each once, in the module's order.
    virtual std::vector<std::uint16_t> ModuleLanguages() const = 0;

    /// The country code that belongs to a language.
    virtual std::optional<long> CountryCode(std::uint16_t language) const = 0;
};

/// The resources of the platform; empty where there are no string tables.
const ResourcePlatform& SystemResources();

} // namespace metrify
