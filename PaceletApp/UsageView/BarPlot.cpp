#include "PaceletApp/UsageView/BarPlot.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <utility>

namespace pacelet {

namespace {

/// Share of its time that a bar fills; the rest is the gap to the next.
constexpr qreal fill = 0.74;
constexpr qreal mostRadius = 3;
/// What was measured as nothing still shows that it was measured.
constexpr qreal leastHeight = 1.5;
constexpr qreal opacityBesideMark = 0.4;

qreal snapped(qreal length, qreal scale) {
    return std::round(length * scale) / scale;
}

/// Rounded at its top, square where it stands.
QPainterPath shape(const QRectF& bar) {
    const qreal radius = std::min({mostRadius, bar.width() / 3, bar.height()});
    QPainterPath path;
    path.moveTo(bar.bottomLeft());
    path.lineTo(bar.left(), bar.top() + radius);
    path.quadTo(bar.topLeft(), {bar.left() + radius, bar.top()});
    path.lineTo(bar.right() - radius, bar.top());
    path.quadTo(bar.topRight(), {bar.right(), bar.top() + radius});
    path.lineTo(bar.bottomRight());
    return path;
}

} // namespace

BarPlot::BarPlot(QQuickItem* parent)
    : QQuickPaintedItem{parent} {
    for (const auto signal : {&BarPlot::chartChanged, &BarPlot::colorChanged,
                              &BarPlot::chosenChanged, &BarPlot::markedChanged}) {
        connect(this, signal, this, [this] { update(); });
    }
}

void BarPlot::setChart(BarChart chart) {
    if (chart == chart_) {
        return;
    }
    const ChartBar* const old = markedBar();
    const QString time = old != nullptr ? old->time : QString{};
    chart_ = std::move(chart);
    const auto same = std::ranges::find(chart_.bars, time, &ChartBar::time);
    marked_ = same == chart_.bars.end() ? -1 : static_cast<int>(same - chart_.bars.begin());
    Q_EMIT chartChanged();
    Q_EMIT markedChanged();
}

void BarPlot::setMarked(int place) {
    marked_ = std::clamp(place, -1, static_cast<int>(chart_.bars.size()) - 1);
}

const ChartBar* BarPlot::markedBar() const {
    return marked_ >= 0 ? &chart_.bars[static_cast<std::size_t>(marked_.value())] : nullptr;
}

QString BarPlot::value() const {
    const ChartBar* const bar = markedBar();
    return bar != nullptr ? bar->value : QString{};
}

QString BarPlot::time() const {
    const ChartBar* const bar = markedBar();
    return bar != nullptr ? bar->time : QString{};
}

QString BarPlot::description() const {
    const ChartBar* const bar = markedBar();
    return bar != nullptr
               ? QStringLiteral("Time: %1, %2: %3").arg(bar->time, chart_.label, bar->value)
               : QString{};
}

QPointF BarPlot::tip() const {
    const ChartBar* const bar = markedBar();
    if (bar == nullptr) {
        return {};
    }
    const QRectF box = edges(*bar);
    return {box.center().x(), box.top()};
}

int BarPlot::barAt(qreal x) const {
    const auto found = std::ranges::find_if(chart_.bars, [&](const ChartBar& bar) {
        return x >= bar.left * width() && x < bar.right * width();
    });
    return found == chart_.bars.end() ? -1 : static_cast<int>(found - chart_.bars.begin());
}

void BarPlot::moveMark(int bars) {
    const int count = static_cast<int>(chart_.bars.size());
    const int from = marked_ >= 0 ? marked_.value() : bars > 0 ? -1 : count;
    setMarked(std::max(0, from + bars));
}

QRectF BarPlot::edges(const ChartBar& bar) const {
    const qreal slot = (bar.right - bar.left) * width();
    const qreal center = (bar.left + bar.right) / 2 * width();
    const qreal tall = std::max(leastHeight, bar.height * height());
    return {center - slot * fill / 2, height() - tall, slot * fill, tall};
}

void BarPlot::paint(QPainter* painter) {
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(color_);
    const qreal scale = painter->deviceTransform().m11();
    const int outstanding = marked_ >= 0 ? marked_.value() : chosen_;
    for (std::size_t place = 0; place < chart_.bars.size(); ++place) {
        const QRectF box = edges(chart_.bars[place]);
        const qreal left = snapped(box.left(), scale);
        const qreal right = std::max(left + 1 / scale, snapped(box.right(), scale));
        const bool beside = outstanding >= 0 && static_cast<std::size_t>(outstanding) != place;
        painter->setOpacity(beside ? opacityBesideMark : 1);
        painter->drawPath(shape({QPointF{left, box.top()}, QPointF{right, box.bottom()}}));
    }
}

} // namespace pacelet
