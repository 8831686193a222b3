#include "DesktopApplication.h"

#include "X11.h"

#include <QGuiApplication>
#include <QPlatformSurfaceEvent>

namespace kova {

namespace {

bool isOnX11() {
    return QGuiApplication::platformName() == QLatin1String("xcb");
}

// Demands attention first: that remains if the desktop denies the focus, and ends with the focus.
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
    if (isOnX11()) {
        activateX11Window(window.winId());
    }
}

} // namespace

void DesktopApplication::setMainWindow(QWindow *window) {
    m_window = window;
    window->installEventFilter(this);
}

void DesktopApplication::activate() {
    if (m_window) {
        QMetaObject::invokeMethod(
            m_window, [window = m_window.get()] { bringToFront(*window); }, Qt::QueuedConnection);
    }
}

void DesktopApplication::showMainWindow(const QByteArray &activationToken) {
    const auto show = [this, activationToken] {
        if (!activationToken.isEmpty()) {
            qputenv("XDG_ACTIVATION_TOKEN", activationToken); // where Qt reads it
        }
        if (m_window) {
            m_window->setVisible(true);
            activate();
        }
    };
    QMetaObject::invokeMethod(this, show, Qt::QueuedConnection);
}

// A closed window gets a new platform window when it is shown again.
bool DesktopApplication::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == QEvent::PlatformSurface && isOnX11() &&
        static_cast<QPlatformSurfaceEvent *>(event)->surfaceEventType() ==
            QPlatformSurfaceEvent::SurfaceCreated) {
        describeX11Window(m_window->winId());
    }
    return QObject::eventFilter(watched, event);
}

} // namespace kova
