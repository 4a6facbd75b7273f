#include "integration/wizard/wizard_detector.h"

#include "xllrt/gate/host_window.h"
#include "xllrt/platform/passed_pointer.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace metrify {

namespace {

std::uint16_t LowBits(HWND window) {
    return static_cast<std::uint16_t>(reinterpret_cast<std::uintptr_t>(window));
}

bool BeginsWithOneOf(std::string_view title, const std::vector<std::string>& beginnings) {
    return std::any_of(
        beginnings.begin(), beginnings.end(),
        [title](const std::string& beginning) { return title.starts_with(beginning); });
}

struct DialogSearch {
    const CXlFormulaWizardDetector& detector;
    std::uint16_t host_window;
    bool is_found = false;
};

// Stops the enumeration at the dialog.
BOOL CALLBACK LookAtWindow(HWND window, LPARAM context) {
    auto& search = *PassedPointer<DialogSearch*>(context);
    search.is_found = search.detector.IsFormulaDialog(window, search.host_window);
    return search.is_found ? FALSE : TRUE;
}

} // namespace

bool CXlFormulaWizardDetector::IsOpen() const {
    const auto host = static_cast<HWND>(GetHostWindow());
    if (!host)
        return false;
    DialogSearch search{*this, LowBits(host)};
    EnumWindows(LookAtWindow, reinterpret_cast<LPARAM>(&search));
    return search.is_found;
}

bool CXlFormulaWizardDetector::IsFormulaDialog(HWND window, std::uint16_t host_window) const {
    std::array<char, 50> text{};
    constexpr auto kSize = static_cast<int>(text.size());
    if (LowBits(GetParent(window)) != host_window)
        return false;
    GetClassNameA(window, text.data(), kSize);
    if (!std::string_view(text.data()).starts_with("bosa_sdm_XL"))
        return false;
    text.fill('\0');
    GetWindowTextA(window, text.data(), kSize);
    const std::string_view title = text.data();
    if (title.empty())
        return emptyTitleCounts;
    return BeginsWithOneOf(title, dialogTitles) || !BeginsWithOneOf(title, otherTitles);
}

} // namespace metrify
