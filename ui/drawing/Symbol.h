#pragma once

#include <QColor>
#include <QQuickItem>
#include <qqmlregistration.h>

namespace kova {

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
    void follow();

    QString m_name;
    qreal m_size = 0;
    QColor m_color;
};

} // namespace kova
