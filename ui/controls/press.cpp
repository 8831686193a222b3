#include "press.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QQuickItem>

namespace kova {

bool isPressable(const QQuickItem &item) {
    return item.inherits("QQuickAbstractButton") || item.inherits("QQuickComboBox");
}

void press(QQuickItem &item) {
    const QPointer<QQuickItem> pressed(&item);
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, Qt::Key_Space, Qt::NoModifier, QStringLiteral(" "));
        if (pressed) {
            QCoreApplication::sendEvent(pressed, &event);
        }
    }
}

} // namespace kova
