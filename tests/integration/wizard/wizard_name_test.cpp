// The name of the function that the dialog shows.

#include "tests/integration/replaced_call.h"
#include "tests/integration/wizard/wizard_fixture.h"

namespace metrify::host {
namespace {

using wizard_name = WizardHookTest;

// Counts how often an object is asked for its children.
struct CountedWalks {
    CountedWalks() { count = 0; }

    static HRESULT WINAPI Walk(IAccessible* object, LONG first, LONG wanted, VARIANT* children, LONG* given) {
        ++count;
        using Function = decltype(&AccessibleChildren);
        static const auto original = reinterpret_cast<Function>(
            AddressOf(GetProcAddress(GetModuleHandleA("oleacc.dll"), "AccessibleChildren")));
        return original(object, first, wanted, children, given);
    }

    static inline int count = 0;
    ReplacedPointer replaced{LoadedFunction(&SystemFunctions::accessible_children), AddressOf(Walk)};
};

HRESULT WINAPI RefuseAccess(HWND, DWORD, REFIID, void** object) {
    *object = nullptr;
    return E_FAIL;
}

TEST_F(wizard_name, drops_the_function_if_the_dialog_shows_another) {
    Open({.function = u"Another"});
    EXPECT_EQ(Hook().Now(), CWizardHook::State::active);
    EXPECT_EQ(Overlays(), Standing(5, false));
}

TEST_F(wizard_name, reads_the_name_also_in_an_object_below) {
    Open({.function = u"Another", .is_name_nested = true});
    EXPECT_EQ(Overlays(), Standing(5, false));
    dialog.reset();
    Open({.is_name_nested = true});
    EXPECT_EQ(Overlays(), (Standing{true, true, false, false, false}));
}

TEST_F(wizard_name, is_looked_for_where_it_was_the_last_time) {
    const CountedWalks walks;
    Open();
    EXPECT_EQ(CountedWalks::count, 1);
    dialog.reset();
    Open({.function = u"Another"});
    EXPECT_EQ(CountedWalks::count, 1);
    EXPECT_EQ(Overlays(), Standing(5, false));
}

TEST_F(wizard_name, is_looked_for_everywhere_if_it_is_not_where_it_was) {
    Open();
    dialog.reset();
    Open({.function = u"Another", .is_name_nested = true});
    EXPECT_EQ(Overlays(), Standing(5, false));
}

TEST_F(wizard_name, is_remembered_as_a_plain_child_alone) {
    const CountedWalks walks;
    Open({.is_name_nested = true});
    const int first = CountedWalks::count;
    dialog.reset();
    Open({.is_name_nested = true});
    EXPECT_EQ(CountedWalks::count, 2 * first);
}

TEST_F(wizard_name, that_the_dialog_does_not_report_keeps_the_function) {
    const ReplacedPointer refusing(LoadedFunction(&SystemFunctions::accessible_object_from_window),
                                   AddressOf(RefuseAccess));
    Open({.function = u"Another"});
    EXPECT_EQ(Overlays(), (Standing{true, true, false, false, false}));
}

TEST_F(wizard_name, that_the_registry_does_not_know_adds_nothing) {
    dialog.emplace(host.automation.context(), WizardDialogOptions{.function = u"Another"});
    Hook().SetFunctionName("Another");
    dialog->Show();
    EXPECT_EQ(Hook().Now(), CWizardHook::State::active);
    EXPECT_EQ(Overlays(), Standing(5, false));
}

class wizard_name_role : public WizardHookTest, public testing::WithParamInterface<LONG> {};

TEST_P(wizard_name_role, is_20_alone) {
    const Standing expected =
        GetParam() == 20 ? Standing(5, false) : Standing{true, true, false, false, false};
    for (const bool is_nested : {false, true}) {
        Open({.function = u"Another", .is_name_nested = is_nested, .name_role = GetParam()});
        EXPECT_EQ(Overlays(), expected) << is_nested;
        dialog.reset();
    }
}

INSTANTIATE_TEST_SUITE_P(all, wizard_name_role, testing::Range(LONG{19}, LONG{41}));

TEST_F(wizard_name, keeps_no_reference_to_the_dialog) {
    const int before = host.automation.ledger().references();
    Open();
    dialog.reset();
    EXPECT_EQ(host.automation.ledger().references(), before);
}

} // namespace
} // namespace metrify::host
