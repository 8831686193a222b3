#pragma once

#include <QWindow>

namespace kova {

/// Has the X11 window manager bring a window in front and give it the keyboard, as if the user had picked it
/// from a task list: a window that asks for itself is held back while the user works elsewhere. Main thread.
void activateX11Window(WId window);

/// Tells the X11 window manager that the window is dark, and which desktop entry it belongs to. Before the
/// window is mapped. Main thread.
void describeX11Window(WId window);

/// Whether a panel of the X11 screen takes tray icons as embedded windows.
bool hasX11Tray();

} // namespace kova
