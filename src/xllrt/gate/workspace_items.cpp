#include "xllrt/gate/workspace_items.h"

#include "xllrt/fault/exceptions.h"
#include "xllrt/gate/host_gate.h"
#include "xllrt/value/xl_cell_view.h"

namespace metrify {

namespace {

// The item of xlfGetWorkspace.
constexpr double kInternationalSettings = 37.0;

} // namespace

bool GetWorkspaceItem(std::int32_t index, CXlOper& item) {
    CXlOper settings;
    if (Call(settings, xlfGetWorkspace, CXlOper(kInternationalSettings)) != xlretSuccess ||
        !settings.IsVector())
        return false;
    const XlSize size = settings.RefDimensions(false);
    if (index < 0 || index >= size.rows * size.columns)
        return false;
    try {
        item = *settings.VectorCell(index);
    } catch (const CXlOutOfRangeException&) { // an array with dimensions but without cells
        return false;
    }
    return true;
}

} // namespace metrify
