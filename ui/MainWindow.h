#pragma once

#include <QQuickView>

namespace kova {

class HomeScreen;

/// The main window. Closing it only hides it: its content is taken down, and built anew when the window is
/// shown again. Main thread.
class MainWindow : public QQuickView {
    Q_OBJECT

public:
    /// The inputs of the root view; what they point to must outlive the window.
    explicit MainWindow(const QVariantMap &inputs);

Q_SIGNALS:
    void quit(); ///< by the keyboard

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void load();
    void unload();

    QVariantMap m_inputs;
};

} // namespace kova
