#pragma once

#include <QColor>
#include <QList>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace pacelet {

/// A strip of time that shows when something was, the more the brighter.
class StripPlot : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    /// How much of each part of the time it took, 0 to 1.
    Q_PROPERTY(QList<qreal> shares MEMBER shares_ NOTIFY changed)
    Q_PROPERTY(QColor color MEMBER color_ NOTIFY changed)
    Q_PROPERTY(QColor ground MEMBER ground_ NOTIFY changed)
    /// The stretch that stands out, along the strip from 0 to 1; none where both are the same.
    Q_PROPERTY(qreal from MEMBER from_ NOTIFY changed)
    Q_PROPERTY(qreal to MEMBER to_ NOTIFY changed)

public:
    explicit StripPlot(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void changed();

private:
    QList<qreal> shares_;
    QColor color_;
    QColor ground_;
    qreal from_ = 0;
    qreal to_ = 0;
};

} // namespace pacelet
