#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

namespace pacelet {

/// Where a panel of this size opens on a screen whose free part is `available`: beside the tray's
/// `icon`, on the side that has the room; or, where the tray does not tell its place and `icon` is
/// empty, with a corner at the `pointer`. All in the coordinates of the desktop.
QPoint panelPlace(const QRect& icon, QPoint pointer, QSize size, const QRect& available);

} // namespace pacelet
