#include "ViewWindow.h"

#include "controls/AccessibleItem.h"
#include "controls/press.h"

#include <QKeyEvent>
#include <QQmlEngine>
#include <QQuickItem>

namespace kova {

ViewWindow::ViewWindow(QQmlEngine *engine) : QQuickView(engine, nullptr) {
    AccessibleItem::install();
}

void ViewWindow::keyPressEvent(QKeyEvent *event) {
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    QQuickItem *item = activeFocusItem();
    if (isReturn && item && item->inherits("QQuickAbstractButton")) {
        if (!event->isAutoRepeat()) {
            press(*item);
        }
    } else {
        QQuickView::keyPressEvent(event);
    }
    if (event->isAccepted()) {
        Q_EMIT keyUsed();
    }
}

} // namespace kova
