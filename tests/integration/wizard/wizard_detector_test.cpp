// Detection of the host's formula dialog.

#include "host/automation/wizard_dialog.h"
#include "integration/wizard/wizard_detector.h"
#include "tests/integration/integration_host.h"

namespace metrify::host {
namespace {

class wizard_detector : public testing::Test {
  protected:
    HWND Main() { return host.automation.windows().main(); }
    static std::uint16_t LowBits(HWND window) {
        return static_cast<std::uint16_t>(reinterpret_cast<std::uintptr_t>(window));
    }

    bool IsDialog(const std::string& title, const std::string& class_name = "bosa_sdm_XL9") {
        const WizardDialog dialog(host.automation.context(),
                                  {.owner = Main(), .title = title, .class_name = class_name});
        return detector.IsFormulaDialog(dialog.window(), LowBits(Main()));
    }

    IntegrationHost host{16};
    CXlFormulaWizardDetector detector;
};

TEST_F(wizard_detector, knows_the_title) {
    EXPECT_TRUE(IsDialog("Function Arguments"));
    EXPECT_TRUE(IsDialog("Function Arguments and more"));
}

TEST_F(wizard_detector, takes_titles_of_other_languages) {
    for (const char* title : {"Funktionsargumente", "Arguments de la fonction", "Argumentos de funci\xF3n",
                              "Argomenti funzione", "Functieargumenten"})
        EXPECT_TRUE(IsDialog(title)) << title;
}

TEST_F(wizard_detector, skips_the_dialog_that_finds_text) {
    EXPECT_FALSE(IsDialog("Find"));
    EXPECT_FALSE(IsDialog("Find and Replace"));
}

TEST_F(wizard_detector, compares_titles_with_their_case) {
    EXPECT_TRUE(IsDialog("find something"));
}

TEST_F(wizard_detector, takes_every_title_without_a_list_of_others) {
    detector.otherTitles.clear();
    EXPECT_TRUE(IsDialog("Find"));
}

TEST_F(wizard_detector, prefers_the_list_of_dialog_titles) {
    detector.dialogTitles.emplace_back("Find an argument");
    EXPECT_TRUE(IsDialog("Find an argument of the function"));
    EXPECT_FALSE(IsDialog("Find a cell"));
}

TEST_F(wizard_detector, treats_an_empty_title_by_its_flag) {
    EXPECT_TRUE(detector.emptyTitleCounts);
    EXPECT_TRUE(IsDialog(""));
    detector.emptyTitleCounts = false;
    EXPECT_FALSE(IsDialog(""));
}

TEST_F(wizard_detector, compares_49_characters_of_a_title) {
    detector.dialogTitles = {std::string(49, 'a')};
    detector.otherTitles = {std::string(49, 'a') + "b"};
    EXPECT_TRUE(IsDialog(std::string(60, 'a')));
}

TEST_F(wizard_detector, compares_the_first_11_characters_of_the_class) {
    EXPECT_TRUE(IsDialog("Function Arguments", "bosa_sdm_XL8"));
    EXPECT_TRUE(IsDialog("Function Arguments", "bosa_sdm_XL"));
    EXPECT_FALSE(IsDialog("Function Arguments", "bosa_sdm_Mso96"));
    EXPECT_FALSE(IsDialog("Function Arguments", "bosa_sdm_X"));
    EXPECT_FALSE(IsDialog("Function Arguments", "bosa_sdm_XM"));
}

TEST_F(wizard_detector, considers_dialogs_of_this_host_only) {
    const WizardDialog dialog(host.automation.context(), {.owner = Main()});
    EXPECT_FALSE(detector.IsFormulaDialog(dialog.window(), static_cast<std::uint16_t>(LowBits(Main()) ^ 1U)));
    const WizardDialog orphan(host.automation.context(), {.owner = nullptr});
    EXPECT_FALSE(detector.IsFormulaDialog(orphan.window(), LowBits(Main())));
}

TEST_F(wizard_detector, finds_the_dialog_among_all_windows) {
    EXPECT_FALSE(detector.IsOpen());
    {
        const WizardDialog dialog(host.automation.context(), {.owner = Main()});
        EXPECT_TRUE(detector.IsOpen());
    }
    EXPECT_FALSE(detector.IsOpen());
}

TEST_F(wizard_detector, is_asked_through_the_application) {
    const CXlRealIntegration integration;
    CXllApp application(integration);
    EXPECT_FALSE(application.WizardDetector().IsOpen());
    const WizardDialog dialog(host.automation.context(), {.owner = Main()});
    EXPECT_TRUE(application.WizardDetector().IsOpen());
}

TEST_F(wizard_detector, finds_nothing_without_a_host_window) {
    const WizardDialog dialog(host.automation.context(), {.owner = Main()});
    host.faults().Refuse(xlGetHwnd, xlretFailed);
    EXPECT_FALSE(detector.IsOpen());
}

} // namespace
} // namespace metrify::host
