#pragma once

#include <QColor>
#include <QQuickItem>
#include <qqmlregistration.h>

namespace kova {

/// A filled and outlined rectangle with continuous corners. The outline lies inside the edges.
class ContinuousRectangle : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color MEMBER m_color WRITE setColor NOTIFY changed)
    Q_PROPERTY(qreal radius MEMBER m_radius WRITE setRadius NOTIFY changed)
    Q_PROPERTY(QColor borderColor MEMBER m_borderColor WRITE setBorderColor NOTIFY changed)
    Q_PROPERTY(qreal borderWidth MEMBER m_borderWidth WRITE setBorderWidth NOTIFY changed)
    /// The length of the outline's dashes and of the gaps between them; 0 for a solid line.
    Q_PROPERTY(qreal dashLength MEMBER m_dashLength WRITE setDashLength NOTIFY changed)

public:
    explicit ContinuousRectangle(QQuickItem *parent = nullptr);

    void setColor(const QColor &color) { set(m_color, color); }
    void setRadius(qreal radius) { set(m_radius, radius); }
    void setBorderColor(const QColor &color) { set(m_borderColor, color); }
    void setBorderWidth(qreal width) { set(m_borderWidth, width); }
    void setDashLength(qreal length) { set(m_dashLength, length); }

Q_SIGNALS:
    void changed();

protected:
    QSGNode *updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *data) override;
    void itemChange(ItemChange change, const ItemChangeData &value) override;

private:
    template <typename T> void set(T &member, const T &value) {
        if (member != value) {
            member = value;
            update();
            Q_EMIT changed();
        }
    }
    bool isVisiblyEmpty() const;
    bool hasBorder() const { return m_borderWidth > 0 && m_borderColor.alpha() > 0; }
    QImage picture(const QSizeF &size, qreal devicePixelRatio) const;

    QColor m_color = Qt::transparent;
    qreal m_radius = 0;
    QColor m_borderColor = Qt::transparent;
    qreal m_borderWidth = 0;
    qreal m_dashLength = 0;
};

} // namespace kova
