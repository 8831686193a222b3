#include "symbolImage.h"

#include <QHash>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

namespace kova {

namespace {

// The drawings fill a square of 20 × 20 units, 1.25 times as high as the font.
constexpr qreal heightPerFontSize = 1.25;

QString drawing(const QString &name) {
    return QStringLiteral(":/symbols/%1.svg").arg(name);
}

QSize scaled(const QSizeF &viewBox, qreal fontSize) {
    const qreal height = std::round(fontSize * heightPerFontSize);
    return viewBox.isEmpty()
               ? QSize()
               : QSizeF(std::round(height * viewBox.width() / viewBox.height()), height).toSize();
}

} // namespace

// Caches the measures of each drawing.
QSize symbolSize(const QString &name, qreal fontSize) {
    static QHash<QString, QSizeF> extents;
    auto extent = extents.constFind(name);
    if (extent == extents.cend()) {
        const QSvgRenderer renderer(drawing(name));
        extent = extents.insert(name, renderer.isValid() ? renderer.viewBoxF().size() : QSizeF());
    }
    return scaled(*extent, fontSize);
}

QImage symbolImage(const QString &name, qreal fontSize, const QColor &color, qreal devicePixelRatio) {
    const QString key = QStringLiteral("symbol %1 %2 %3 %4")
                            .arg(name)
                            .arg(fontSize)
                            .arg(color.rgba(), 0, 16)
                            .arg(devicePixelRatio);
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap)) {
        return pixmap.toImage();
    }
    QSvgRenderer renderer(drawing(name));
    if (!renderer.isValid()) {
        return {};
    }
    const QSizeF size = QSizeF(scaled(renderer.viewBoxF().size(), fontSize)) * devicePixelRatio;
    QImage image(size.toSize(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    renderer.render(&painter, QRectF(QPointF(), QSizeF(image.size())));
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), color);
    painter.end();
    QPixmapCache::insert(key, QPixmap::fromImage(image));
    return image;
}

} // namespace kova
