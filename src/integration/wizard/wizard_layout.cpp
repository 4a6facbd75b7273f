#include "integration/wizard/wizard_layout.h"

namespace metrify {

namespace {

constexpr int kPlainDpi = 96;
constexpr int kWidth = 17;
constexpr unsigned kFirstNewSystem = 6;

struct LayoutRow {
    ArgumentUi kind;
    bool is_new_system;
    int height;    // scaled
    int above_top; // this and the others are not scaled
    int beyond_right;
};

constexpr LayoutRow kLayout[] = {
    {ArgumentUi::list, true, 20, 4, 3},
    {ArgumentUi::list, false, 18, 3, 2},
    {ArgumentUi::button, true, 16, 2, 3},
    {ArgumentUi::button, false, 16, 2, 2},
};

const LayoutRow& RowOf(ArgumentUi kind, bool is_new_system) {
    const LayoutRow* row = kLayout;
    while (row->kind != kind || row->is_new_system != is_new_system)
        ++row;
    return *row;
}

void AdjustToResolution(OverlayPlace& place, int dpi) {
    if (dpi <= kPlainDpi)
        return;
    --place.height;
    if (dpi == 120 || dpi == 144)
        ++place.top;
}

} // namespace

OverlayPlace PlaceOverlay(ArgumentUi kind, const RECT& box, const LayoutMetrics& metrics) {
    const LayoutRow& row = RowOf(kind, metrics.system_major >= kFirstNewSystem);
    const int width = MulDiv(kWidth, metrics.dpi_x, kPlainDpi);
    OverlayPlace place{.left = static_cast<int>(box.right) - width + row.beyond_right,
                       .top = static_cast<int>(box.top) - row.above_top,
                       .width = width,
                       .height = MulDiv(row.height, metrics.dpi_y, kPlainDpi)};
    AdjustToResolution(place, metrics.dpi_y);
    if (!metrics.is_themed) {
        --place.left;
        ++place.top;
        place.height -= 2;
    }
    return place;
}

} // namespace metrify
