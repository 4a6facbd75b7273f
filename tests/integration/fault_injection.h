#pragma once

// Sessions of an add-in in each of which one call fails. Nothing may be left over.

#include "tests/integration/integration_host.h"

#include <iostream>

namespace metrify::host {

/// What a host holds when no add-in uses it.
struct Holdings {
    int objects;
    int references;
    std::size_t sinks;
    std::size_t books;
    friend bool operator==(const Holdings&, const Holdings&) = default;
};

inline void PrintTo(const Holdings& holdings, std::ostream* out) {
    *out << holdings.objects << " objects, " << holdings.references << " references, " << holdings.sinks
         << " sinks, " << holdings.books << " workbooks";
}

inline Holdings HoldingsOf(IntegrationHost& host) {
    const ReferenceLedger& ledger = host.automation.ledger();
    return {ledger.objects(), ledger.references(), host.sinks(), host.books()};
}

/// The calls of a disconnection: the queries for the container of the connection points and for the point,
/// and the call of the point. A host that refuses one of them keeps the sink.
inline constexpr std::size_t kDisconnectionCalls = 3;

/// Runs a session of an add-in repeatedly, with the n-th call failing, until a session has fewer than n
/// calls. Returns the number of calls. In `kept` of the sessions the host keeps the sink.
template <class Session>
std::size_t FailEachCall(IntegrationHost& host, std::size_t kept, Session session) {
    session(); // what is allocated once and kept exists from here on
    const Holdings before = HoldingsOf(host);
    for (std::size_t n = 1;; ++n) {
        host.faults().FailCall(n);
        session();
        const std::size_t calls = host.faults().calls();
        host.faults().Stop();
        if (kept > 0 && host.sinks() > 0) {
            --kept;
            host.automation.application().events().Clear();
        }
        EXPECT_EQ(HoldingsOf(host), before) << "call " << n << " failed";
        EXPECT_EQ(CXllCom::Instance(), nullptr);
        if (calls < n) {
            EXPECT_EQ(kept, 0U);
            return n - 1;
        }
        // Settings that a failure leaves changed are not tested here.
        host.settings().displayAlerts = true;
        host.host.state().echo = true;
    }
}

inline void Report(const char* what, std::size_t calls) {
    std::cout << what << ": each of " << calls << " calls failed once\n";
    testing::Test::RecordProperty(what, static_cast<int>(calls));
}

} // namespace metrify::host
