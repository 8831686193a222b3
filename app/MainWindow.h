#pragma once

#include "window/ViewWindow.h"

namespace kova {

class HomeScreen;

/// The main window. Closing it only hides it where something can bring it back, and else minimises it. Main
/// thread.
class MainWindow : public ViewWindow {
    Q_OBJECT

public:
    /// The inputs of the root view. What they point to, and the engine, must outlive the window.
    MainWindow(QQmlEngine &engine, QVariantMap inputs);

    /// Call when something can bring a hidden window back.
    void hideOnClose() { m_hidesOnClose = true; }

Q_SIGNALS:
    void quit(); ///< by the keyboard
    void closed();

protected:
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    bool m_hidesOnClose = false;
};

} // namespace kova
