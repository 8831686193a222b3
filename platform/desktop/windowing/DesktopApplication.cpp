#include "DesktopApplication.h"

#include "X11.h"

#include <QGuiApplication>

namespace kova {

namespace {

// Attention is asked for first: it stays where the desktop refuses the focus, and goes with the focus.
void bringToFront(QWindow &window) {
    if (!window.isVisible()) {
        return;
    }
    if (window.windowStates() & Qt::WindowMinimized) {
        window.setWindowStates(window.windowStates() & ~Qt::WindowMinimized);
    }
    if (!window.isActive()) {
        window.alert(0);
    }
    window.raise();
    window.requestActivate();
    if (QGuiApplication::platformName() == QLatin1String("xcb")) {
        activateX11Window(window.winId());
    }
}

} // namespace

void DesktopApplication::activate() {
    if (m_window) {
        QMetaObject::invokeMethod(
            m_window, [window = m_window.get()] { bringToFront(*window); }, Qt::QueuedConnection);
    }
}

void DesktopApplication::showMainWindow() {
    if (m_window) {
        m_window->setVisible(true);
        activate();
    }
}

void DesktopApplication::terminate() {
    QCoreApplication::quit();
}

} // namespace kova
