#pragma once

#include <QQuickView>

namespace kova {

/// A window for views of this module. Return and Enter press the focused item, as the space bar does, and
/// Shift+F10 is the menu key. Exposes the views to assistive tools as AccessibleItem describes. Main thread.
class ViewWindow : public QQuickView {
    Q_OBJECT
    /// Whether the keyboard was used after the mouse or a finger: the focused control is marked and kept
    /// visible.
    Q_PROPERTY(bool showsFocus READ showsFocus NOTIFY showsFocusChanged)

public:
    /// The engine, if any, must outlive the window.
    explicit ViewWindow(QQmlEngine *engine = nullptr);

    bool showsFocus() const { return m_showsFocus; }
    void setShowsFocus(bool shows);

    /// Returns the parent of all popups in the item's window, null if there has been none yet.
    static QQuickItem *overlayOf(const QQuickItem &item);
    /// Returns the visible popups in front of the item, the topmost first.
    static QList<QQuickItem *> popupsInFrontOf(const QQuickItem &item);

    /// Returns whether the item is a button or a picker.
    static bool isPressable(const QQuickItem &item);
    /// Has the effect of the space bar when the item has the focus.
    static void press(QQuickItem &item);

Q_SIGNALS:
    void showsFocusChanged();
    void keyUsed(); ///< by the focused item

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;

private:
    void observePopups();
    void endHoverBehindPopups();

    bool m_showsFocus = false;
    bool m_hasPressed = false; ///< by the Return key that is down
};

} // namespace kova
