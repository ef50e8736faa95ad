#pragma once

#include <QColor>
#include <QList>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace pacelet {

/// A rounded bar of coloured parts, side by side.
class StackedBar : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    /// Of the bar's width, 0 to 1; one a part, from left to right.
    Q_PROPERTY(QList<qreal> shares MEMBER shares_ NOTIFY changed)
    /// One a part.
    Q_PROPERTY(QList<QColor> colors MEMBER colors_ NOTIFY changed)
    Q_PROPERTY(qreal radius MEMBER radius_ NOTIFY changed)

public:
    explicit StackedBar(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void changed();

private:
    QList<qreal> shares_;
    QList<QColor> colors_;
    qreal radius_ = 0;
};

} // namespace pacelet
