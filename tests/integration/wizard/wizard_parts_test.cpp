// The parts of the wizard hook that need no window: layout, content test, registry.

#include "integration/wizard/wizard_content.h"
#include "integration/wizard/wizard_layout.h"
#include "integration/wizard/wizard_registry.h"

#include <gtest/gtest.h>

namespace metrify {
namespace {

constexpr RECT kBox{100, 50, 300, 72};

OverlayPlace Place(ArgumentUi kind, unsigned system, int dpi, bool is_themed = true) {
    return PlaceOverlay(kind, kBox, {system, dpi, dpi, is_themed});
}

TEST(wizard_layout, of_a_list) {
    EXPECT_EQ(Place(ArgumentUi::list, 6, 96), (OverlayPlace{286, 46, 17, 20}));
    EXPECT_EQ(Place(ArgumentUi::list, 10, 96), (OverlayPlace{286, 46, 17, 20}));
    EXPECT_EQ(Place(ArgumentUi::list, 5, 96), (OverlayPlace{285, 47, 17, 18}));
}

TEST(wizard_layout, of_a_button) {
    EXPECT_EQ(Place(ArgumentUi::button, 6, 96), (OverlayPlace{286, 48, 17, 16}));
    EXPECT_EQ(Place(ArgumentUi::button, 5, 96), (OverlayPlace{285, 48, 17, 16}));
}

TEST(wizard_layout, is_scaled_and_lower_at_120_and_144_dots) {
    // 17 and 20 scaled are 21 and 25 at 120, 26 and 30 at 144.
    EXPECT_EQ(Place(ArgumentUi::list, 6, 120), (OverlayPlace{300 - 21 + 3, 47, 21, 24}));
    EXPECT_EQ(Place(ArgumentUi::list, 6, 144), (OverlayPlace{300 - 26 + 3, 47, 26, 29}));
}

TEST(wizard_layout, is_less_high_at_other_resolutions_above_96) {
    // 17 and 20 scaled are 17 and 20 at 97, 34 and 40 at 192.
    EXPECT_EQ(Place(ArgumentUi::list, 6, 97), (OverlayPlace{286, 46, 17, 19}));
    EXPECT_EQ(Place(ArgumentUi::list, 6, 192), (OverlayPlace{300 - 34 + 3, 46, 34, 39}));
}

TEST(wizard_layout, takes_either_resolution_for_its_direction) {
    EXPECT_EQ(PlaceOverlay(ArgumentUi::list, kBox, {6, 192, 96, true}),
              (OverlayPlace{300 - 34 + 3, 46, 34, 20}));
}

TEST(wizard_layout, is_smaller_without_themes) {
    EXPECT_EQ(Place(ArgumentUi::list, 6, 96, false), (OverlayPlace{285, 47, 17, 18}));
    EXPECT_EQ(Place(ArgumentUi::button, 6, 96, false), (OverlayPlace{285, 49, 17, 14}));
}

TEST(wizard_content, is_never_replaced_in_mode_0) {
    EXPECT_FALSE(AllowsContent(0, ""));
    EXPECT_FALSE(AllowsContent(0, "5"));
    EXPECT_FALSE(AllowsContent(7, ""));
}

TEST(wizard_content, is_always_replaced_in_mode_3) {
    EXPECT_TRUE(AllowsContent(3, "A1+B2"));
}

TEST(wizard_content, has_to_be_empty_in_mode_1) {
    EXPECT_TRUE(AllowsContent(1, ""));
    EXPECT_TRUE(AllowsContent(1, " \t\r\n"));
    EXPECT_FALSE(AllowsContent(1, "5"));
}

TEST(wizard_content, has_to_be_empty_or_a_constant_in_mode_2) {
    for (const char* text : {"", "  ", "\"text\"", "5", "0.5", "TRUE", "FALSE", "TRUE \r\n"})
        EXPECT_TRUE(AllowsContent(2, text)) << text;
    for (const char* text : {"A1", "-5", ".5", "true", "TRUEST", " TRUE", "SUM(1)", " 5"})
        EXPECT_FALSE(AllowsContent(2, text)) << text;
}

class Plain final : public IXlWizExFunction {
  public:
    explicit Plain(int kinds) : kinds_(kinds) {}
    int KindCount() const override { return kinds_; }
    ArgumentUi KindOf(int) const override { return ArgumentUi::none; }
    IXlWizExList* ListOf(int) override { return nullptr; }
    IXlWizExButton* ButtonOf(int) override { return nullptr; }
    XlWizExKey KeyOf(int) const override { return {}; }

  private:
    int kinds_;
};

TEST(wizard_registry, has_entries_when_a_function_was_added) {
    CXlWizExUIFunctionRegistry registry;
    EXPECT_FALSE(registry.HasEntries());
    EXPECT_FALSE(registry.MakeReady());
    Plain function(1);
    registry.Add("Function", function);
    EXPECT_TRUE(registry.HasEntries());
    EXPECT_TRUE(registry.MakeReady());
    EXPECT_EQ(registry.FindFunction("Function"), &function);
    EXPECT_EQ(registry.FindFunction("function"), nullptr);
}

TEST(wizard_registry, is_not_ready_with_functions_that_add_nothing) {
    CXlWizExUIFunctionRegistry registry;
    Plain function(0);
    registry.Add("Function", function);
    EXPECT_FALSE(registry.MakeReady());
}

TEST(wizard_registry, knows_icon_sizes_of_two_kinds) {
    const CXlWizExUIFunctionRegistry registry;
    EXPECT_NE(registry.IconSize(1), nullptr);
    EXPECT_NE(registry.IconSize(2), nullptr);
    EXPECT_NE(registry.IconSize(1), registry.IconSize(2));
    EXPECT_EQ(registry.IconSize(0), nullptr);
    EXPECT_EQ(registry.IconSize(3), nullptr);
}

TEST(wizard_registry, is_empty_when_it_has_been_closed) {
    CXlWizExUIFunctionRegistry registry;
    Plain function(1);
    registry.Add("Function", function);
    registry.Close();
    EXPECT_FALSE(registry.HasEntries());
}

} // namespace
} // namespace metrify
