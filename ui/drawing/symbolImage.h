#pragma once

#include <QColor>
#include <QImage>

namespace kova {

/// The extent of a symbol that stands beside text of a font size, in whole logical pixels; empty for an
/// unknown name.
QSize symbolSize(const QString &name, qreal fontSize);

/// The symbol in one colour, at symbolSize times the device pixel ratio; null for an unknown name.
QImage symbolImage(const QString &name, qreal fontSize, const QColor &color, qreal devicePixelRatio);

} // namespace kova
