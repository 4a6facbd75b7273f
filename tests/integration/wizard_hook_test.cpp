// The wizard hook on a real dialog.

#include "host/automation/wizard_dialog.h"
#include "integration/wizard_hook.h"
#include "tests/integration/integration_host.h"
#include "tests/integration/wizard_function.h"

#include <commctrl.h>

namespace metrify::host {
namespace {

class wizard_hook : public testing::Test {
  protected:
    wizard_hook() {
        registry.Add("Convert", function);
        CWizardHook::Install(registry);
    }
    ~wizard_hook() override { CWizardHook::Remove(); }

    static CWizardHook& Hook() { return *CWizardHook::Instance(); }

    void Open(WizardDialogOptions options = {}) {
        options.owner = host.automation.windows().main();
        if (options.function.empty())
            options.function = u"Convert";
        dialog.emplace(host.automation.surroundings(), options);
        Hook().SetFunctionName("Convert");
        dialog->Show();
    }

    static void Click(HWND overlay) { SendMessageA(overlay, BM_CLICK, 0, 0); }

    static std::vector<bool> Overlays() {
        std::vector<bool> standing;
        for (int box = 0; box < kDialogBoxes; ++box)
            standing.push_back(Hook().Overlay(box) != nullptr);
        return standing;
    }

    // A key as the user presses it.
    static void Press(WORD key) {
        Send(key, 0);
        Send(key, KEYEVENTF_KEYUP);
        Pump();
    }

    static void PressWith(WORD modifier, WORD key) {
        Send(modifier, 0);
        Press(key);
        Send(modifier, KEYEVENTF_KEYUP);
        Pump();
    }

    static void Send(WORD key, DWORD flags) {
        INPUT input{};
        input.type = INPUT_KEYBOARD;
        input.ki.wVk = key;
        input.ki.dwFlags = flags;
        SendInput(1, &input, sizeof(input));
    }

    static void Pump() {
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&message);
            DispatchMessageA(&message);
        }
    }

    void Select(int item) {
        SendMessageA(Hook().List(), CB_SETCURSEL, static_cast<WPARAM>(item), 0);
        Notify(CBN_SELENDOK);
    }

    void Notify(int notification) {
        SendMessageA(dialog->window(), WM_COMMAND, MAKEWPARAM(0, notification),
                     reinterpret_cast<LPARAM>(Hook().List()));
    }

    IntegrationHost host{16};
    CXlWizExUIFunctionRegistry registry;
    WizardFunction function;
    std::optional<WizardDialog> dialog;
};

using Standing = std::vector<bool>;

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

// ---- Lists

TEST_F(wizard_hook, opens_the_list_of_an_argument_under_its_box) {
    Open();
    Click(Hook().Overlay(0));
    EXPECT_EQ(Hook().OpenIndex(), 0);
    EXPECT_EQ(SendMessageA(Hook().List(), CB_GETCOUNT, 0, 0), 4);
    EXPECT_TRUE(SendMessageA(Hook().List(), CB_GETDROPPEDSTATE, 0, 0));
    EXPECT_FALSE(IsWindowVisible(Hook().Overlay(0)));
    RECT list{};
    RECT box{};
    GetWindowRect(Hook().List(), &list);
    GetWindowRect(dialog->box(0), &box);
    EXPECT_EQ(list.left, box.left);
    EXPECT_EQ(list.top, box.bottom);
    EXPECT_EQ(list.right, box.right + 3);
}

TEST_F(wizard_hook, writes_the_value_of_the_selection_into_the_box) {
    Open();
    Click(Hook().Overlay(0));
    Select(1);
    EXPECT_EQ(dialog->Text(0), "\"ft\"");
}

TEST_F(wizard_hook, shows_the_arrow_again_and_goes_to_the_box_when_the_list_closes) {
    Open();
    Click(Hook().Overlay(0));
    Notify(CBN_CLOSEUP);
    EXPECT_EQ(Hook().OpenIndex(), -1);
    EXPECT_TRUE(IsWindowVisible(Hook().Overlay(0)));
    EXPECT_FALSE(IsWindowVisible(Hook().List()));
    EXPECT_EQ(GetFocus(), dialog->box(0));
    EXPECT_EQ(dialog->Text(0), "");
}

TEST_F(wizard_hook, moves_the_list_with_its_box_when_the_text_changes) {
    Open();
    Click(Hook().Overlay(0));
    SetWindowPos(dialog->box(0), nullptr, 130, 24, 220, 22, SWP_NOZORDER);
    SendMessageA(dialog->window(), WM_COMMAND, MAKEWPARAM(0, EN_CHANGE),
                 reinterpret_cast<LPARAM>(dialog->box(0)));
    RECT list{};
    RECT box{};
    GetWindowRect(Hook().List(), &list);
    GetWindowRect(dialog->box(0), &box);
    EXPECT_EQ(list.left, box.left);
}

// ---- Buttons

TEST_F(wizard_hook, runs_the_dialog_of_a_button_with_the_text) {
    Open();
    dialog->SetText(1, "before");
    Click(Hook().Overlay(1));
    EXPECT_EQ(function.button.seen, "before");
    EXPECT_FALSE(function.button.was_dialog_enabled);
    EXPECT_TRUE(IsWindowEnabled(dialog->window()));
    EXPECT_EQ(dialog->Text(1), "from the dialog");
    EXPECT_EQ(GetFocus(), dialog->box(1));
}

TEST_F(wizard_hook, leaves_the_text_if_the_dialog_of_a_button_did_not_change_it) {
    Open();
    function.button.changes = false;
    dialog->SetText(1, "before");
    Click(Hook().Overlay(1));
    EXPECT_EQ(dialog->Text(1), "before");
}

TEST_F(wizard_hook, gives_a_button_at_most_255_characters) {
    Open();
    function.button.changes = false;
    SetWindowTextA(dialog->box(1), std::string(300, 'x').c_str());
    Click(Hook().Overlay(1));
    EXPECT_EQ(function.button.seen, std::string(255, 'x'));
}

// ---- Keys

TEST_F(wizard_hook, opens_by_the_key_of_the_argument) {
    function.key = {.key = VK_F4, .modifier = 0, .content_mode = 2};
    Open();
    SetForegroundWindow(dialog->window());
    SetFocus(dialog->box(1));
    Press(VK_F5);
    EXPECT_EQ(function.button.seen, "");
    dialog->SetText(1, "5");
    Press(VK_F4);
    EXPECT_EQ(function.button.seen, "5");
}

TEST_F(wizard_hook, leaves_a_formula_alone_that_the_content_mode_protects) {
    function.key = {.key = VK_F4, .modifier = 0, .content_mode = 2};
    Open();
    SetForegroundWindow(dialog->window());
    SetFocus(dialog->box(1));
    dialog->SetText(1, "A1*2");
    Press(VK_F4);
    EXPECT_EQ(function.button.seen, "");
    EXPECT_EQ(dialog->Text(1), "A1*2");
}

TEST_F(wizard_hook, asks_for_the_modifier_of_a_key) {
    function.key = {.key = VK_F4, .modifier = VK_SHIFT, .content_mode = 3};
    Open();
    SetForegroundWindow(dialog->window());
    SetFocus(dialog->box(1));
    dialog->SetText(1, "5");
    Press(VK_F4);
    EXPECT_EQ(function.button.seen, "");
    PressWith(VK_CONTROL, VK_F4);
    EXPECT_EQ(function.button.seen, "");
    PressWith(VK_SHIFT, VK_F4);
    EXPECT_EQ(function.button.seen, "5");
}

TEST_F(wizard_hook, moves_the_selection_by_the_arrows_and_takes_it_by_the_tabulator) {
    Open();
    SetForegroundWindow(dialog->window());
    Click(Hook().Overlay(0));
    ASSERT_EQ(GetFocus(), Hook().List());
    Press(VK_DOWN);
    EXPECT_EQ(SendMessageA(Hook().List(), CB_GETCURSEL, 0, 0), 0);
    Press(VK_DOWN);
    Press(VK_DOWN);
    Press(VK_UP);
    EXPECT_EQ(SendMessageA(Hook().List(), CB_GETCURSEL, 0, 0), 1);
    Press(VK_TAB);
    EXPECT_EQ(dialog->Text(0), "\"ft\"");
    EXPECT_EQ(Hook().OpenIndex(), -1);
    EXPECT_EQ(GetFocus(), dialog->box(1));
}

TEST_F(wizard_hook, goes_from_the_last_box_to_the_first_by_the_tabulator) {
    function.kinds = std::vector<ArgumentUi>(5, ArgumentUi::list);
    Open({.arguments = 3});
    SetForegroundWindow(dialog->window());
    Click(Hook().Overlay(2));
    Press(VK_TAB);
    EXPECT_EQ(GetFocus(), dialog->box(0));
}

TEST_F(wizard_hook, goes_to_the_former_box_by_the_tabulator_with_shift) {
    function.kinds = std::vector<ArgumentUi>(5, ArgumentUi::list);
    Open({.arguments = 3});
    SetForegroundWindow(dialog->window());
    Click(Hook().Overlay(1));
    PressWith(VK_SHIFT, VK_TAB);
    EXPECT_EQ(GetFocus(), dialog->box(0));
    Click(Hook().Overlay(0));
    PressWith(VK_SHIFT, VK_TAB);
    EXPECT_EQ(GetFocus(), dialog->box(2));
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
