#pragma once

#include <QPainterPath>

namespace kova {

/// Returns a rectangle with continuous corners: cubic curves join an arc to the edges so that the curvature
/// grows from 0 to the arc's without a step. On short sides less of the corner is smoothed, down to a plain
/// arc.
QPainterPath continuousRectangle(const QRectF &rect, qreal radius);

} // namespace kova
