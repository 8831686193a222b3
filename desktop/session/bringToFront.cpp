#include "bringToFront.h"

#include "Application.h"

#include <QCoreApplication>

namespace kova {

QByteArray activationToken() {
    const QByteArray token = qgetenv("XDG_ACTIVATION_TOKEN");
    return token.isEmpty() ? qgetenv("DESKTOP_STARTUP_ID") : token;
}

void bringToFront(Application &application, const QByteArray &activationToken) {
    QMetaObject::invokeMethod(
        QCoreApplication::instance(),
        [&application, activationToken] {
            qputenv("XDG_ACTIVATION_TOKEN", activationToken); // where Qt reads it
            application.showMainWindow();
        },
        Qt::QueuedConnection);
}

} // namespace kova
