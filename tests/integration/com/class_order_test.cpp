// Operations have a fixed order in their classes: code that was compiled separately calls them by index.

#include "integration/wizard/wizard_registry.h"
#include "xllrt/event/app_events.h"

#include <cstring>
#include <gtest/gtest.h>

namespace metrify {
namespace {

// The index of a virtual operation in its class. A destructor has two.
template <class Operation>
std::size_t NumberOf(Operation operation) {
    std::size_t offset = 0;
    std::memcpy(&offset, &operation, sizeof(offset));
    return (offset - 1) / sizeof(void*); // compilers for this system mark virtual functions by 1
}

TEST(class_order, of_a_registry_of_functions) {
    using Registry = IXlWizExUIFunctionRegistry;
    EXPECT_EQ(NumberOf(&Registry::HasEntries), 0U);
    EXPECT_EQ(NumberOf(&Registry::UsesThemes), 1U);
    EXPECT_EQ(NumberOf(&Registry::FindFunction), 2U);
    EXPECT_EQ(NumberOf(&Registry::IconSize), 3U);
    EXPECT_EQ(NumberOf(&Registry::MakeReady), 6U);
    EXPECT_EQ(NumberOf(&Registry::Close), 7U);
}

TEST(class_order, of_a_function) {
    EXPECT_EQ(NumberOf(&IXlWizExFunction::KindCount), 0U);
    EXPECT_EQ(NumberOf(&IXlWizExFunction::KindOf), 1U);
    EXPECT_EQ(NumberOf(&IXlWizExFunction::ListOf), 2U);
    EXPECT_EQ(NumberOf(&IXlWizExFunction::KeyOf), 3U);
    EXPECT_EQ(NumberOf(&IXlWizExFunction::ButtonOf), 6U);
}

TEST(class_order, of_a_list_and_a_button) {
    EXPECT_EQ(NumberOf(&IXlWizExList::ItemCount), 0U);
    EXPECT_EQ(NumberOf(&IXlWizExList::ItemText), 1U);
    EXPECT_EQ(NumberOf(&IXlWizExList::ValueText), 2U);
    EXPECT_EQ(NumberOf(&IXlWizExButton::Run), 0U);
}

TEST(class_order, of_the_detector_of_the_formula_dialog) {
    EXPECT_EQ(NumberOf(&IXlFormulaWizardDetector::IsOpen), 0U);
}

struct OpenEvent final : CXlEvent<CXllOpenEventArgs> {
    static std::size_t NumberOfFirst() { return NumberOf(&OpenEvent::OnFirstObserver); }
    static std::size_t NumberOfNone() { return NumberOf(&OpenEvent::OnNoObservers); }
};

TEST(class_order, of_an_event) {
    EXPECT_EQ(OpenEvent::NumberOfFirst(), 0U);
    EXPECT_EQ(OpenEvent::NumberOfNone(), 1U);
}

TEST(class_order, of_an_observer) {
    EXPECT_EQ(NumberOf(&CXlEventObserver<CXllOpenEventArgs>::Notify), 0U);
}

} // namespace
} // namespace metrify
