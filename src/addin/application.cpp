#include "addin/application.h"

namespace metrify {

int CMetrifyApp::OnOpen() {
    // An earlier opening that failed may have left its menu.
    if (menu_.present)
        menu_remove(menu_);
    menu_init(menu_, "Metrify", "Metrify add-in menu");
    menu_add_command(menu_, "Metrify", "Metrify_Macro", "Metrify Function");
    // Before an existing menu of this name.
    menu_add_to_bar(menu_, nullptr, "Metrify", 0);
    return 1;
}

void CMetrifyApp::OnClose() {
    menu_remove(menu_);
}

int CMetrifyApp::OnProcessAttach() {
    if (CXllApp::OnProcessAttach() != 0) {
        addInName.Assign("Metrify");
        functions.BuildDescriptors();
    }
    return 1;
}

} // namespace metrify
