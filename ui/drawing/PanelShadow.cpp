#include "PanelShadow.h"

#include "continuousCorner.h"

#include <QPainter>
#include <QPixmapCache>
#include <QQuickWindow>
#include <QSGNinePatchNode>

#include <vector>

namespace kova {

namespace {

constexpr qreal cornerExtent = 1.6; // how far a continuous corner reaches along the edges, in radii

// Averages each pixel with its neighbours along lines of `count` pixels that are `step` bytes apart.
void boxBlur(uchar *line, qsizetype count, qsizetype step, int halfWidth) {
    std::vector<int> sums(size_t(count) + 1, 0);
    for (qsizetype i = 0; i < count; ++i) {
        sums[size_t(i) + 1] = sums[size_t(i)] + line[i * step];
    }
    const int width = 2 * halfWidth + 1;
    for (qsizetype i = 0; i < count; ++i) {
        const qsizetype first = std::max<qsizetype>(i - halfWidth, 0);
        const qsizetype end = std::min<qsizetype>(i + halfWidth + 1, count);
        line[i * step] = uchar((sums[size_t(end)] - sums[size_t(first)]) / width);
    }
}

// Three boxes come close to a Gaussian of this standard deviation.
void blur(QImage &image, qreal deviation) {
    const int halfWidth = std::max(1, qRound((std::sqrt(4 * deviation * deviation + 1) - 1) / 2));
    for (int pass = 0; pass < 3; ++pass) {
        for (int y = 0; y < image.height(); ++y) {
            boxBlur(image.scanLine(y), image.width(), 1, halfWidth);
        }
        for (int x = 0; x < image.width(); ++x) {
            boxBlur(image.bits() + x, image.height(), image.bytesPerLine(), halfWidth);
        }
    }
}

} // namespace

PanelShadow::PanelShadow(QQuickItem *parent) : QQuickItem(parent) {
    setFlag(ItemHasContents);
    connect(this, &PanelShadow::changed, this, &QQuickItem::update);
}

QSGNode *PanelShadow::updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *) {
    if (width() <= 0 || height() <= 0 || m_radius <= 0) {
        delete oldNode;
        return nullptr;
    }
    auto *const node = oldNode ? static_cast<QSGNinePatchNode *>(oldNode) : window()->createNinePatchNode();
    const qreal ratio = window()->effectiveDevicePixelRatio();
    const QImage image = patch(ratio);
    const qreal margin = (image.width() / ratio - 1) / 2;
    node->setTexture(window()->createTextureFromImage(image));
    node->setBounds(boundingRect().adjusted(-reach(), -reach(), reach(), reach()));
    node->setDevicePixelRatio(ratio);
    node->setPadding(margin, margin, margin, margin);
    node->update();
    return node;
}

void PanelShadow::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) {
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    update();
}

void PanelShadow::itemChange(ItemChange change, const ItemChangeData &value) {
    if (change == ItemDevicePixelRatioHasChanged) {
        update();
    }
    QQuickItem::itemChange(change, value);
}

// The smallest shadow whose middle can be stretched.
QImage PanelShadow::patch(qreal devicePixelRatio) const {
    const QString key =
        QStringLiteral("shadow %1 %2 %3").arg(m_radius).arg(m_cornerRadius).arg(devicePixelRatio);
    if (QPixmap cached; QPixmapCache::find(key, &cached)) {
        return cached.toImage();
    }
    const qreal inside = reach() + cornerExtent * m_cornerRadius;
    const int size = 2 * qCeil((reach() + inside) * devicePixelRatio) + qCeil(devicePixelRatio);
    QImage coverage(size, size, QImage::Format_Alpha8);
    coverage.fill(0);
    QPainter painter(&coverage);
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal edge = reach() * devicePixelRatio;
    painter.fillPath(continuousRectangle(QRectF(edge, edge, size - 2 * edge, size - 2 * edge),
                                         m_cornerRadius * devicePixelRatio),
                     Qt::black);
    painter.end();
    blur(coverage, m_radius / 2 * devicePixelRatio);

    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(QColor(0, 0, 0, 128));
    painter.begin(&image);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.drawImage(0, 0, coverage);
    painter.end();
    QPixmapCache::insert(key, QPixmap::fromImage(image));
    return image;
}

} // namespace kova
