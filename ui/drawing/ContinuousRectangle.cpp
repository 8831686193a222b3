#include "ContinuousRectangle.h"

#include <QPainter>
#include <QQuickWindow>
#include <QSGRenderNode>
#include <QSGRendererInterface>
#include <QTransform>
#include <QtMath>
#include <algorithm>

namespace kova {

namespace {

// One corner of radius 1, described by t, the tangent of half the angle that each cubic turns. The arc's
// tangent at its end meets the edge at 1 - t, the cubic's inner control point. Its curvature at the arc's end
// is that of the arc if the next control point is 3/4 t (1 + t²) further from the corner. The outer control
// points are on the edge too, so that the curvature is 0 there; with twice that distance it grows evenly.
constexpr qreal fullSmoothing = 0.24;

constexpr qreal step(qreal t) {
    return 0.75 * t * (1 + t * t);
}

constexpr qreal extent(qreal t) {
    return 1 - t + 3 * step(t);
}

// The corner between the x and the y axis, starting at the x axis, for a radius of 1.
void addCorner(QPainterPath &path, const QTransform &placed, qreal t) {
    const qreal angle = 2 * std::atan(t);
    const QPointF arcStart(1 - std::sin(angle), 1 - std::cos(angle));
    const QPointF arcEnd(arcStart.y(), arcStart.x());
    const QPointF inner(1 - t, 0);
    const QPointF next(1 - t + step(t), 0);
    const QPointF outer(extent(t), 0);
    const auto mirrored = [](QPointF point) { return point.transposed(); };

    path.lineTo(placed.map(outer));
    path.cubicTo(placed.map(next), placed.map(inner), placed.map(arcStart));
    const qreal remaining = M_PI_2 - 2 * angle;
    const qreal handle = 4.0 / 3.0 * std::tan(remaining / 4);
    const QPointF along(-std::cos(angle) * handle, std::sin(angle) * handle);
    path.cubicTo(placed.map(arcStart + along), placed.map(arcEnd + mirrored(along)), placed.map(arcEnd));
    path.cubicTo(placed.map(mirrored(inner)), placed.map(mirrored(next)), placed.map(mirrored(outer)));
}

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

QPainterPath continuousRectangle(const QRectF &rect, qreal radius) {
    const qreal room = std::min(rect.width(), rect.height()) / 2;
    const qreal r = std::min(radius, room);
    QPainterPath path;
    if (r <= 0) {
        path.addRect(rect);
        return path;
    }
    // In proportion to the room beside the arc, which is enough since the extent is convex.
    const qreal t = fullSmoothing * std::min(1.0, (room / r - 1) / (extent(fullSmoothing) - 1));
    // The axes of each corner: the first along the edge on which the path arrives.
    path.moveTo(rect.left() + r * extent(t), rect.top());
    addCorner(path, QTransform(-r, 0, 0, r, rect.right(), rect.top()), t);
    addCorner(path, QTransform(0, -r, -r, 0, rect.right(), rect.bottom()), t);
    addCorner(path, QTransform(r, 0, 0, -r, rect.left(), rect.bottom()), t);
    addCorner(path, QTransform(0, r, r, 0, rect.left(), rect.top()), t);
    path.closeSubpath();
    return path;
}

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
