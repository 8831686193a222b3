#include "FocusRing.h"

#include "Palette.h"
#include "window/ViewWindow.h"

namespace kova {

constexpr qreal thickness = 2;

void FocusRing::setTarget(QQuickItem *target) {
    m_target = target;
    connect(target, &QQuickItem::activeFocusChanged, this, &FocusRing::showFocus);
}

void FocusRing::showFocus() {
    const auto *window = qobject_cast<ViewWindow *>(m_target->window());
    if (window && m_target->hasActiveFocus()) {
        connect(window, &ViewWindow::showsFocusChanged, this, &FocusRing::showFocus, Qt::UniqueConnection);
        connect(parentItem(), &QQuickItem::widthChanged, this, &FocusRing::place, Qt::UniqueConnection);
        connect(parentItem(), &QQuickItem::heightChanged, this, &FocusRing::place, Qt::UniqueConnection);
        m_borderColor = Palette::focus();
        m_borderWidth = thickness;
        place();
    }
    setVisible(window && m_target->hasActiveFocus() && window->showsFocus());
}

void FocusRing::place() {
    const qreal outset = m_gap + thickness;
    setPosition({-outset, -outset});
    setSize(parentItem()->size() + QSizeF(2 * outset, 2 * outset));
    m_radius = m_cornerRadius + outset;
    update();
}

} // namespace kova
