#pragma once

// The add-in's code and the test host, both in this process.

#include "host/core/host.h"
#include "host/core/host_exports.h"
#include "xllrt/app/xll_app.h"
#include "xllrt/app/xll_lifecycle.h"
#include "xllrt/gate/host_version.h"
#include "xllrt/value/thread_state.h"

#include <gtest/gtest.h>

namespace metrify {

/// A host of version 15, unless another is created. Tests restore the state of the process.
class StandInTest : public testing::Test {
  protected:
    StandInTest() : earlier_(CXllApp::Instance()) {
        AllocateThreadStates();
        CXllApp::SetInstance(nullptr);
        SetAddInOpened(false);
        Start(15);
    }
    ~StandInTest() override {
        // Values of the thread are released by the host that allocated them.
        DestroyThreadState();
        const host::LedgerCounts counts = Host().ledger.Counts();
        EXPECT_EQ(counts.Outstanding(), 0U) << "records were not given back";
        EXPECT_EQ(counts.refused, 0U);
        ConnectHost({});
        SetAddInOpened(false);
        CXllApp::SetInstance(earlier_);
    }

    void Start(int version) {
        host_.reset();
        host_ = std::make_unique<host::Host>(version);
        ConnectHost(host::NewestHostPrimitives());
        DetectHostVersion();
    }

    host::HostState& Host() { return host_->state(); }
    host::Host& TheHost() { return *host_; }

  private:
    CXllApp* earlier_;
    std::unique_ptr<host::Host> host_;
};

} // namespace metrify
