// A host that answers one of the add-in's calls falsely, each call and each lie in turn. The add-in reads
// nothing outside of the answer, gives the host a value for each cell, and works with a truthful host later.

#include "tests/addin/add_in_life.h"
#include "tests/addin/lying_host.h"

#include <gtest/gtest.h>
#include <ostream>
#include <string>

namespace metrify {
namespace {

using host::CellValue;

const CellValue kConverted(host::RowOf({1.0668, u"m\n\n"}));

class lying_host : public testing::TestWithParam<int> {
  protected:
    // Lies in the n-th call from now on.
    void LieIn(int n, Lie lie) {
        until_lie_ = n;
        lie_ = lie;
        has_lied_ = false;
    }
    void TellTheTruth() { until_lie_ = 0; }

    // Repeats the body with the lie in one call after the other, until it has no more calls.
    template <class Body>
    void LieInEachCall(Lie lie, Body body) {
        int n = 1;
        do {
            SCOPED_TRACE("lie " + std::to_string(static_cast<int>(lie)) + " in call " + std::to_string(n));
            LieIn(n++, lie);
            body();
            ASSERT_FALSE(HasFailure());
        } while (has_lied_);
        EXPECT_GT(n, 2) << "the body calls the host";
    }
    template <class Body>
    void TellEachLie(Body body) {
        for (int lie = 0; lie < kLies; ++lie)
            LieInEachCall(static_cast<Lie>(lie), body);
    }
    template <class Body>
    void FailWithEachCode(Body body) {
        for (const int code : kFailureCodes) {
            SCOPED_TRACE("code " + std::to_string(code));
            host.FailWith(code);
            for (const Lie lie : {Lie::failure_with_text, Lie::failure_with_array})
                LieInEachCall(lie, body);
        }
    }
    template <class Repetition>
    void ExpectConversions(Repetition repeat) {
        {
            AddInLife life(host.host());
            ASSERT_TRUE(life.Open());
            repeat([&] {
                // No lie is a release above the last supported one.
                for (const CellValue& value : life.Convert())
                    EXPECT_EQ(value, kConverted);
            });
        }
        ExpectBalance();
    }
    template <class Repetition>
    void ExpectValuesOfMacros(Repetition repeat) {
        {
            AddInLife life(host.host());
            ASSERT_TRUE(life.Open());
            const CellValue none(host::CellError{xlerrValue});
            repeat([&] {
                const std::vector<CellValue> values = life.RunMacros();
                EXPECT_EQ(values[0], none);
                EXPECT_EQ(values[1], none);
                EXPECT_EQ(values[2], CellValue(false));
                EXPECT_EQ(values[3], CellValue(false));
                EXPECT_EQ(values[4], CellValue(-1.0));
                EXPECT_EQ(values[5], CellValue(-1.0));
                // The name of the add-in, or an error if the host does not convert the action to 1.
                EXPECT_TRUE(values[6] == CellValue(u"Metrify") || values[6] == none);
            });
        }
        ExpectBalance();
    }
    void LiveTwice() {
        {
            AddInLife life(host.host());
            const bool is_open = life.Open();
            life.CloseAndRemove();
            TellTheTruth();
            EXPECT_EQ(life.Open(), !is_open);
        }
        AddInLife life(host.host());
        EXPECT_TRUE(life.Open());
    }

    std::optional<Lie> Choose() {
        if (until_lie_ == 0 || --until_lie_ > 0)
            return std::nullopt;
        has_lied_ = true;
        return lie_;
    }

    LyingHost host{GetParam(), [this](int /*function*/) { return Choose(); }};

    void ExpectBalance() {
        const host::LedgerCounts counts = host.host().state().ledger.Counts();
        EXPECT_EQ(counts.Outstanding(), 0U) << "values were not given back";
        EXPECT_EQ(counts.refused, 0U)
            << "values were given back that are the add-in's own, or given back before";
        EXPECT_TRUE(host.AreRefusedValuesWhole());
    }

  private:
    int until_lie_ = 0; // the call to lie in; 0 for none
    bool has_lied_ = false;
    Lie lie_ = Lie::number;
};

TEST_P(lying_host, gets_a_converted_number_whatever_it_says_of_its_release) {
    ExpectConversions([this](const auto& body) { TellEachLie(body); });
}

TEST_P(lying_host, gets_a_converted_number_whatever_code_its_failures_have) {
    ExpectConversions([this](const auto& body) { FailWithEachCode(body); });
}

TEST_P(lying_host, gets_a_value_of_each_macro) {
    ExpectValuesOfMacros([this](const auto& body) { TellEachLie(body); });
}

TEST_P(lying_host, gets_a_value_of_each_macro_whatever_code_its_failures_have) {
    ExpectValuesOfMacros([this](const auto& body) { FailWithEachCode(body); });
}

TEST_P(lying_host, may_ask_twice_for_everything_and_load_the_add_in_again) {
    for (const Lie lie : {Lie::text, Lie::null_text, Lie::huge_array, Lie::failure_with_text, Lie::no_value})
        LieInEachCall(lie, [this] { LiveTwice(); });
    ExpectBalance();
}

TEST_P(lying_host, may_fail_with_any_code_before_it_loads_the_add_in_again) {
    FailWithEachCode([this] { LiveTwice(); });
    ExpectBalance();
}

INSTANTIATE_TEST_SUITE_P(versions, lying_host, testing::Values(11, 15),
                         [](const auto& version) { return "version_" + std::to_string(version.param); });

} // namespace
} // namespace metrify
