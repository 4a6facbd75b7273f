#include "xllrt/platform/module_handle.h"
#include "xllrt/platform/passed_pointer.h"
#include "xllrt/platform/resource_platform.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <charconv>
#include <windows.h>

namespace metrify {

namespace {

// The add-in's module, stored once it is known. Before that, and in a program that is not a module, null
// means the program itself.
HMODULE OwnModule() {
    static std::atomic<void*> taken = nullptr;
    void* module = taken.load(std::memory_order_relaxed);
    if (!module) {
        module = ModuleHandle();
        taken.store(module, std::memory_order_relaxed);
    }
    return static_cast<HMODULE>(module);
}

void AddOnce(std::vector<std::uint16_t>& languages, std::uint16_t language) {
    if (std::find(languages.begin(), languages.end(), language) == languages.end())
        languages.push_back(language);
}

// The enumerations take a list of languages through their last parameter.

BOOL CALLBACK AddLanguage(HMODULE, LPCWSTR, LPCWSTR, WORD language, LONG_PTR languages) {
    AddOnce(*PassedPointer<std::vector<std::uint16_t>*>(languages), language);
    return TRUE;
}

BOOL CALLBACK AddLanguagesOfName(HMODULE module, LPCWSTR type, LPWSTR name, LONG_PTR languages) {
    EnumResourceLanguagesW(module, type, name, AddLanguage, languages);
    return TRUE;
}

BOOL CALLBACK AddLanguagesOfType(HMODULE module, LPWSTR type, LONG_PTR languages) {
    EnumResourceNamesW(module, type, AddLanguagesOfName, languages);
    return TRUE;
}

// Types and names of resources are integers cast to pointers.
LPCWSTR StringTableType() {
    return MAKEINTRESOURCEW(6);
}

class ModuleResources final : public ResourcePlatform {
  public:
    std::uint16_t ThreadLanguage() const override { return LOWORD(GetThreadLocale()); }

    std::vector<std::uint16_t> BlockLanguages(std::uint16_t block) const override {
        std::vector<std::uint16_t> languages;
        EnumResourceLanguagesW(OwnModule(), StringTableType(), MAKEINTRESOURCEW(block), AddLanguage,
                               reinterpret_cast<LONG_PTR>(&languages));
        return languages;
    }

    std::span<const char16_t> Block(std::uint16_t block, std::uint16_t language) const override {
        const HRSRC found =
            FindResourceExW(OwnModule(), StringTableType(), MAKEINTRESOURCEW(block), language);
        if (!found)
            return {};
        const HGLOBAL loaded = LoadResource(OwnModule(), found);
        const void* units = loaded ? LockResource(loaded) : nullptr;
        if (!units)
            return {};
        return {static_cast<const char16_t*>(units), SizeofResource(OwnModule(), found) / sizeof(char16_t)};
    }

    std::vector<std::uint16_t> ModuleLanguages() const override {
        std::vector<std::uint16_t> languages;
        EnumResourceTypesW(OwnModule(), AddLanguagesOfType, reinterpret_cast<LONG_PTR>(&languages));
        return languages;
    }

    std::optional<long> CountryCode(std::uint16_t language) const override {
        std::array<char, 16> text{};
        const int size = GetLocaleInfoA(MAKELCID(language, SORT_DEFAULT), LOCALE_ICOUNTRY, text.data(),
                                        static_cast<int>(text.size()));
        long code = 0;
        if (size <= 0 || std::from_chars(text.data(), text.data() + size, code).ec != std::errc())
            return std::nullopt;
        return code;
    }
};

} // namespace

const ResourcePlatform& SystemResources() {
    static const ModuleResources own;
    return own;
}

} // namespace metrify
