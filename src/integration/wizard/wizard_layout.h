#pragma once

// The position of the overlay on a box.

#include "integration/wizard/wizard_registry.h"

#include <windows.h>

namespace metrify {

struct LayoutMetrics {
    unsigned system_major; ///< version of the operating system
    int dpi_x;             ///< dots per inch of the screen
    int dpi_y;
    bool is_themed;
};

struct OverlayPlace {
    int left;
    int top;
    int width;
    int height;
    friend bool operator==(const OverlayPlace&, const OverlayPlace&) = default;
};

/// The position, in the coordinates of the box rectangle.
OverlayPlace PlaceOverlay(ArgumentUi kind, const RECT& box, const LayoutMetrics& metrics);

} // namespace metrify
