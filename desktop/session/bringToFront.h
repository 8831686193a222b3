#pragma once

#include <QByteArray>

namespace kova {

class Application;

/// Returns the token by which the desktop permits the started process to take the focus, or an empty one.
QByteArray activationToken();

/// Shows the main window in front, with the token if it is not empty. Any thread; queued to the main thread,
/// so the application must outlive the event loop.
void bringToFront(Application &application, const QByteArray &activationToken);

} // namespace kova
