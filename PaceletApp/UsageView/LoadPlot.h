#pragma once

#include "PaceletApp/UsageView/UsageCharts.h"

#include <QColor>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace pacelet {

/// Draws the load as a line over an area that fades out below it.
class LoadPlot : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(pacelet::LoadCurve curve MEMBER curve_ NOTIFY changed)
    Q_PROPERTY(QColor color MEMBER color_ NOTIFY changed)

public:
    explicit LoadPlot(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void changed();

private:
    LoadCurve curve_;
    QColor color_;
};

} // namespace pacelet
