#pragma once

#include "AlarmViewModel.h"
#include "MenuBarMenu.h"

#include <QSystemTrayIcon>
#include <QTimer>

namespace kova {

/// The item in the desktop's menu bar with its menu. The menu is updated at most once per event loop
/// iteration after the store has changed. Main thread.
class MenuBarExtra : public QObject {
    Q_OBJECT

public:
    /// All must outlive the item.
    MenuBarExtra(const AlarmViewModel &store, const PowerManager &powerManager);

    /// Shows the item. The desktop must have a menu bar; it either takes the menu from the session bus or
    /// leaves the drawing to this process.
    void show(MenuBarMenu::Use menu);

    const QMenu &menu() const { return m_menu; }
    const QMenu &exportedMenu() const { return m_exportedMenu; }

Q_SIGNALS:
    void showWindow();
    void quit();

private:
    void activate(QSystemTrayIcon::ActivationReason reason);
    void rebuild();

    const AlarmViewModel &m_store;
    const PowerManager &m_powerManager;
    MenuBarMenu m_menu{MenuBarMenu::Drawn};
    MenuBarMenu m_exportedMenu{MenuBarMenu::Exported};
    QSystemTrayIcon m_icon;
    QTimer m_rebuildTimer; ///< of the next event loop iteration
};

} // namespace kova
