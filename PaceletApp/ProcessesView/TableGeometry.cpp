#include "PaceletApp/ProcessesView/TableGeometry.h"

#include <algorithm>

namespace pacelet {

double TableGeometry::top(std::size_t row) const {
    return static_cast<double>(row) * rowHeight + (open && row > *open ? panelHeight : 0);
}

std::size_t TableGeometry::rowAt(double y) const {
    if (open && y >= top(*open)) {
        y = std::max(top(*open), y - panelHeight);
    }
    const double row = std::clamp(y / rowHeight, 0.0, static_cast<double>(count - 1));
    return static_cast<std::size_t>(row);
}

TableGeometry::Range TableGeometry::rowsBetween(double y, double length, std::size_t margin) const {
    if (count == 0) {
        return {};
    }
    const std::size_t first = rowAt(y);
    const std::size_t last = rowAt(y + length);
    return {first - std::min(first, margin), std::min(last + 1 + margin, count)};
}

double TableGeometry::clamped(double y, double viewHeight) const {
    return std::clamp(y, 0.0, std::max(0.0, height() - viewHeight));
}

} // namespace pacelet
