#pragma once

#include <QColor>
#include <QImage>

namespace kova {

/// Returns the size of a symbol that matches a font's pixel size, in whole logical pixels; empty for an
/// unknown name.
QSize symbolSize(const QString &name, qreal fontSize);

/// Returns the symbol in one colour, at symbolSize times the device pixel ratio; null for an unknown name.
QImage symbolImage(const QString &name, qreal fontSize, const QColor &color, qreal devicePixelRatio);

} // namespace kova
