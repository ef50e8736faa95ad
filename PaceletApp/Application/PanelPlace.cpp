#include "PaceletApp/Application/PanelPlace.h"

#include <algorithm>

namespace pacelet {

namespace {

/// Between the panel and what it belongs to.
constexpr int gap = 6;

/// The part of the screen where a panel may begin, so that all of it is seen. A panel that does not
/// fit begins with the screen.
int clamped(int place, int begin, int room, int length) {
    return std::max(begin, std::min(place, begin + room - length));
}

} // namespace

QPoint panelPlace(const QRect& icon, QPoint pointer, QSize size, const QRect& available) {
    const QRect anchor = icon.isEmpty() ? QRect{pointer, QSize{1, 1}} : icon;
    const QPoint middle = anchor.center();
    // An icon has the panel under or over its middle; a pointer touches the panel's near corner.
    int x = middle.x() - size.width() / 2;
    if (icon.isEmpty()) {
        x = middle.x() < available.center().x() ? middle.x() : middle.x() - size.width();
    }
    const bool isInUpperHalf = middle.y() < available.center().y();
    const int y =
        isInUpperHalf ? anchor.y() + anchor.height() + gap : anchor.y() - gap - size.height();
    return {clamped(x, available.x(), available.width(), size.width()),
            clamped(y, available.y(), available.height(), size.height())};
}

} // namespace pacelet
