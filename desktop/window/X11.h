#pragma once

#include <QWindow>

namespace kova {

/// Requests the activation of a window as a task list does. The window manager denies it to an application
/// that requests it for itself while the user works in another. Main thread.
void activateX11Window(WId window);

/// Sets the properties by which the window manager draws a dark title bar and finds the desktop entry. Call
/// before the window is mapped. Main thread.
void describeX11Window(WId window);

/// Returns whether a panel of the X11 screen embeds tray icons.
bool hasX11Tray();

} // namespace kova
