#include "xllrt/app/xll_lifecycle.h"
#include "xllrt/gate/host_primitives.h"

namespace metrify {

namespace {

// The loader runs what initialises a module, and undoes it. This object is the module's last: it is made when
// all the others are there, and goes before them.
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
