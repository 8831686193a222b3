#include "ViewWindow.h"

#include "accessibility/AccessibleItem.h"
#include "controls/press.h"

#include <QKeyEvent>
#include <QQmlEngine>
#include <QQuickItem>

namespace kova {

namespace {

bool isReturn(const QKeyEvent &event) {
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

bool isOpenPicker(const QQuickItem &item) {
    return item.inherits("QQuickComboBox") && item.property("down").toBool();
}

} // namespace

ViewWindow::ViewWindow(QQmlEngine *engine) : QQuickView(engine, nullptr) {
    AccessibleItem::install();
}

void ViewWindow::keyPressEvent(QKeyEvent *event) {
    if (isReturn(*event) && event->isAutoRepeat()) {
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

// A picker would close the list that it has just opened.
void ViewWindow::keyReleaseEvent(QKeyEvent *event) {
    if (!isReturn(*event) || !m_hasPressed) {
        QQuickView::keyReleaseEvent(event);
    }
}

} // namespace kova
