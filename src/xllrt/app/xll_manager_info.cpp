// The name shown in the host's list of add-ins.

#include "xllrt/app/xll_app.h"
#include "xllrt/app/xll_lifecycle.h"
#include "xllrt/gate/host_primitives.h"
#include "xllrt/value/plain_answer.h"
#include "xllrt/value/record_memory.h"

namespace metrify {

namespace {

// The only action: get the add-in's long name.
constexpr int kGetName = 1;

int CallHost(int function, XLOPER& result, XLOPER& first, XLOPER& second) {
    return Excel4(function, &result, &first, &second);
}

int CallHost(int function, XLOPER12& result, XLOPER12& first, XLOPER12& second) {
    return Excel12(function, &result, 2, &first, &second);
}

template <class Record>
bool IsGetName(Record& action) {
    Record type{};
    type.xltype = xltypeInt;
    type.val.w = xltypeInt;
    Record value{};
    return CallHost(xlCoerce, value, action, type) == xlretSuccess && TakeInteger(value) == kGetName;
}

// The contents of the previous record are not released: the host may have freed them.
template <class Record>
Record* Describe(Record& kept, Record* action) {
    kept = Record();
    CXllApp* const application = CXllApp::Instance();
    if (application && action && IsGetName(*action)) {
        MakeText(kept, application->GetAddInName());
        kept.xltype |= xlbitDLLFree;
    } else {
        kept.xltype = xltypeErr;
        kept.val.err = xlerrValue;
    }
    return &kept;
}

constinit XLOPER kept4{};
constinit XLOPER12 kept12{};

} // namespace

XLOPER12* DescribeAddIn12(XLOPER12* action) {
    return Describe(kept12, action);
}

XLOPER* DescribeAddIn4(XLOPER* action) {
    return Describe(kept4, action);
}

} // namespace metrify
