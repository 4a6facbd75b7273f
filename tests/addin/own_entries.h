#pragma once

// The add-in's entries as a module of this program.

#include "addin/macro.h"
#include "addin/worksheet_function.h"
#include "host/state/add_in_module.h"
#include "xllrt/app/ribbon_callback.h"
#include "xllrt/app/xll_exports.h"

#include <map>
#include <string>

namespace metrify {

/// The module as the host sees it. Its entries are in this program.
class OwnEntries final : public host::AddInModule {
  public:
    const std::u16string& Path() const override { return path_; }
    void* Find(const std::string& name) const override {
        const auto found = entries.find(name);
        return found != entries.end() ? found->second : nullptr;
    }

    std::map<std::string, void*> entries{
        {"xlAutoOpen", Address(xlAutoOpen)},
        {"xlAutoClose", Address(xlAutoClose)},
        {"xlAutoAdd", Address(xlAutoAdd)},
        {"xlAutoRemove", Address(xlAutoRemove)},
        {"xlAddInManagerInfo", Address(xlAddInManagerInfo)},
        {"xlAddInManagerInfo12", Address(xlAddInManagerInfo12)},
        {"xlAutoFree", Address(xlAutoFree)},
        {"xlAutoFree12", Address(xlAutoFree12)},
        {"Metrify_4", Address(Metrify_4)},
        {"Metrify_12", Address(Metrify_12)},
        {"Metrify_Macro_4", Address(Metrify_Macro_4)},
        {"Metrify_Macro_12", Address(Metrify_Macro_12)},
        {"RibbonCallback_4", Address(RibbonCallback_4)},
        {"RibbonCallback_12", Address(RibbonCallback_12)},
        {"CXlApp_ObserverEventHandler4", Address(CXlApp_ObserverEventHandler4)},
        {"CXlApp_ObserverEventHandler12", Address(CXlApp_ObserverEventHandler12)},
    };

  private:
    template <class Function>
    static void* Address(Function* function) {
        return reinterpret_cast<void*>(function);
    }

    std::u16string path_ = u"C:\\Add-ins\\Metrify.xll";
};

} // namespace metrify
