#include "PaceletApp/Components/BoxPainter.h"

#include <QPainter>
#include <QQuickWindow>
#include <QSGRenderNode>
#include <QSGRendererInterface>

#include <algorithm>
#include <cmath>

namespace pacelet {

namespace {

class BoxNode : public QSGRenderNode {
public:
    QQuickWindow* window = nullptr;
    QRectF box;
    QColor fill;
    QColor outline;
    qreal outlineWidth = 0;
    qreal radius = 0;

    StateFlags changedStates() const override { return {}; }
    RenderingFlags flags() const override { return BoundedRectRendering; }
    QRectF rect() const override { return box; }

    void render(const RenderState* state) override {
        auto* painter = static_cast<QPainter*>(window->rendererInterface()->getResource(
            window, QSGRendererInterface::PainterResource));
        if (painter == nullptr) {
            return;
        }
        const QRegion* clip = state->clipRegion();
        if (clip != nullptr && !clip->isEmpty()) {
            painter->setClipRegion(*clip, Qt::ReplaceClip);
        } else if (isClipped()) {
            return;
        }
        painter->setTransform(matrix()->toTransform());
        painter->setOpacity(inheritedOpacity());
        painter->setRenderHint(QPainter::Antialiasing);
        draw(*painter);
    }

private:
    /// An empty clip region stands for no clip at all as well as for one that leaves nothing to
    /// see.
    bool isClipped() const {
        const QSGNode* above = parent();
        while (above != nullptr && above->type() != QSGNode::ClipNodeType) {
            above = above->parent();
        }
        return above != nullptr;
    }

    /// Draws in device pixels: the edges are rounded to whole ones there, and the outline is as
    /// many whole ones thick as fit.
    void draw(QPainter& painter) const {
        const QTransform toDevice = painter.deviceTransform();
        if (toDevice.type() > QTransform::TxScale) {
            return;
        }
        const qreal scale = toDevice.m11();
        const QRectF edges = toDevice.mapRect(box);
        QRectF device{QPointF{std::round(edges.left()), std::round(edges.top())},
                      QPointF{std::round(edges.right()), std::round(edges.bottom())}};
        painter.setWorldTransform(toDevice.inverted() * painter.worldTransform());
        QPen pen{Qt::NoPen};
        qreal inset = 0;
        if (outlineWidth > 0) {
            const qreal width = std::max(1.0, std::floor(outlineWidth * scale));
            inset = width / 2;
            pen = QPen{outline, width};
        }
        painter.setPen(pen);
        painter.setBrush(fill);
        const qreal corner = std::min({radius * scale, device.width() / 2, device.height() / 2});
        device.adjust(inset, inset, -inset, -inset);
        painter.drawRoundedRect(device, corner - inset, corner - inset);
    }
};

} // namespace

BoxPainter::BoxPainter(QQuickItem* parent)
    : QQuickItem{parent} {
    setFlag(ItemHasContents);
    connect(this, &BoxPainter::changed, this, &QQuickItem::update);
}

QSGNode* BoxPainter::updatePaintNode(QSGNode* old, UpdatePaintNodeData*) {
    if (window()->rendererInterface()->graphicsApi() != QSGRendererInterface::Software) {
        delete old;
        return nullptr;
    }
    auto* node = old != nullptr ? static_cast<BoxNode*>(old) : new BoxNode;
    node->window = window();
    node->box = boundingRect();
    node->fill = fill_;
    node->outline = outline_;
    node->outlineWidth = outlineWidth_;
    node->radius = radius_;
    node->markDirty(QSGNode::DirtyMaterial);
    return node;
}

} // namespace pacelet
