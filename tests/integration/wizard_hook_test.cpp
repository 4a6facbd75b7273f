// The wizard hook on a real dialog: which messages it follows, and what it puts there.

#include "tests/integration/wizard_fixture.h"

namespace metrify::host {
namespace {

using wizard_hook = WizardHookTest;

TEST_F(wizard_hook, is_installed_once) {
    try {
        CWizardHook::Install(registry);
        FAIL() << "installed twice";
    } catch (const CXlRuntimeException& exception) {
        EXPECT_STREQ(exception.what(), "An instance of CWizardHook is already installed");
    }
}

TEST_F(wizard_hook, can_be_installed_again_when_it_was_removed) {
    CWizardHook::Remove();
    EXPECT_EQ(CWizardHook::Instance(), nullptr);
    EXPECT_NO_THROW(CWizardHook::Install(registry));
}

TEST_F(wizard_hook, goes_from_idle_over_created_to_active_and_back) {
    EXPECT_EQ(Hook().Now(), CWizardHook::State::idle);
    dialog.emplace(host.automation.surroundings(), WizardDialogOptions{});
    EXPECT_EQ(Hook().Now(), CWizardHook::State::created);
    dialog->Show();
    EXPECT_EQ(Hook().Now(), CWizardHook::State::active);
    dialog->Close();
    EXPECT_EQ(Hook().Now(), CWizardHook::State::idle);
}

TEST_F(wizard_hook, puts_a_list_and_a_button_beside_their_boxes) {
    Open();
    EXPECT_EQ(Overlays(), (Standing{true, true, false, false, false}));
    EXPECT_NE(Hook().List(), nullptr);
    std::array<char, 50> class_name{};
    GetClassNameA(Hook().Overlay(0), class_name.data(), 50);
    EXPECT_STREQ(class_name.data(), "Button");
    GetClassNameA(Hook().List(), class_name.data(), 50);
    EXPECT_STREQ(class_name.data(), "ComboBox");
}

TEST_F(wizard_hook, takes_everything_away_with_the_dialog) {
    Open();
    const HWND overlay = Hook().Overlay(0);
    dialog->Close();
    EXPECT_EQ(Overlays(), Standing(5, false));
    EXPECT_FALSE(IsWindow(overlay));
    EXPECT_EQ(Hook().List(), nullptr);
}

TEST_F(wizard_hook, takes_everything_away_when_it_is_removed) {
    Open();
    const HWND overlay = Hook().Overlay(0);
    CWizardHook::Remove();
    EXPECT_FALSE(IsWindow(overlay));
}

TEST_F(wizard_hook, leaves_dialogs_of_another_class_alone) {
    Open({.class_name = "bosa_sdm_XL8"});
    EXPECT_EQ(Hook().Now(), CWizardHook::State::idle);
    EXPECT_EQ(Overlays(), Standing(5, false));
}

TEST_F(wizard_hook, leaves_a_dialog_alone_whose_boxes_are_not_in_a_line) {
    Open({.misplaced_box = 3});
    EXPECT_EQ(Hook().Now(), CWizardHook::State::created);
    EXPECT_EQ(Overlays(), Standing(5, false));
}

TEST_F(wizard_hook, forgets_the_function_with_the_next_dialog) {
    Hook().SetFunctionName("Convert");
    dialog.emplace(host.automation.surroundings(), WizardDialogOptions{.function = u"Convert"});
    dialog->Show();
    EXPECT_EQ(Hook().Now(), CWizardHook::State::active);
    EXPECT_EQ(Overlays(), Standing(5, false));
}

TEST_F(wizard_hook, drops_the_function_if_the_dialog_shows_another) {
    Open({.function = u"Another"});
    EXPECT_EQ(Hook().Now(), CWizardHook::State::active);
    EXPECT_EQ(Overlays(), Standing(5, false));
}

TEST_F(wizard_hook, reads_the_name_also_in_an_object_below) {
    Open({.function = u"Another", .is_name_nested = true});
    EXPECT_EQ(Overlays(), Standing(5, false));
    dialog.reset();
    Open({.is_name_nested = true});
    EXPECT_EQ(Overlays(), (Standing{true, true, false, false, false}));
}

TEST_F(wizard_hook, reads_the_name_where_it_was_the_last_time) {
    Open();
    dialog.reset();
    Open({.function = u"Another"});
    EXPECT_EQ(Overlays(), Standing(5, false));
}

TEST_F(wizard_hook, keeps_no_reference_to_the_dialog) {
    const int before = host.automation.ledger().references();
    Open();
    dialog.reset();
    EXPECT_EQ(host.automation.ledger().references(), before);
}

TEST_F(wizard_hook, puts_nothing_beside_hidden_boxes) {
    function.kinds = std::vector<ArgumentUi>(5, ArgumentUi::list);
    Open({.arguments = 3});
    EXPECT_EQ(Overlays(), (Standing{true, true, true, false, false}));
}

TEST_F(wizard_hook, puts_nothing_for_a_function_without_wishes) {
    function.kinds.clear();
    Open();
    EXPECT_EQ(Overlays(), Standing(5, false));
    EXPECT_EQ(Hook().List(), nullptr);
}

TEST_F(wizard_hook, rebuilds_everything_for_the_new_arguments_when_they_are_scrolled) {
    function.kinds = {ArgumentUi::list,   ArgumentUi::none, ArgumentUi::button,
                      ArgumentUi::button, ArgumentUi::none, ArgumentUi::list};
    Open();
    EXPECT_EQ(Overlays(), (Standing{true, false, true, true, false}));
    dialog->ScrollTo(1);
    EXPECT_EQ(Overlays(), (Standing{false, true, true, false, true}));
    const HWND standing = Hook().Overlay(1);
    dialog->ScrollTo(1);
    EXPECT_EQ(Hook().Overlay(1), standing);
}

TEST_F(wizard_hook, rebuilds_when_the_last_box_gets_another_size) {
    Open();
    const HWND standing = Hook().Overlay(0);
    SetWindowPos(dialog->box(3), nullptr, 0, 0, 200, 22, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_EQ(Hook().Overlay(0), standing);
    SetWindowPos(dialog->box(4), nullptr, 0, 0, 200, 22, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_NE(Hook().Overlay(0), nullptr);
    EXPECT_FALSE(IsWindow(standing) && Hook().Overlay(0) != standing);
}

// ---- From the add-in's opening to its closing

TEST(wizard_hook_of_an_application, is_installed_when_it_is_told_of_a_registry_and_removed_with_it) {
    IntegrationHost host(16);
    const CXlRealIntegration integration;
    const auto helper = integration.MakeComHelper();
    CXlWizExUIFunctionRegistry registry;
    WizardFunction function;
    registry.Add("Convert", function);
    helper->HoldRegistry(registry);
    EXPECT_TRUE(helper->HoldsRegistry());
    EXPECT_NE(CWizardHook::Instance(), nullptr);
    helper->ReleaseRegistry();
    EXPECT_FALSE(helper->HoldsRegistry());
    EXPECT_EQ(CWizardHook::Instance(), nullptr);
}

TEST(wizard_hook_of_an_application, stays_idle_for_an_add_in_that_registers_no_function) {
    IntegrationHost host(16);
    const CXlRealIntegration integration;
    const CXllApp application(integration);
    const auto registry = integration.MakeWizardRegistry();
    EXPECT_FALSE(registry->HasEntries());
    EXPECT_EQ(CWizardHook::Instance(), nullptr);
}

} // namespace
} // namespace metrify::host
