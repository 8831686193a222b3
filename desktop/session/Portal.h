#pragma once

#include <QDBusMessage>
#include <QString>

namespace kova {

/// Whether the program runs in a Flatpak sandbox, where the desktop is reached through its portals only.
/// Any thread.
bool isSandboxed();

/// A call of a method of the desktop's portals. Any thread.
QDBusMessage portalCall(const QString &interface, const QString &method);

} // namespace kova
