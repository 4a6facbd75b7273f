#pragma once

// A stateless host of version 14, which any number of threads may call.

#include "xllrt/gate/host_primitives.h"
#include "xllrt/gate/host_version.h"
#include "xllrt/value/thread_state.h"

namespace metrify {

class PlainHost {
  public:
    /// Answers every wide call by this entry, which must be stateless.
    explicit PlainHost(Excel12Entry (*find_entry)() = FindEntry) {
        AllocateThreadStates();
        ConnectHost({.find_entry = find_entry});
        SetHostVersion(14);
    }
    PlainHost(const PlainHost&) = delete;
    PlainHost& operator=(const PlainHost&) = delete;
    ~PlainHost() {
        ConnectHost({});
        DestroyThreadState();
    }

  private:
    static int METRIFY_HOST_CALL Answer(int /*function*/, int /*count*/, XLOPER12* /*arguments*/[],
                                        XLOPER12* result) {
        if (result) {
            result->xltype = xltypeNum;
            result->val.num = 14.0;
        }
        return xlretSuccess;
    }
    static Excel12Entry FindEntry() { return Answer; }
};

} // namespace metrify
