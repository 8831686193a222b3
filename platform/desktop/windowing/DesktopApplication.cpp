#include "DesktopApplication.h"

#include "X11.h"

#include <QGuiApplication>

namespace kova {

// Attention is asked for first: it stays where the desktop refuses the focus, and goes with the focus.
void DesktopApplication::activate() {
    if (!m_window || !m_window->isVisible()) {
        return;
    }
    if (m_window->windowStates() & Qt::WindowMinimized) {
        m_window->setWindowStates(m_window->windowStates() & ~Qt::WindowMinimized);
    }
    if (!m_window->isActive()) {
        m_window->alert(0);
    }
    m_window->raise();
    m_window->requestActivate();
    if (QGuiApplication::platformName() == QLatin1String("xcb")) {
        activateX11Window(m_window->winId());
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
