#pragma once

#include <QQuickItem>
#include <qqmlregistration.h>

namespace kova {

/// The soft dark shadow of a panel that covers this item: it falls around the item's edges, without an
/// offset.
class PanelShadow : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    /// How far the shadow is blurred, in logical pixels; nothing is left of it at 1.5 times that distance.
    Q_PROPERTY(qreal radius MEMBER m_radius NOTIFY changed REQUIRED)
    Q_PROPERTY(qreal cornerRadius MEMBER m_cornerRadius NOTIFY changed REQUIRED)

public:
    explicit PanelShadow(QQuickItem *parent = nullptr);

Q_SIGNALS:
    void changed();

protected:
    QSGNode *updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *data) override;
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;
    void itemChange(ItemChange change, const ItemChangeData &value) override;

private:
    qreal reach() const { return 1.5 * m_radius; }
    QImage patch(qreal devicePixelRatio) const;

    qreal m_radius = 0;
    qreal m_cornerRadius = 0;
};

} // namespace kova
