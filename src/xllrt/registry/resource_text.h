#pragma once

// Texts that may refer to strings of the module: "#" and an id, decimal or "0x" and hexadecimal, in the
// language of the program's texts, or with "#@" in the host's.

#include <string>
#include <string_view>

namespace metrify {

/// Puts the strings in place of the references. Gives false if one of them could not be resolved; it then
/// stands in the expansion as it was. A "#" that no number follows is no reference.
bool ExpandResourceText(std::u16string_view text, std::u16string& expansion);
bool ExpandResourceText(std::string_view text, std::string& expansion);

/// The expansion, or the text as given if a reference of it could not be resolved. Null gives the empty text.
std::u16string LocalizedText(const char16_t* text);
std::string LocalizedText(const char* text);

} // namespace metrify
