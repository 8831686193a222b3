#pragma once

#include <QQuickView>
#include <memory>

class QQmlComponent;

namespace kova {

class HomeScreen;

/// The main window. Closing it only hides it where something can bring it back, and else minimises it. While
/// it is hidden its content is taken down, and built anew when the window is shown again. Main thread.
class MainWindow : public QQuickView {
    Q_OBJECT

public:
    /// Starts to read the views on a thread of the engine's. Keep it until the window is made, which is then
    /// quick.
    static std::unique_ptr<QQmlComponent> readViews(QQmlEngine &engine);

    /// The inputs of the root view. What they point to, and the engine, must outlive the window.
    MainWindow(QQmlEngine &engine, const QVariantMap &inputs);

    /// Call when something can bring a hidden window back.
    void hideOnClose() { m_hidesOnClose = true; }

Q_SIGNALS:
    void quit(); ///< by the keyboard
    void closed();

protected:
    void closeEvent(QCloseEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void load();
    void unload();

    QVariantMap m_inputs;
    bool m_hidesOnClose = false;
};

} // namespace kova
