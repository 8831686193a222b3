#pragma once

#include <QPainterPath>

namespace kova {

/// A rectangle with continuous corners: an arc that cubic curves join to the edges so that the curvature
/// grows from nothing to the arc's without a step. Where the sides are too short for that, less of the corner
/// is smoothed, down to a plain arc.
QPainterPath continuousRectangle(const QRectF &rect, qreal radius);

} // namespace kova
