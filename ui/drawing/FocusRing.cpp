#include "FocusRing.h"

#include "Palette.h"

namespace kova {

namespace {
constexpr qreal thickness = 2;
}

FocusRing::FocusRing(QQuickItem *parent) : ContinuousRectangle(parent) {
    setVisible(false);
}

void FocusRing::setShown(bool shown) {
    if (shown) {
        QColor color = Palette::accent();
        color.setAlphaF(0.75F);
        setBorderColor(color);
        setBorderWidth(thickness);
        connect(parentItem(), &QQuickItem::widthChanged, this, &FocusRing::place, Qt::UniqueConnection);
        connect(parentItem(), &QQuickItem::heightChanged, this, &FocusRing::place, Qt::UniqueConnection);
        place();
    }
    setVisible(shown);
}

void FocusRing::place() {
    const qreal outset = m_gap + thickness;
    setPosition({-outset, -outset});
    setSize(parentItem()->size() + QSizeF(2 * outset, 2 * outset));
    setRadius(m_cornerRadius + outset);
}

} // namespace kova
