#pragma once

// The connection to the host's events by a connection point.

#include "integration/application/dispatch_sink.h"
#include "integration/com/com_failure.h"

namespace metrify {

class CEventConnection {
  public:
    /// Returns false, with the reason, if the host can't be connected to.
    bool Connect(IDispatch* application, CXllApp* add_in, ComFailure& failure);

    /// The events have no effect afterwards, even if the host keeps the connection, which is a failure.
    bool Disconnect(IDispatch* application, ComFailure& failure);

    /// Forgets the connection without calling the host.
    void Abandon() { sink_.Release(); }

  private:
    DWORD cookie_ = 0;
    ComPtr<CDispatchSink> sink_;
};

} // namespace metrify
