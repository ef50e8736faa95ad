#pragma once

#include "PaceletApp/UsageView/UsageCharts.h"

#include <QColor>
#include <QProperty>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace pacelet {

/// Draws the bars of a chart, and tells of one of them.
class BarPlot : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(pacelet::BarChart chart READ chart WRITE setChart NOTIFY chartChanged)
    Q_PROPERTY(QColor color MEMBER color_ NOTIFY colorChanged)
    /// The bar that stands out while none is marked; -1 for none.
    Q_PROPERTY(int chosen MEMBER chosen_ NOTIFY chosenChanged)
    /// The bar that is told of; -1 for none.
    Q_PROPERTY(int marked READ marked WRITE setMarked NOTIFY markedChanged)
    Q_PROPERTY(QString value READ value NOTIFY markedChanged)
    Q_PROPERTY(QString time READ time NOTIFY markedChanged)
    /// The marked bar in one sentence.
    Q_PROPERTY(QString description READ description NOTIFY markedChanged)
    /// The middle of its upper edge.
    Q_PROPERTY(QPointF tip READ tip NOTIFY markedChanged)

public:
    explicit BarPlot(QQuickItem* parent = nullptr);

    const BarChart& chart() const { return chart_; }
    /// The mark stays on the bar of the same time.
    void setChart(BarChart chart);
    int marked() const { return marked_.value(); }
    /// A place beyond the last bar means the last one, one before the first means none.
    void setMarked(int place);
    QString value() const;
    QString time() const;
    QString description() const;
    QPointF tip() const;

    /// The bar whose time is at this distance from the left edge, whatever its height; -1 for none.
    Q_INVOKABLE int barAt(qreal x) const;

    /// Moves the mark by so many bars; from none to the first or the last.
    Q_INVOKABLE void moveMark(int bars);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void chartChanged();
    void colorChanged();
    void chosenChanged();
    void markedChanged();

private:
    const ChartBar* markedBar() const;
    QRectF edges(const ChartBar& bar) const;

    BarChart chart_;
    QColor color_;
    int chosen_ = -1;
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(BarPlot, int, marked_, -1, &BarPlot::markedChanged)
};

} // namespace pacelet
