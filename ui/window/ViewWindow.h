#pragma once

#include <QQuickView>

namespace kova {

/// A window for views of this module. Return and Enter press what has the focus, as the space bar does, and
/// assistive tools see the views as AccessibleItem tells them. Main thread.
class ViewWindow : public QQuickView {
    Q_OBJECT

public:
    /// The engine, if any, must outlive the window.
    explicit ViewWindow(QQmlEngine *engine = nullptr);

Q_SIGNALS:
    void keyUsed(); ///< by what has the focus

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;

private:
    bool m_hasPressed = false; ///< by the Return key that is down
};

} // namespace kova
