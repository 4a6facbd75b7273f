#pragma once

// Texts that may refer to strings of the module: "#" and an id, decimal or "0x" and hexadecimal, in the
// language of the program's texts, or with "#@" in the host's.

#include <string>
#include <string_view>

namespace metrify {

/// Replaces the references by the strings. False if one of them could not be resolved; it then stays in the
/// expansion unchanged. A "#" without a number after it is not a reference.
bool ExpandResourceText(std::u16string_view text, std::u16string& expansion);
bool ExpandResourceText(std::string_view text, std::string& expansion);

/// The expansion, or the original text if one of its references could not be resolved. Empty for null.
std::u16string LocalizedText(const char16_t* text);
std::string LocalizedText(const char* text);

} // namespace metrify
