#pragma once

// Texts of the module's string table, by id and language.

#include "xllrt/platform/resource_platform.h"

#include <cstdint>
#include <span>
#include <string>

namespace metrify {

/// Where strings come from: the platform's resources, unless others were put in their place.
const ResourcePlatform& Resources();

/// Puts other resources in place of the platform's; null puts the platform's back.
void ReplaceResources(const ResourcePlatform* resources);

/// The language of the program's texts: the one set for the process, otherwise that of the calling thread.
std::uint16_t TextLanguage();

/// Sets the language of the process; 0 leaves it to each thread.
void SetTextLanguage(std::uint16_t language);

/// Which of the languages at hand serves someone who wants `wanted`: that one, otherwise the first with the
/// same primary language, otherwise 0.
std::uint16_t ChooseLanguage(std::span<const std::uint16_t> languages, std::uint16_t wanted);

/// Reads the string of an id. Gives false, and leaves `text` alone, if the module has none or an empty one.
bool LoadResourceText(std::u16string& text, std::uint32_t id, std::uint16_t language);
bool LoadResourceText(std::string& text, std::uint32_t id, std::uint16_t language);

} // namespace metrify
