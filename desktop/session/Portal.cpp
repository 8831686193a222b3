#include "Portal.h"

#include <QFile>

namespace kova {

bool isSandboxed() {
    return qgetenv("container") == "flatpak" || QFile::exists(QStringLiteral("/.flatpak-info"));
}

QDBusMessage portalCall(const QString &interface, const QString &method) {
    return QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.portal.Desktop"),
                                          QStringLiteral("/org/freedesktop/portal/desktop"), interface,
                                          method);
}

} // namespace kova
