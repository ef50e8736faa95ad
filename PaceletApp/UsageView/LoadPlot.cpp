#include "PaceletApp/UsageView/LoadPlot.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>

#include <algorithm>

namespace pacelet {

namespace {

constexpr qreal lineWidth = 1.75;
constexpr qreal dotRadius = 2.5;
constexpr double topOpacity = 0.5;
constexpr double bottomOpacity = 0.05;

QColor faded(QColor color, double opacity) {
    color.setAlphaF(static_cast<float>(opacity));
    return color;
}

void drawArea(QPainter& painter, const QPolygonF& line, const QColor& color, qreal bottom) {
    qreal top = bottom;
    for (const QPointF& point : line) {
        top = std::min(top, point.y());
    }
    QLinearGradient gradient{0, top, 0, bottom};
    gradient.setColorAt(0, faded(color, topOpacity));
    gradient.setColorAt(1, faded(color, bottomOpacity));
    QPolygonF area = line;
    area << QPointF{line.back().x(), bottom} << QPointF{line.front().x(), bottom};
    painter.setPen(Qt::NoPen);
    painter.setBrush(gradient);
    painter.drawPolygon(area);
}

} // namespace

LoadPlot::LoadPlot(QQuickItem* parent)
    : QQuickPaintedItem{parent} {
    connect(this, &LoadPlot::changed, this, [this] { update(); });
}

void LoadPlot::paint(QPainter* painter) {
    if (curve_.points.empty()) {
        return;
    }
    // The line has a thickness; at 0 and at 100 it stays inside.
    const qreal inset = lineWidth / 2;
    const qreal bottom = height() - inset;
    QPolygonF line;
    for (const QPointF& point : curve_.points) {
        line << QPointF{point.x() * (width() - inset), bottom - point.y() * (bottom - inset)};
    }
    painter->setRenderHint(QPainter::Antialiasing);
    if (line.size() == 1) {
        painter->setPen(Qt::NoPen);
        painter->setBrush(color_);
        painter->drawEllipse(line.front() - QPointF{dotRadius, 0}, dotRadius, dotRadius);
        return;
    }
    drawArea(*painter, line, color_, height());
    painter->setBrush(Qt::NoBrush);
    painter->setPen(QPen{color_, lineWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin});
    painter->drawPolyline(line);
}

} // namespace pacelet
