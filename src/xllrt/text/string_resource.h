#pragma once

// Texts of the module's string table, by id and language.

#include "xllrt/platform/resource_platform.h"

#include <cstdint>
#include <span>
#include <string>

namespace metrify {

/// Where strings come from: the platform's resources, unless they were replaced.
const ResourcePlatform& Resources();

/// Replaces the platform's resources; null restores them.
void ReplaceResources(const ResourcePlatform* resources);

/// The language of the program's texts: the one set for the process, otherwise that of the calling thread.
std::uint16_t TextLanguage();

/// Sets the language of the process; 0 selects each thread's language.
void SetTextLanguage(std::uint16_t language);

/// The language among `languages` that fits `wanted` best: the same one, otherwise the first with the same
/// primary language, otherwise 0.
std::uint16_t ChooseLanguage(std::span<const std::uint16_t> languages, std::uint16_t wanted);

/// Reads the string of an id. False, with `text` unchanged, if the module has none or an empty one.
bool LoadResourceText(std::u16string& text, std::uint32_t id, std::uint16_t language);
bool LoadResourceText(std::string& text, std::uint32_t id, std::uint16_t language);

} // namespace metrify
