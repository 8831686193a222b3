#pragma once

#include <QPen>
#include <QQuickItem>
#include <qqmlregistration.h>

namespace kova {

/// A filled and outlined rectangle with continuous corners; the outline lies inside the edges. Shows in the
/// software scene graph only.
class ContinuousRectangle : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color MEMBER m_color WRITE setColor NOTIFY colorChanged)
    Q_PROPERTY(qreal radius MEMBER m_radius WRITE setRadius NOTIFY radiusChanged)
    Q_PROPERTY(QColor borderColor MEMBER m_borderColor WRITE setBorderColor NOTIFY borderColorChanged)
    Q_PROPERTY(qreal borderWidth MEMBER m_borderWidth WRITE setBorderWidth NOTIFY borderWidthChanged)
    /// The length of the outline's dashes and of the gaps between them; 0 for a solid line.
    Q_PROPERTY(qreal dashLength MEMBER m_dashLength WRITE setDashLength NOTIFY dashLengthChanged)

public:
    explicit ContinuousRectangle(QQuickItem *parent = nullptr);

    void setColor(const QColor &color) { set(m_color, color, &ContinuousRectangle::colorChanged); }
    void setRadius(qreal radius) { set(m_radius, radius, &ContinuousRectangle::radiusChanged); }
    void setBorderColor(const QColor &color) {
        set(m_borderColor, color, &ContinuousRectangle::borderColorChanged);
    }
    void setBorderWidth(qreal width) { set(m_borderWidth, width, &ContinuousRectangle::borderWidthChanged); }
    void setDashLength(qreal length) { set(m_dashLength, length, &ContinuousRectangle::dashLengthChanged); }

Q_SIGNALS:
    void colorChanged();
    void radiusChanged();
    void borderColorChanged();
    void borderWidthChanged();
    void dashLengthChanged();

protected:
    QSGNode *updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *data) override;

private:
    template <typename T> void set(T &member, const T &value, void (ContinuousRectangle::*changed)()) {
        if (member != value) {
            member = value;
            update();
            Q_EMIT(this->*changed)();
        }
    }
    QPen pen() const;

    QColor m_color = Qt::transparent;
    qreal m_radius = 0;
    QColor m_borderColor = Qt::transparent;
    qreal m_borderWidth = 0;
    qreal m_dashLength = 0;
};

} // namespace kova
