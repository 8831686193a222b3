#pragma once

#include <QPainterPath>
#include <QPen>
#include <QQuickItem>
#include <qqmlregistration.h>

namespace kova {

/// Returns a rectangle with continuous corners: cubic curves join an arc to the edges so that the curvature
/// grows from 0 to the arc's without a step. On short sides less of the corner is smoothed, down to a plain
/// arc.
QPainterPath continuousRectangle(const QRectF &rect, qreal radius);

/// A filled and outlined rectangle with continuous corners, its outline inside the edges. Painted by the
/// software scene graph only.
class ContinuousRectangle : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY changed)
    Q_PROPERTY(qreal radius MEMBER m_radius NOTIFY changed)
    Q_PROPERTY(QColor borderColor MEMBER m_borderColor NOTIFY changed)
    Q_PROPERTY(qreal borderWidth MEMBER m_borderWidth NOTIFY changed)
    /// The length of the outline's dashes and of the gaps between them; 0 for a solid line.
    Q_PROPERTY(qreal dashLength MEMBER m_dashLength NOTIFY changed)

public:
    explicit ContinuousRectangle(QQuickItem *parent = nullptr);

Q_SIGNALS:
    void changed();

protected:
    QSGNode *updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *data) override;

    QColor m_color = Qt::transparent;
    qreal m_radius = 0;
    QColor m_borderColor = Qt::transparent;
    qreal m_borderWidth = 0;

private:
    QPen pen() const;

    qreal m_dashLength = 0;
};

} // namespace kova
