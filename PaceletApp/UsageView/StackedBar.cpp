#include "PaceletApp/UsageView/StackedBar.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace pacelet {

namespace {

/// Between two parts, the ground shows through.
constexpr qreal gap = 1;

} // namespace

StackedBar::StackedBar(QQuickItem* parent)
    : QQuickPaintedItem{parent} {
    connect(this, &StackedBar::changed, this, [this] { update(); });
}

void StackedBar::paint(QPainter* painter) {
    painter->setRenderHint(QPainter::Antialiasing);
    QPainterPath outline;
    outline.addRoundedRect(boundingRect(), radius_, radius_);
    qreal left = 0;
    for (qsizetype part = 0; part < std::min(shares_.size(), colors_.size()); ++part) {
        const qreal right = left + shares_[part] * width();
        const bool last = right >= width() - gap;
        QPainterPath piece;
        piece.addRect(QRectF{left, 0, std::max(0.0, right - left - (last ? 0 : gap)), height()});
        // Filling what both have in common gives smooth corners, which clipping would not.
        painter->fillPath(outline.intersected(piece), colors_[part]);
        left = right;
    }
}

} // namespace pacelet
