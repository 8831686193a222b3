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
        m_borderColor = Palette::focus();
        m_borderWidth = thickness;
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
    m_radius = m_cornerRadius + outset;
    update();
}

} // namespace kova
