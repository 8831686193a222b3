#pragma once

#include "window/ViewWindow.h"

namespace kova {

class HomeScreen;

/// The main window. Closing it hides it if something can show it again, and otherwise minimises it. Main
/// thread.
class MainWindow : public ViewWindow {
    Q_OBJECT

public:
    /// Takes the inputs of the root view. The objects in them, and the engine, must outlive the window.
    MainWindow(QQmlEngine &engine, QVariantMap inputs);

    /// Call when something can show a hidden window again.
    void hideOnClose() { m_hidesOnClose = true; }

Q_SIGNALS:
    void quit(); ///< requested by the keyboard
    void closed();

protected:
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    bool m_hidesOnClose = false;
};

} // namespace kova
