#pragma once

#include <QColor>
#include <QImage>
#include <QQuickItem>
#include <qqmlregistration.h>

namespace kova {

/// Returns the size of a symbol that matches a font's pixel size, in whole logical pixels; empty for an
/// unknown name.
QSize symbolSize(const QString &name, qreal fontSize);

/// Returns the symbol in one colour, at symbolSize times the device pixel ratio; null for an unknown name.
QImage symbolImage(const QString &name, qreal fontSize, const QColor &color, qreal devicePixelRatio);

/// A symbol of the interface in one colour, sized like text.
class Symbol : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString name MEMBER m_name NOTIFY changed REQUIRED)
    /// Pixel size of the font that the symbol matches.
    Q_PROPERTY(qreal size MEMBER m_size NOTIFY changed REQUIRED)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY changed REQUIRED)

public:
    explicit Symbol(QQuickItem *parent = nullptr);

Q_SIGNALS:
    void changed();

protected:
    QSGNode *updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *data) override;
    void itemChange(ItemChange change, const ItemChangeData &value) override;

private:
    void updateImplicitSize();

    QString m_name;
    qreal m_size = 0;
    QColor m_color;
};

} // namespace kova
