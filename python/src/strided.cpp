#include "strided.h"

#include <algorithm>
#include <cstdlib>

namespace metrify_python {

std::vector<axis> simplified(std::vector<axis> axes) {
    std::erase_if(
        axes, [](const axis& a) { return a.length == 1; });
    std::stable_sort(axes.begin(), axes.end(), [](const axis& a, const axis& b) {
        return std::abs(a.to_stride) > std::abs(b.to_stride);
    });
    std::vector<axis> joined;
    for (const axis& inner : axes)
        if (!joined.empty() && joined.back().from_stride == inner.from_stride * inner.length &&
            joined.back().to_stride == inner.to_stride * inner.length)
            joined.back() = {joined.back().length * inner.length, inner.from_stride, inner.to_stride};
        else
            joined.push_back(inner);
    if (joined.empty())
        joined.push_back({1, sizeof(double), sizeof(double)});
    return joined;
}

void for_each_row(const std::vector<axis>& axes,
                  const std::function<void(std::ptrdiff_t, std::ptrdiff_t)>& row) {
    std::vector<std::ptrdiff_t> place(axes.size() - 1, 0);
    std::ptrdiff_t from = 0;
    std::ptrdiff_t to = 0;
    while (true) {
        row(from, to);
        // The next row, like the next number of a counter whose last digit changes first.
        std::size_t i = place.size();
        while (i > 0 && ++place[i - 1] == axes[i - 1].length) {
            --i;
            place[i] = 0;
            from -= axes[i].from_stride * (axes[i].length - 1);
            to -= axes[i].to_stride * (axes[i].length - 1);
        }
        if (i == 0)
            return;
        from += axes[i - 1].from_stride;
        to += axes[i - 1].to_stride;
    }
}

} // namespace metrify_python
