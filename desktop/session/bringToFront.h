#pragma once

#include <QByteArray>

namespace kova {

class Application;

/// The desktop's permission to take the focus, given to the process that the user started; or empty.
QByteArray activationToken();

/// Brings the application's window to the front, with the desktop's permission to take the focus where there
/// is one. Any thread; it happens on the main thread, and the application must outlive the event loop.
void bringToFront(Application &application, const QByteArray &activationToken);

} // namespace kova
