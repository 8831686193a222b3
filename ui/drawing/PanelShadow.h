#pragma once

#include <QColor>
#include <QQuickItem>
#include <qqmlregistration.h>

namespace kova {

/// The soft shadow of a panel that covers this item: it falls around the item's edges, without an offset.
class PanelShadow : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY colorChanged REQUIRED)
    /// How far the shadow is blurred, in logical pixels; nothing is left of it at 1.5 times that distance.
    Q_PROPERTY(qreal radius MEMBER m_radius NOTIFY radiusChanged REQUIRED)
    Q_PROPERTY(qreal cornerRadius MEMBER m_cornerRadius NOTIFY cornerRadiusChanged REQUIRED)

public:
    explicit PanelShadow(QQuickItem *parent = nullptr);

Q_SIGNALS:
    void colorChanged();
    void radiusChanged();
    void cornerRadiusChanged();

protected:
    QSGNode *updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *data) override;
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;
    void itemChange(ItemChange change, const ItemChangeData &value) override;

private:
    qreal reach() const { return 1.5 * m_radius; }
    QImage patch(qreal devicePixelRatio) const;

    QColor m_color;
    qreal m_radius = 0;
    qreal m_cornerRadius = 0;
};

} // namespace kova
