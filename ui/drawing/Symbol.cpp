#include "Symbol.h"

#include "symbolImage.h"

#include <QQuickWindow>
#include <QSGImageNode>

namespace kova {

Symbol::Symbol(QQuickItem *parent) : QQuickItem(parent) {
    setFlag(ItemHasContents);
    connect(this, &Symbol::changed, this, &Symbol::follow);
}

void Symbol::follow() {
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
