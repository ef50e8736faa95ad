#include "PaceletApp/UsageView/StripPlot.h"

#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace pacelet {

namespace {

constexpr qreal cornerRadius = 3;
/// What took hardly any of its time is still seen.
constexpr qreal leastOpacity = 0.4;
constexpr qreal opacityBeside = 0.3;

} // namespace

StripPlot::StripPlot(QQuickItem* parent)
    : QQuickPaintedItem{parent} {
    connect(this, &StripPlot::changed, this, [this] { update(); });
}

void StripPlot::paint(QPainter* painter) {
    painter->setRenderHint(QPainter::Antialiasing);
    QPainterPath outline;
    outline.addRoundedRect(boundingRect(), cornerRadius, cornerRadius);
    painter->fillPath(outline, ground_);
    const qreal scale = painter->deviceTransform().m11();
    const auto edge = [&](qsizetype part) {
        const qreal place = static_cast<qreal>(part) / static_cast<qreal>(shares_.size());
        return std::round(place * width() * scale) / scale;
    };
    for (qsizetype part = 0; part < shares_.size(); ++part) {
        if (shares_[part] <= 0) {
            continue;
        }
        const qreal middle = (static_cast<qreal>(part) + 0.5) / static_cast<qreal>(shares_.size());
        const bool isBeside = from_ < to_ && (middle < from_ || middle >= to_);
        QPainterPath piece;
        piece.addRect(QRectF{QPointF{edge(part), 0}, QPointF{edge(part + 1), height()}});
        const qreal opacity = leastOpacity + (1 - leastOpacity) * shares_[part];
        painter->setOpacity(opacity * (isBeside ? opacityBeside : 1));
        painter->fillPath(outline.intersected(piece), color_);
    }
}

} // namespace pacelet
