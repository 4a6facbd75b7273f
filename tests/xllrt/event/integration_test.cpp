// The parts of a build without integration: nothing is found, nothing is done, and starting is no failure.

#include "xllrt/event/integration.h"

#include <gtest/gtest.h>
#include <vector>

namespace {

using namespace metrify;

TEST(NoIntegration, has_no_functions_with_lists_or_buttons) {
    const auto registry = NoIntegration().MakeWizardRegistry();
    EXPECT_FALSE(registry->HasEntries());
    EXPECT_FALSE(registry->UsesThemes());
    EXPECT_FALSE(registry->MakeReady());
    EXPECT_EQ(registry->FindFunction("Metrify"), nullptr);
    for (const int kind : {0, 1, 2, 3})
        EXPECT_EQ(registry->IconSize(kind), nullptr) << kind;
}

TEST(NoIntegration, never_holds_a_registry) {
    const auto registry = NoIntegration().MakeWizardRegistry();
    const auto helper = NoIntegration().MakeComHelper();
    helper->HoldRegistry(*registry);
    EXPECT_FALSE(helper->HoldsRegistry());
    helper->ReleaseRegistry();
    EXPECT_FALSE(helper->HoldsRegistry());
}

TEST(NoIntegration, sees_no_open_formula_dialog) {
    EXPECT_FALSE(NoIntegration().MakeWizardDetector()->IsOpen());
}

TEST(NoIntegration, keeps_no_module) {
    EXPECT_NO_THROW(NoIntegration().KeepModule());
}

TEST(NoIntegration, starts_and_connects_without_failure) {
    const auto holder = NoIntegration().MakeComHolder();
    XlComFailure failure;
    EXPECT_TRUE(holder->Start(failure));
    EXPECT_TRUE(holder->Connect(failure));
    EXPECT_EQ(failure.text, u"");
    EXPECT_EQ(failure.code, 0U);
}

TEST(NoIntegration, describes_and_runs_nothing_and_leaves_the_outputs_unchanged) {
    const auto holder = NoIntegration().MakeComHolder();
    std::u16string workbook = u"workbook";
    std::u16string name = u"name";
    CXlOper answer(2.5);
    EXPECT_FALSE(holder->DescribeWorkbook(nullptr, name));
    EXPECT_FALSE(holder->DescribeSheet(nullptr, workbook, name));
    EXPECT_FALSE(holder->DescribeRange(nullptr, name));
    EXPECT_FALSE(holder->Run(std::vector<XlComValue>{std::u16string(u"macro")}, answer));
    EXPECT_FALSE(holder->RunText(u"macro()", answer));
    EXPECT_EQ(workbook, u"workbook");
    EXPECT_EQ(name, u"name");
    EXPECT_EQ(answer.ToNumber(), 2.5);
}

} // namespace
