// The current theme of the system, drawn into a bitmap.

#include "tests/integration/wizard/wizard_fixture.h"

#include <uxtheme.h>

namespace metrify::host {
namespace {

constexpr int kWidth = 24;
constexpr int kHeight = 28;

// A bitmap, initially of one colour.
class Canvas {
  public:
    Canvas() : context_(CreateCompatibleDC(nullptr)) {
        BITMAPINFO description{};
        description.bmiHeader = {sizeof(BITMAPINFOHEADER), kWidth, -kHeight, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        bitmap_ = CreateDIBSection(context_, &description, DIB_RGB_COLORS, &dots_, nullptr, 0);
        SelectObject(context_, bitmap_);
        const RECT all{0, 0, kWidth, kHeight};
        FillRect(context_, &all, static_cast<HBRUSH>(GetStockObject(GRAY_BRUSH)));
    }
    ~Canvas() {
        DeleteDC(context_);
        DeleteObject(bitmap_);
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    HDC context() const { return context_; }
    std::vector<std::uint32_t> Dots() const {
        GdiFlush();
        const auto* const first = static_cast<const std::uint32_t*>(dots_);
        return {first, first + kWidth * kHeight};
    }

  private:
    HDC context_;
    void* dots_ = nullptr;
    HBITMAP bitmap_;
};

constexpr RECT kPlace{2, 3, 19, 23};

class wizard_real_theme : public WizardHookTest {
  protected:
    wizard_real_theme() : library_(LoadLibraryA("UxTheme.dll")) {}
    ~wizard_real_theme() override { FreeLibrary(library_); }

    template <class Function>
    Function* Find(const char* name) {
        return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(library_, name)));
    }

    bool IsThemed() { return Find<decltype(IsThemeActive)>("IsThemeActive")() != FALSE; }

    // What the theme itself draws for a part.
    std::vector<std::uint32_t> OfTheme(const wchar_t* class_name, int state) {
        const Canvas canvas;
        const HANDLE theme = Find<decltype(OpenThemeData)>("OpenThemeData")(dialog->window(), class_name);
        Find<decltype(DrawThemeBackground)>("DrawThemeBackground")(theme, canvas.context(), 1, state, &kPlace,
                                                                   nullptr);
        Find<decltype(CloseThemeData)>("CloseThemeData")(theme);
        return canvas.Dots();
    }

    // What the hook draws for an arrow or a button.
    std::vector<std::uint32_t> OfHook(int box, UINT state) {
        const Canvas canvas;
        DRAWITEMSTRUCT item{};
        item.CtlType = ODT_BUTTON;
        item.itemState = state;
        item.hwndItem = Hook().Overlay(box);
        item.hDC = canvas.context();
        item.rcItem = kPlace;
        SendMessageA(dialog->window(), WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&item));
        return canvas.Dots();
    }

  private:
    HMODULE library_;
};

TEST_F(wizard_real_theme, draws_the_arrow_of_a_list) {
    Open();
    if (!IsThemed())
        GTEST_SKIP() << "the system has no theme in use";
    EXPECT_EQ(OfHook(0, 0), OfTheme(L"COMBOBOX", 1));
    EXPECT_EQ(OfHook(0, ODS_SELECTED), OfTheme(L"COMBOBOX", 3));
    EXPECT_NE(OfHook(0, 0), OfHook(0, ODS_SELECTED));
}

TEST_F(wizard_real_theme, draws_a_button_with_something_in_it) {
    Open();
    if (!IsThemed())
        GTEST_SKIP() << "the system has no theme in use";
    const auto drawn = OfHook(1, 0);
    const auto empty = OfTheme(L"BUTTON", 1);
    EXPECT_NE(drawn, empty);
    // The text does not reach the edge.
    const std::size_t top_edge = kWidth * (kPlace.top + 1);
    EXPECT_TRUE(std::equal(drawn.begin(), drawn.begin() + top_edge, empty.begin()));
}

TEST_F(wizard_real_theme, looks_different_from_the_classic_style) {
    Open();
    if (!IsThemed())
        GTEST_SKIP() << "the system has no theme in use";
    const auto themed = OfHook(0, 0);
    SendMessageA(dialog->window(), WM_THEMECHANGED, 0, 0);
    EXPECT_NE(OfHook(0, 0), themed);
}

} // namespace
} // namespace metrify::host
