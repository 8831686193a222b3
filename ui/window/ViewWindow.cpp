#include "ViewWindow.h"

#include "accessibility/AccessibleItem.h"

#include <QKeyEvent>
#include <QPointer>
#include <QQmlEngine>
#include <QQuickItem>
#include <algorithm>

namespace kova {

namespace {

bool isReturn(const QKeyEvent &event) {
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

bool isModifier(const QKeyEvent &event) {
    return event.key() >= Qt::Key_Shift && event.key() <= Qt::Key_ScrollLock;
}

bool isOpenPicker(const QQuickItem &item) {
    return item.inherits("QQuickComboBox") && item.property("down").toBool();
}

// Visits visual children, since a repeater's items are not among the object children of their parent item.
QList<QQuickItem *> hoveredItems(const QQuickItem &parent) {
    QList<QQuickItem *> items;
    const QList<QQuickItem *> children = parent.childItems();
    for (QQuickItem *child : children) {
        if (child->property("hovered").toBool()) {
            items << child;
        }
        items << hoveredItems(*child);
    }
    return items;
}

} // namespace

ViewWindow::ViewWindow(QQmlEngine *engine) : QQuickView(engine, nullptr) {
    AccessibleItem::install();
    connect(this, &QQuickView::statusChanged, this, &ViewWindow::observePopups);
}

QQuickItem *ViewWindow::overlayOf(const QQuickItem &item) {
    const QList<QQuickItem *> layers =
        item.window() ? item.window()->contentItem()->childItems() : QList<QQuickItem *>();
    const auto overlay = std::ranges::find_if(
        layers, [](const QQuickItem *layer) { return layer->inherits("QQuickOverlay"); });
    return overlay == layers.cend() ? nullptr : *overlay;
}

QList<QQuickItem *> ViewWindow::popupsInFrontOf(const QQuickItem &item) {
    const QQuickItem *overlay = overlayOf(item);
    const QList<QQuickItem *> layers = overlay ? overlay->childItems() : QList<QQuickItem *>();
    QList<QQuickItem *> popups;
    for (auto layer = layers.crbegin(); layer != layers.crend(); ++layer) {
        if (*layer == &item || (*layer)->isAncestorOf(&item)) {
            break;
        }
        if ((*layer)->isVisible() && (*layer)->inherits("QQuickPopupItem")) {
            popups << *layer;
        }
    }
    return popups;
}

// Queued, since a popup may be hidden while the views are being deleted.
void ViewWindow::observePopups() {
    if (const QQuickItem *overlay = overlayOf(*contentItem())) {
        connect(overlay, &QQuickItem::visibleChildrenChanged, this, &ViewWindow::endHoverBehindPopups,
                static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::UniqueConnection));
    }
}

// Sends the events that the pointer has left, which Qt's overlay withholds from items behind a modal popup.
void ViewWindow::endHoverBehindPopups() {
    const QList<QQuickItem *> items = hoveredItems(*contentItem());
    for (QQuickItem *item : items) {
        const QList<QQuickItem *> popups = popupsInFrontOf(*item);
        if (std::ranges::any_of(
                popups, [](QQuickItem *popup) { return popup->parent()->property("modal").toBool(); })) {
            QHoverEvent leave(QEvent::HoverLeave, QPointF(), QPointF(), QPointF());
            QCoreApplication::sendEvent(item, &leave);
        }
    }
}

bool ViewWindow::isPressable(const QQuickItem &item) {
    return item.inherits("QQuickAbstractButton") || item.inherits("QQuickComboBox");
}

void ViewWindow::press(QQuickItem &item) {
    const QPointer<QQuickItem> pressed(&item);
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, Qt::Key_Space, Qt::NoModifier, QStringLiteral(" "));
        if (pressed) {
            QCoreApplication::sendEvent(pressed, &event);
        }
    }
}

void ViewWindow::setShowsFocus(bool shows) {
    if (m_showsFocus != shows) {
        m_showsFocus = shows;
        Q_EMIT showsFocusChanged();
    }
}

// Decides here, for all controls, since the reason for which an item has the focus is lost when the window is
// deactivated or a popup closes.
bool ViewWindow::event(QEvent *event) {
    switch (event->type()) {
    case QEvent::KeyPress:
        if (!isModifier(*static_cast<QKeyEvent *>(event))) {
            setShowsFocus(true);
        }
        break;
    case QEvent::MouseButtonPress:
    case QEvent::TouchBegin:
        setShowsFocus(false);
        break;
    default:
        break;
    }
    return QQuickView::event(event);
}

void ViewWindow::keyPressEvent(QKeyEvent *event) {
    if (isReturn(*event) && event->isAutoRepeat()) {
        return;
    }
    if (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier) {
        QKeyEvent menu(QEvent::KeyPress, Qt::Key_Menu, Qt::NoModifier);
        keyPressEvent(&menu);
        return;
    }
    QQuickItem *item = activeFocusItem();
    m_hasPressed = isReturn(*event) && item && isPressable(*item) && !isOpenPicker(*item);
    if (m_hasPressed) {
        press(*item);
    } else {
        QQuickView::keyPressEvent(event);
    }
    if (event->isAccepted()) {
        Q_EMIT keyUsed();
    }
}

// Ignores the release of a Return press handled here; a combo box would close its list again.
void ViewWindow::keyReleaseEvent(QKeyEvent *event) {
    if (!isReturn(*event) || !m_hasPressed) {
        QQuickView::keyReleaseEvent(event);
    }
}

} // namespace kova
