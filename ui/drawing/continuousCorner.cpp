#include "continuousCorner.h"

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

} // namespace kova
