#pragma once

// String tables made by a test, which replace those of the platform.

#include "xllrt/text/string_resource.h"

#include <algorithm>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace metrify {

inline constexpr std::uint16_t kUsEnglish = 0x0409;
inline constexpr std::uint16_t kUkEnglish = 0x0809;
inline constexpr std::uint16_t kGerman = 0x0407;

/// Replaces the resources as long as it exists.
class FakeResources final : public ResourcePlatform {
  public:
    FakeResources() { ReplaceResources(this); }
    ~FakeResources() override { ReplaceResources(nullptr); }
    FakeResources(const FakeResources&) = delete;
    FakeResources& operator=(const FakeResources&) = delete;

    /// Adds one string. Languages are enumerated in the order of their first string.
    void Add(std::uint32_t id, std::uint16_t language, std::u16string_view text) {
        const auto block = static_cast<std::uint16_t>(id / 16 + 1);
        const std::pair key{block, language};
        if (!blocks_.contains(key)) {
            blocks_[key].resize(16);
            order_.push_back(key);
        }
        blocks_[key][id % 16] = text;
        std::u16string& image = images_[key];
        image.clear();
        for (const std::u16string& entry : blocks_[key])
            image += static_cast<char16_t>(entry.size()) + entry;
    }

    /// Replaces the units of a whole block.
    void SetImage(std::uint16_t block, std::uint16_t language, std::u16string_view units) {
        order_.emplace_back(block, language);
        images_[{block, language}] = units;
    }

    std::uint16_t ThreadLanguage() const override { return thread_language; }

    std::vector<std::uint16_t> BlockLanguages(std::uint16_t block) const override {
        std::vector<std::uint16_t> languages;
        for (const auto& [number, language] : order_)
            if (number == block)
                languages.push_back(language);
        return languages;
    }

    std::span<const char16_t> Block(std::uint16_t block, std::uint16_t language) const override {
        asked_languages.push_back(language);
        if (language == 0) {
            // The loader chooses the first one.
            const std::vector<std::uint16_t> languages = BlockLanguages(block);
            if (languages.empty())
                return {};
            language = languages.front();
        }
        const auto found = images_.find({block, language});
        return found != images_.end() ? std::span<const char16_t>(found->second)
                                      : std::span<const char16_t>();
    }

    std::vector<std::uint16_t> ModuleLanguages() const override {
        ++module_enumerations;
        std::vector<std::uint16_t> languages;
        for (const auto& [block, language] : order_)
            languages.push_back(language);
        return languages;
    }

    std::optional<long> CountryCode(std::uint16_t language) const override {
        const auto found = country_codes.find(language);
        return found != country_codes.end() ? std::optional(found->second) : std::nullopt;
    }

    std::uint16_t thread_language = kUsEnglish;
    std::map<std::uint16_t, long> country_codes{{kUsEnglish, 1}, {kUkEnglish, 44}, {kGerman, 49}};
    mutable std::vector<std::uint16_t> asked_languages;
    mutable int module_enumerations = 0;

  private:
    std::map<std::pair<std::uint16_t, std::uint16_t>, std::vector<std::u16string>> blocks_;
    std::map<std::pair<std::uint16_t, std::uint16_t>, std::u16string> images_;
    std::vector<std::pair<std::uint16_t, std::uint16_t>> order_;
};

} // namespace metrify
