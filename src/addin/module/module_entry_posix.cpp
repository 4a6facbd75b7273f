#include "xllrt/app/xll_lifecycle.h"
#include "xllrt/gate/host_primitives.h"

namespace metrify {

namespace {

// The loader constructs and destroys the static objects of a module. This one is constructed last and
// destroyed first.
class ModuleLife {
  public:
    ModuleLife() {
        ConnectImportedHost();
        ProcessEntry(this, ProcessReason::attach);
    }
    ModuleLife(const ModuleLife&) = delete;
    ModuleLife& operator=(const ModuleLife&) = delete;
    ~ModuleLife() { ProcessEntry(this, ProcessReason::detach); }
};

const ModuleLife life;

} // namespace

} // namespace metrify
