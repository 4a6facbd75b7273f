#include "xllrt/text/string_resource.h"

#include "xllrt/text/code_page.h"

#include <atomic>

namespace metrify {

namespace {

constexpr std::uint32_t kStringsInBlock = 16;
constexpr std::uint32_t kLargestId = 0xFFFF;
constexpr std::uint16_t kPrimaryLanguage = 0x03FF;

std::atomic<const ResourcePlatform*> replaced_resources = nullptr;
std::atomic<std::uint16_t> process_language = 0;

// Entry number `entry` of a block: each entry is a length and that many units. A block that ends early has
// none.
std::u16string_view EntryOf(std::span<const char16_t> block, std::uint32_t entry) {
    for (; !block.empty(); --entry) {
        const std::size_t length = block.front();
        if (block.size() - 1 < length)
            break;
        if (entry == 0)
            return {block.data() + 1, length};
        block = block.subspan(1 + length);
    }
    return {};
}

} // namespace

const ResourcePlatform& Resources() {
    const ResourcePlatform* replaced = replaced_resources.load(std::memory_order_acquire);
    return replaced ? *replaced : SystemResources();
}

void ReplaceResources(const ResourcePlatform* resources) {
    replaced_resources.store(resources, std::memory_order_release);
}

std::uint16_t TextLanguage() {
    const std::uint16_t language = process_language.load(std::memory_order_relaxed);
    return language != 0 ? language : Resources().ThreadLanguage();
}

void SetTextLanguage(std::uint16_t language) {
    process_language.store(language, std::memory_order_relaxed);
}

std::uint16_t ChooseLanguage(std::span<const std::uint16_t> languages, std::uint16_t wanted) {
    std::uint16_t chosen = 0;
    for (const std::uint16_t language : languages) {
        if (language == wanted)
            return language;
        if (chosen == 0 && (language & kPrimaryLanguage) == (wanted & kPrimaryLanguage))
            chosen = language;
    }
    return chosen;
}

bool LoadResourceText(std::u16string& text, std::uint32_t id, std::uint16_t language) {
    if (id > kLargestId)
        return false;
    const auto block = static_cast<std::uint16_t>(id / kStringsInBlock + 1);
    const std::uint16_t chosen = ChooseLanguage(Resources().BlockLanguages(block), language);
    const std::u16string_view found = EntryOf(Resources().Block(block, chosen), id % kStringsInBlock);
    if (found.empty())
        return false;
    text = found;
    return true;
}

bool LoadResourceText(std::string& text, std::uint32_t id, std::uint16_t language) {
    std::u16string wide;
    if (!LoadResourceText(wide, id, language))
        return false;
    text = ToNarrow(wide);
    return true;
}

} // namespace metrify
