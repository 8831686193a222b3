#pragma once

#include <QDBusMessage>
#include <QString>

namespace kova {

/// Returns whether the process runs in a Flatpak sandbox, where only the portals are available. Any thread.
bool isSandboxed();

/// Returns a call of a method of the desktop's portals. Any thread.
QDBusMessage portalCall(const QString &interface, const QString &method);

} // namespace kova
