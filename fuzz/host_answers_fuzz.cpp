// The add-in in a host that answers any of its calls falsely: with records of other types, malformed ones,
// and values together with the code of a failure. Each entry gives a value of its form, and every value of
// the host is given back.
//
// Input: a byte for the host's version and the code of its failures, then a byte for each call.

#include "fuzz/input.h"
#include "tests/addin/add_in_life.h"
#include "tests/addin/lying_host.h"

#include <cstdint>
#include <optional>

namespace {

using namespace metrify;
using host::CellValue;
using metrify_fuzz::Input;
using metrify_fuzz::Require;

// Every second byte is the truth, so that the calls after it are reached.
std::optional<Lie> NextLie(Input& input) {
    const unsigned choice = input.Take(2 * kLies);
    return choice < static_cast<unsigned>(kLies) ? std::nullopt
                                                 : std::optional(static_cast<Lie>(choice - kLies));
}

// Whatever a host says of its release, that of version 16 may be true.
void CheckConversion(const CellValue& value, int version) {
    static const CellValue converted(host::RowOf({1.0668, u"m\n\n"}));
    const auto* text = value.As<std::u16string>();
    Require(value == converted || (version > 15 && text && text->starts_with(u"This version of Excel")));
}

// A text is an error's.
void CheckMacro(const CellValue& value, const CellValue& usual) {
    static const CellValue none(host::CellError{xlerrValue});
    Require(value == none || value == usual);
}

void Live(host::Host& host, Input& input) {
    AddInLife life(host);
    // The first opening may fail. The last one is the truth's, as the input has ended.
    for (int opening = 0; opening < 2; ++opening) {
        life.Open();
        for (const CellValue& value : life.Convert())
            CheckConversion(value, host.state().version);
        const std::vector<CellValue> values = life.RunMacros();
        const CellValue usual[] = {
            host::CellError{xlerrValue}, host::CellError{xlerrValue}, false, false, -1.0, -1.0, u"Metrify"};
        for (std::size_t i = 0; i < values.size(); ++i)
            CheckMacro(values[i], usual[i]);
        life.CloseAndRemove();
        if (input.Take(2) == 0)
            return;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    constexpr unsigned versions = 13;
    const unsigned kind = input.Take(versions * kFailureCodes.size());
    LyingHost host(static_cast<int>(4 + kind % versions),
                   [&input](int /*function*/) { return NextLie(input); });
    host.FailWith(kFailureCodes[kind / versions]);
    Live(host.host(), input);
    const host::LedgerCounts counts = host.host().state().ledger.Counts();
    Require(counts.Outstanding() == 0 && counts.refused == 0 && host.AreRefusedValuesWhole());
    return 0;
}
