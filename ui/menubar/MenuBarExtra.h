#pragma once

#include "MenuBarMenu.h"

#include <QSystemTrayIcon>

namespace kova {

class AlarmViewModel;
class PowerManager;

/// The item in the desktop's menu bar with its menu. Its lines follow the store; whatever changes in one
/// turn of the event loop makes one update, and an equal content none. Main thread.
class MenuBarExtra : public QObject {
    Q_OBJECT

public:
    /// All must outlive the item.
    MenuBarExtra(const AlarmViewModel &store, const PowerManager &powerManager);

    /// Puts the item into the menu bar; the desktop must have a place for it, where it takes the menu from
    /// the message bus or leaves it to the program to draw.
    void show(MenuBarMenu::Use menu);

    /// As the program draws it, and as it stands on the bus.
    const QMenu &menu() const { return m_menu; }
    const QMenu &exportedMenu() const { return m_exportedMenu; }

Q_SIGNALS:
    void showWindow();
    void quit();

private:
    void activate(QSystemTrayIcon::ActivationReason reason);
    void scheduleRebuild();
    void rebuild();

    const AlarmViewModel &m_store;
    const PowerManager &m_powerManager;
    MenuBarMenu m_menu{MenuBarMenu::Drawn};
    MenuBarMenu m_exportedMenu{MenuBarMenu::Exported};
    QSystemTrayIcon m_icon;
    bool m_isRebuildScheduled = false;
};

} // namespace kova
