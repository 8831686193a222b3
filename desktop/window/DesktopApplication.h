#pragma once

#include "Application.h"

#include <QPointer>
#include <QWindow>

namespace kova {

/// The application with its one main window.
class DesktopApplication : public QObject, public Application {
public:
    /// Sets the window that is brought to the front; it may be hidden. Call before it is first shown. Not
    /// owned.
    void setMainWindow(QWindow *window);

    void activate() override;
    void showMainWindow(const QByteArray &activationToken = {}) override;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QPointer<QWindow> m_window;
};

} // namespace kova
