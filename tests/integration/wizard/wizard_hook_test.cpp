// The wizard hook on a real dialog: the messages that it handles and the overlays that it creates.

#include "tests/integration/wizard/wizard_fixture.h"

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

TEST_F(wizard_hook, changes_from_idle_to_created_to_active_and_back) {
    EXPECT_EQ(Hook().Now(), CWizardHook::State::idle);
    dialog.emplace(host.automation.context(), WizardDialogOptions{});
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

TEST_F(wizard_hook, removes_everything_with_the_dialog) {
    Open();
    const HWND overlay = Hook().Overlay(0);
    dialog->Close();
    EXPECT_EQ(Overlays(), Standing(5, false));
    EXPECT_FALSE(IsWindow(overlay));
    EXPECT_EQ(Hook().List(), nullptr);
}

TEST_F(wizard_hook, removes_everything_when_it_is_removed) {
    Open();
    const HWND overlay = Hook().Overlay(0);
    CWizardHook::Remove();
    EXPECT_FALSE(IsWindow(overlay));
}

TEST_F(wizard_hook, ignores_dialogs_of_another_class) {
    Open({.class_name = "bosa_sdm_XL8"});
    EXPECT_EQ(Hook().Now(), CWizardHook::State::idle);
    EXPECT_EQ(Overlays(), Standing(5, false));
}

TEST_F(wizard_hook, forgets_the_function_with_the_next_dialog) {
    Hook().SetFunctionName("Convert");
    dialog.emplace(host.automation.context(), WizardDialogOptions{.function = u"Convert"});
    dialog->Show();
    EXPECT_EQ(Hook().Now(), CWizardHook::State::active);
    EXPECT_EQ(Overlays(), Standing(5, false));
}

TEST_F(wizard_hook, puts_nothing_beside_hidden_boxes) {
    function.kinds = std::vector<ArgumentUi>(5, ArgumentUi::list);
    Open({.arguments = 3});
    EXPECT_EQ(Overlays(), (Standing{true, true, true, false, false}));
}

TEST_F(wizard_hook, adds_nothing_for_a_function_that_requests_nothing) {
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

// Gives a box another size.
void Resize(HWND box) {
    const RECT place = PlaceOf(box);
    SetWindowPos(box, nullptr, 0, 0, place.right - place.left - 5, place.bottom - place.top,
                 SWP_NOMOVE | SWP_NOZORDER);
}

TEST_F(wizard_hook, rebuilds_when_the_last_box_gets_another_size) {
    Open();
    ShowWindow(dialog->box(1), SW_HIDE);
    Resize(dialog->box(3));
    EXPECT_EQ(Overlays(), (Standing{true, true, false, false, false}));
    Resize(dialog->box(4));
    EXPECT_EQ(Overlays(), (Standing{true, false, false, false, false}));
}

TEST_F(wizard_hook, rebuilds_on_a_resize_only_if_it_saw_the_dialogs_creation) {
    CWizardHook::Remove();
    dialog.emplace(host.automation.context(), WizardDialogOptions{.function = u"Convert"});
    CWizardHook::Install(registry);
    Hook().SetFunctionName("Convert");
    dialog->Show();
    ASSERT_EQ(Overlays(), (Standing{true, true, false, false, false}));
    ShowWindow(dialog->box(1), SW_HIDE);
    Resize(dialog->box(4));
    EXPECT_EQ(Overlays(), (Standing{true, true, false, false, false}));
}

TEST_F(wizard_hook, rebuilds_nothing_on_a_resize_without_overlays) {
    function.kinds = {ArgumentUi::list};
    Make();
    ShowWindow(dialog->box(0), SW_HIDE);
    dialog->Show();
    ShowWindow(dialog->box(0), SW_SHOWNA);
    Resize(dialog->box(4));
    EXPECT_EQ(Overlays(), Standing(5, false));
}

TEST_F(wizard_hook, rebuilds_only_for_a_position_of_the_dialogs_own_scroll_bar) {
    Open();
    SCROLLINFO range{sizeof(SCROLLINFO), SIF_RANGE, 0, 9, 1, 5, 0};
    ShowWindow(dialog->box(1), SW_HIDE);
    SendMessageA(dialog->scroll_bar(), SBM_SETSCROLLINFO, TRUE, reinterpret_cast<LPARAM>(&range));
    EXPECT_EQ(Overlays(), (Standing{true, true, false, false, false}));
    const HWND other = CreateWindowExA(0, "SCROLLBAR", "", WS_CHILD | SBS_VERT, 0, 0, 18, 100,
                                       dialog->window(), nullptr, nullptr, nullptr);
    SCROLLINFO position{sizeof(SCROLLINFO), SIF_POS, 0, 0, 0, 1, 0};
    SendMessageA(other, SBM_SETSCROLLINFO, TRUE, reinterpret_cast<LPARAM>(&position));
    EXPECT_EQ(Overlays(), (Standing{true, true, false, false, false}));
}

TEST_F(wizard_hook, begins_with_the_argument_at_the_scroll_bars_position) {
    Make();
    dialog->ScrollTo(1);
    dialog->Show();
    EXPECT_EQ(Overlays(), (Standing{true, false, false, false, false}));
}

// ---- The end of the dialog

TEST_F(wizard_hook, ignores_a_dialog_whose_class_is_passed_as_a_number) {
    const WizardDialog named(host.automation.context(), {});
    CWizardHook::Remove();
    CWizardHook::Install(registry);
    const auto number = static_cast<ATOM>(GetClassLongPtrA(named.window(), GCW_ATOM));
    const HWND window = CreateWindowExA(0, MAKEINTATOM(number), "", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr,
                                        GetModuleHandleA(nullptr), nullptr);
    ASSERT_TRUE(window);
    EXPECT_EQ(Hook().Now(), CWizardHook::State::idle);
    DestroyWindow(window);
}

TEST_F(wizard_hook, is_active_from_the_activation_on) {
    Make();
    ShowWindow(dialog->window(), SW_SHOWNA);
    SendMessageA(dialog->window(), WM_ACTIVATE, WA_INACTIVE, 0);
    EXPECT_EQ(Hook().Now(), CWizardHook::State::created);
    SendMessageA(dialog->window(), WM_ACTIVATE, WA_CLICKACTIVE, 0);
    EXPECT_EQ(Hook().Now(), CWizardHook::State::active);
    EXPECT_EQ(Overlays(), (Standing{true, true, false, false, false}));
}

TEST_F(wizard_hook, builds_overlays_for_a_dialog_that_is_activated_before_it_is_shown) {
    Make({.arguments = 1});
    ASSERT_FALSE(IsWindowVisible(dialog->window()));
    WizardControls controls;
    ASSERT_TRUE(FindWizardControls(dialog->window(), controls));
    EXPECT_EQ(controls.count, 1);
    SendMessageA(dialog->window(), WM_ACTIVATE, WA_ACTIVE, 0);
    EXPECT_EQ(Overlays(), (Standing{true, false, false, false, false}));
    ShowWindow(dialog->window(), SW_SHOWNA);
    EXPECT_TRUE(IsWindowVisible(Hook().Overlay(0)));
}

TEST_F(wizard_hook, follows_its_dialog_while_another_opens_and_closes) {
    Open();
    const HWND standing = Hook().Overlay(0);
    {
        WizardDialog other(host.automation.context(), {.function = u"Convert"});
        EXPECT_EQ(Hook().Now(), CWizardHook::State::active);
        other.Show();
        EXPECT_EQ(Hook().Overlay(0), standing);
        EXPECT_EQ(GetParent(standing), dialog->window());
    }
    EXPECT_EQ(Hook().Now(), CWizardHook::State::active);
    EXPECT_TRUE(IsWindow(standing));
    dialog->Close();
    EXPECT_EQ(Hook().Now(), CWizardHook::State::idle);
}

TEST_F(wizard_hook, counts_boxes_up_to_the_last_that_is_visible) {
    function.kinds.clear(); // no overlays among the dialog's windows
    Open({.arguments = 3});
    WizardControls controls;
    ShowWindow(dialog->box(1), SW_HIDE);
    ASSERT_TRUE(FindWizardControls(dialog->window(), controls));
    EXPECT_EQ(controls.count, 3);
    ShowWindow(dialog->box(2), SW_HIDE);
    ASSERT_TRUE(FindWizardControls(dialog->window(), controls));
    EXPECT_EQ(controls.count, 1);
}

TEST_F(wizard_hook, finds_the_index_of_a_box_only) {
    function.kinds.clear(); // no overlays among the dialog's windows
    Open({.arguments = 3});
    WizardControls controls;
    EXPECT_EQ(controls.IndexOf(nullptr), -1) << "no box has been found yet";
    ASSERT_TRUE(FindWizardControls(dialog->window(), controls));
    EXPECT_EQ(controls.IndexOf(dialog->box(0)), 0);
    EXPECT_EQ(controls.IndexOf(dialog->box(2)), 2);
    EXPECT_EQ(controls.IndexOf(dialog->window()), -1);
}

class malformed_dialog : public WizardHookTest, public testing::WithParamInterface<WizardDialogOptions> {};

TEST_P(malformed_dialog, is_ignored_and_the_function_forgotten) {
    Open(GetParam());
    EXPECT_EQ(Hook().Now(), CWizardHook::State::created);
    EXPECT_EQ(Overlays(), Standing(5, false));
}

INSTANTIATE_TEST_SUITE_P(all, malformed_dialog,
                         testing::Values(WizardDialogOptions{.misplaced_box = 1},
                                         WizardDialogOptions{.misplaced_box = 4},
                                         WizardDialogOptions{.foreign_box = 0},
                                         WizardDialogOptions{.foreign_box = 4},
                                         WizardDialogOptions{.has_scroll_bar = false},
                                         WizardDialogOptions{.arguments = 0, .has_scroll_bar = false}));

TEST_F(wizard_hook, forgets_the_function_with_a_dialog_of_another_kind) {
    Open({.misplaced_box = 3});
    const POINT right = {PlaceOf(dialog->box(2)).left, PlaceOf(dialog->box(3)).top};
    POINT inside = right;
    ScreenToClient(dialog->window(), &inside);
    SetWindowPos(dialog->box(3), nullptr, inside.x, inside.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    SendMessageA(dialog->window(), WM_ACTIVATE, WA_ACTIVE, 0);
    EXPECT_EQ(Hook().Now(), CWizardHook::State::active);
    EXPECT_EQ(Overlays(), Standing(5, false));
}

// ---- The lifecycle of an add-in

TEST(wizard_hook_of_an_application, is_installed_with_a_registry_and_removed_with_it) {
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

class WizardApp final : public CXllApp {
  public:
    explicit WizardApp(const CXlIntegration& integration) : CXllApp(integration) {
        static_cast<CXlWizExUIFunctionRegistry&>(*WizardRegistry()).Add("Convert", function_);
    }
    bool ConfirmRegistrationFailure() override { return confirms; }
    bool confirms = false;

  private:
    WizardFunction function_;
};

TEST(wizard_hook_of_an_application, is_gone_if_the_add_in_is_not_opened) {
    IntegrationHost host(16);
    const CXlRealIntegration integration;
    WizardApp application(integration);
    host.faults().Refuse(xlfRegister, xlretFailed);
    EXPECT_EQ(OpenAddIn(), 0);
    EXPECT_EQ(CWizardHook::Instance(), nullptr);
    EXPECT_FALSE(application.ComHelper().HoldsRegistry());
    application.confirms = true;
    EXPECT_EQ(OpenAddIn(), 1);
    EXPECT_NE(CWizardHook::Instance(), nullptr);
    CloseAddIn();
    SetAddInOpened(false);
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
