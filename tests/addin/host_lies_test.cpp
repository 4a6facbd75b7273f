// A host that answers one of the add-in's calls falsely, each call and each lie in turn. The add-in reads
// nothing outside of the answer, gives the host a value for each cell, and works with a truthful host later.

#include "addin/escape_key.h"
#include "tests/addin/add_in_life.h"
#include "tests/addin/lying_host.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <optional>
#include <ostream>
#include <string>

namespace metrify {
namespace {

using host::CellValue;

const CellValue kConverted(host::RowOf({1.0668, u"m\n\n"}));

class lying_host : public testing::TestWithParam<int> {
  protected:
    lying_host() { StartHost(); }

    void StartHost() {
        host.emplace(GetParam(), [this](int /*function*/) { return Choose(); });
        host->FailWith(failure_);
    }

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
            failure_ = code;
            host->FailWith(code);
            for (const Lie lie : {Lie::failure_with_text, Lie::failure_with_array})
                LieInEachCall(lie, body);
        }
    }
    template <class Repetition>
    void ExpectConversions(Repetition repeat) {
        {
            AddInLife life(host->host());
            ASSERT_EQ(life.Open(), 1);
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
            AddInLife life(host->host());
            ASSERT_EQ(life.Open(), 1);
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
    // Lives of the add-in in which the host may lie, and then an opening by the same host, truthfully.
    void Live(int lives) {
        StartHost(); // a host keeps the registrations of earlier add-ins, and gets slower
        for (int i = 0; i < lives; ++i) {
            AddInLife life(host->host());
            EXPECT_EQ(life.Open(), 1);
            EXPECT_TRUE(life.CloseAndRemove());
            EXPECT_EQ(life.Open(), 0) << "it is opened once";
            EXPECT_TRUE(life.CloseAndRemove());
        }
        TellTheTruth();
        {
            AddInLife life(host->host());
            EXPECT_EQ(life.Open(), 1);
        }
        ExpectBalance();
    }

    std::optional<Lie> Choose() {
        if (until_lie_ == 0 || --until_lie_ > 0)
            return std::nullopt;
        has_lied_ = true;
        return lie_;
    }

    std::optional<LyingHost> host;

    void ExpectBalance() {
        const host::LedgerCounts counts = host->host().state().ledger.Counts();
        EXPECT_EQ(counts.Outstanding(), 0U) << "values were not given back";
        EXPECT_EQ(counts.refused, 0U)
            << "values were given back that are the add-in's own, or given back before";
        EXPECT_TRUE(host->AreRefusedValuesWhole());
    }

    bool has_lied_ = false;
    Lie lie_ = Lie::number;

  private:
    int failure_ = xlretFailed;
    int until_lie_ = 0; // the call to lie in; 0 for none
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
    TellEachLie([this] { Live(2); });
}

TEST_P(lying_host, may_fail_with_any_code_before_it_loads_the_add_in_again) {
    FailWithEachCode([this] { Live(1); });
}

TEST_P(lying_host, presses_escape_with_nothing_but_the_boolean_true) {
    {
        AddInLife life(host->host());
        ASSERT_EQ(life.Open(), 1);
        const auto ask = [this] {
            const bool is_pressed = is_escape_pressed();
            EXPECT_EQ(is_pressed, has_lied_ && lie_ == Lie::truth);
        };
        TellEachLie(ask);
        FailWithEachCode(ask);
    }
    ExpectBalance();
}

INSTANTIATE_TEST_SUITE_P(versions, lying_host, testing::Values(11, 15),
                         [](const auto& version) { return "version_" + std::to_string(version.param); });

} // namespace
} // namespace metrify
