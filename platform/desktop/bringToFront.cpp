#include "bringToFront.h"

#include "Application.h"

#include <QCoreApplication>

namespace kova {

void bringToFront(Application &application, const QByteArray &activationToken) {
    QMetaObject::invokeMethod(
        QCoreApplication::instance(),
        [&application, activationToken] {
            qputenv("XDG_ACTIVATION_TOKEN", activationToken); // where the toolkit looks for it
            application.showMainWindow();
        },
        Qt::QueuedConnection);
}

} // namespace kova
