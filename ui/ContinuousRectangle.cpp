#include "ContinuousRectangle.h"

#include "continuousCorner.h"

#include <QPainter>
#include <QPixmapCache>
#include <QQuickWindow>
#include <QSGNinePatchNode>
#include <QtMath>
#include <memory>

namespace kova {

namespace {

// The nine-patch node doesn't own its texture.
struct Node : QSGNode {
    explicit Node(QQuickWindow &window) : patch(window.createNinePatchNode()) { appendChildNode(patch); }

    std::unique_ptr<QSGTexture> texture;
    QSGNinePatchNode *const patch;
};

} // namespace

ContinuousRectangle::ContinuousRectangle(QQuickItem *parent) : QQuickItem(parent) {
    setFlag(ItemHasContents);
}

bool ContinuousRectangle::isVisiblyEmpty() const {
    return width() <= 0 || height() <= 0 || (m_color.alpha() == 0 && !hasBorder());
}

// The corners are drawn once into a small picture whose middle row and column are stretched, so that a large
// surface costs no memory. Dashes can't be stretched: they take a picture of the whole size.
QSGNode *ContinuousRectangle::updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *) {
    if (isVisiblyEmpty()) {
        delete oldNode;
        return nullptr;
    }
    auto *node = static_cast<Node *>(oldNode);
    if (!node) {
        node = new Node(*window());
    }
    const bool isDashed = hasBorder() && m_dashLength > 0;
    const qreal room = std::min(width(), height()) / 2;
    const qreal corner = std::ceil(std::max(continuousCornerExtent(m_radius, room), m_borderWidth));
    const qreal smallest = 2 * corner + 1;
    const bool isStretched = !isDashed && (width() > smallest || height() > smallest);
    const QSizeF size =
        isDashed ? this->size() : QSizeF(std::min(width(), smallest), std::min(height(), smallest));
    const qreal devicePixelRatio = window()->effectiveDevicePixelRatio();

    node->texture.reset(window()->createTextureFromImage(picture(size, devicePixelRatio),
                                                         QQuickWindow::TextureHasAlphaChannel));
    node->patch->setTexture(node->texture.get());
    node->patch->setBounds(boundingRect());
    node->patch->setDevicePixelRatio(devicePixelRatio);
    const qreal padX =
        isStretched ? std::min(corner, std::floor((size.width() - 1) / 2)) * devicePixelRatio : 0;
    const qreal padY =
        isStretched ? std::min(corner, std::floor((size.height() - 1) / 2)) * devicePixelRatio : 0;
    node->patch->setPadding(padX, padY, padX, padY);
    node->patch->update();
    return node;
}

// Equal surfaces share one picture.
QImage ContinuousRectangle::picture(const QSizeF &size, qreal devicePixelRatio) const {
    const qreal room = std::min(width(), height()) / 2;
    const QString key = QStringLiteral("ContinuousRectangle %1 %2 %3 %4 %5 %6 %7 %8 %9")
                            .arg(size.width())
                            .arg(size.height())
                            .arg(devicePixelRatio)
                            .arg(m_radius)
                            .arg(continuousCornerExtent(m_radius, room))
                            .arg(m_color.rgba())
                            .arg(hasBorder() ? m_borderColor.rgba() : 0)
                            .arg(hasBorder() ? m_borderWidth : 0)
                            .arg(m_dashLength);
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap)) {
        return pixmap.toImage();
    }
    QImage image(QSize(qCeil(size.width() * devicePixelRatio), qCeil(size.height() * devicePixelRatio)),
                 QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(devicePixelRatio, devicePixelRatio);
    const QRectF rect(QPointF(), size);
    painter.fillPath(continuousRectangle(rect, m_radius), m_color);
    if (hasBorder()) {
        QPen pen(m_borderColor, m_borderWidth);
        if (m_dashLength > 0) {
            const qreal dash = m_dashLength / m_borderWidth;
            pen.setDashPattern({dash, dash});
            pen.setCapStyle(Qt::FlatCap);
        }
        const qreal inset = m_borderWidth / 2;
        painter.strokePath(
            continuousRectangle(rect.adjusted(inset, inset, -inset, -inset), std::max(m_radius - inset, 0.0)),
            pen);
    }
    painter.end();
    QPixmapCache::insert(key, QPixmap::fromImage(image));
    return image;
}

void ContinuousRectangle::itemChange(ItemChange change, const ItemChangeData &value) {
    if (change == ItemDevicePixelRatioHasChanged) {
        update();
    }
    QQuickItem::itemChange(change, value);
}

} // namespace kova
