#include "Symbol.h"

#include <QHash>
#include <QPainter>
#include <QPixmapCache>
#include <QQuickWindow>
#include <QSGImageNode>
#include <QSvgRenderer>

namespace kova {

namespace {

// The drawings fill a square of 20 × 20 units, 1.25 times as high as the font.
constexpr qreal heightPerFontSize = 1.25;

QString drawing(const QString &name) {
    return QStringLiteral(":/symbols/%1.svg").arg(name);
}

} // namespace

// Caches the aspect ratio of each drawing.
QSize symbolSize(const QString &name, qreal fontSize) {
    static QHash<QString, qreal> ratios;
    auto ratio = ratios.constFind(name);
    if (ratio == ratios.cend()) {
        const QSizeF box = QSvgRenderer(drawing(name)).viewBoxF().size();
        ratio = ratios.insert(name, box.isEmpty() ? 0 : box.width() / box.height());
    }
    const qreal height = std::round(fontSize * heightPerFontSize);
    return *ratio > 0 ? QSizeF(std::round(height * *ratio), height).toSize() : QSize();
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
    const QSizeF size = QSizeF(symbolSize(name, fontSize)) * devicePixelRatio;
    if (size.isEmpty()) {
        return {};
    }
    QImage image(size.toSize(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QSvgRenderer(drawing(name)).render(&painter, QRectF(QPointF(), QSizeF(image.size())));
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), color);
    painter.end();
    QPixmapCache::insert(key, QPixmap::fromImage(image));
    return image;
}

Symbol::Symbol(QQuickItem *parent) : QQuickItem(parent) {
    setFlag(ItemHasContents);
    connect(this, &Symbol::changed, this, &Symbol::updateImplicitSize);
}

void Symbol::updateImplicitSize() {
    if (!m_name.isEmpty()) {
        const QSize size = symbolSize(m_name, m_size);
        setImplicitSize(size.width(), size.height());
        update();
    }
}

// Centres the drawing in the item without scaling it.
QSGNode *Symbol::updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *) {
    const qreal devicePixelRatio = window()->effectiveDevicePixelRatio();
    const QImage image = symbolImage(m_name, m_size, m_color, devicePixelRatio);
    if (image.isNull()) {
        delete oldNode;
        return nullptr;
    }
    auto *node = static_cast<QSGImageNode *>(oldNode);
    if (!node) {
        node = window()->createImageNode();
        node->setOwnsTexture(true);
        node->setFiltering(QSGTexture::Linear);
    }
    node->setTexture(window()->createTextureFromImage(image, QQuickWindow::TextureHasAlphaChannel));
    const QSizeF size = QSizeF(image.size()) / devicePixelRatio;
    node->setRect(QRectF(
        QPointF(std::round((width() - size.width()) / 2), std::round((height() - size.height()) / 2)), size));
    return node;
}

void Symbol::itemChange(ItemChange change, const ItemChangeData &value) {
    if (change == ItemDevicePixelRatioHasChanged) {
        update();
    }
    QQuickItem::itemChange(change, value);
}

} // namespace kova
