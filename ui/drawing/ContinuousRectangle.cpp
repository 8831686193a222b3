#include "ContinuousRectangle.h"

#include "continuousCorner.h"

#include <QPainter>
#include <QQuickWindow>
#include <QSGRenderNode>
#include <QSGRendererInterface>

namespace kova {

namespace {

// Draws with the painter of the software scene graph: sharp at every scale, without the memory of an image.
class Node : public QSGRenderNode {
public:
    explicit Node(QQuickWindow &window) : m_window(window) {}

    QRectF bounds;
    QPainterPath shape;
    QColor color;
    QPainterPath outline;
    QPen pen = Qt::NoPen;

    RenderingFlags flags() const override { return BoundedRectRendering; }
    // The scene graph aligns the repainted region to whole logical pixels, which clips edges at fractional
    // scales.
    QRectF rect() const override { return bounds.adjusted(-1, -1, 1, 1); }

    void render(const RenderState *state) override {
        auto *painter = static_cast<QPainter *>(
            m_window.rendererInterface()->getResource(&m_window, QSGRendererInterface::PainterResource));
        if (!painter) {
            return;
        }
        painter->setClipRegion(*state->clipRegion(), Qt::ReplaceClip); // an empty region clips everything
        painter->setTransform(matrix()->toTransform());
        painter->setOpacity(inheritedOpacity());
        painter->setRenderHint(QPainter::Antialiasing);
        painter->fillPath(shape, color);
        if (pen != Qt::NoPen) {
            painter->strokePath(outline, pen);
        }
    }

private:
    QQuickWindow &m_window;
};

} // namespace

ContinuousRectangle::ContinuousRectangle(QQuickItem *parent) : QQuickItem(parent) {
    setFlag(ItemHasContents);
    connect(this, &ContinuousRectangle::changed, this, &QQuickItem::update);
}

QPen ContinuousRectangle::pen() const {
    if (m_borderWidth <= 0 || m_borderColor.alpha() == 0) {
        return Qt::NoPen;
    }
    QPen pen(m_borderColor, m_borderWidth);
    pen.setCapStyle(Qt::FlatCap);
    if (m_dashLength > 0) {
        pen.setDashPattern({m_dashLength / m_borderWidth, m_dashLength / m_borderWidth});
    }
    return pen;
}

QSGNode *ContinuousRectangle::updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *) {
    const QPen pen = this->pen();
    if (width() <= 0 || height() <= 0 || (m_color.alpha() == 0 && pen == Qt::NoPen)) {
        delete oldNode;
        return nullptr;
    }
    auto *node = static_cast<Node *>(oldNode);
    if (!node) {
        node = new Node(*window());
    }
    const qreal inset = m_borderWidth / 2;
    node->bounds = boundingRect();
    node->shape = continuousRectangle(node->bounds, m_radius);
    node->color = m_color;
    node->pen = pen;
    node->outline =
        continuousRectangle(node->bounds.adjusted(inset, inset, -inset, -inset), m_radius - inset);
    node->markDirty(QSGNode::DirtyGeometry | QSGNode::DirtyMaterial);
    return node;
}

} // namespace kova
