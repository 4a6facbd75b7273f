#pragma once

// Sessions of an add-in in which every call fails once. Nothing may stay behind.

#include "tests/integration/integration_host.h"

#include <iostream>

namespace metrify::host {

/// What a host holds when nobody uses it.
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

/// The calls of a disconnection: for the container of the connection points, for the point, of the point. A
/// host that refuses one of them keeps what listens to its events.
inline constexpr std::size_t kDisconnectionCalls = 3;

/// Runs a session of an add-in again and again, with the n-th call failing, until there is no n-th call any
/// more. Gives the number of calls. The host keeps what listens in so many of the sessions.
template <class Session>
std::size_t FailEachCall(IntegrationHost& host, std::size_t kept, Session session) {
    session(); // what comes once and stays is there from here on
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
        // What a failure leaves switched is not this test's affair.
        host.settings().displayAlerts = true;
        host.host.state().echo = true;
    }
}

inline void Report(const char* what, std::size_t calls) {
    std::cout << what << ": each of " << calls << " calls failed once\n";
    testing::Test::RecordProperty(what, static_cast<int>(calls));
}

} // namespace metrify::host
