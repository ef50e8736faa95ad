#pragma once

#include <QColor>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace pacelet {

/// A rounded rectangle whose edges lie on device pixels at any scale. Draws with the software
/// renderer only, and nothing with another.
class BoxPainter : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor fill MEMBER fill_ NOTIFY changed)
    Q_PROPERTY(QColor outline MEMBER outline_ NOTIFY changed)
    Q_PROPERTY(qreal outlineWidth MEMBER outlineWidth_ NOTIFY changed)
    Q_PROPERTY(qreal radius MEMBER radius_ NOTIFY changed)

public:
    explicit BoxPainter(QQuickItem* parent = nullptr);

Q_SIGNALS:
    void changed();

protected:
    QSGNode* updatePaintNode(QSGNode* old, UpdatePaintNodeData* data) override;

private:
    QColor fill_;
    QColor outline_;
    qreal outlineWidth_ = 0;
    qreal radius_ = 0;
};

} // namespace pacelet
