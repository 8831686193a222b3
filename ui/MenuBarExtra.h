#pragma once

#include "MenuBarContent.h"

#include <QMenu>
#include <QSystemTrayIcon>
#include <memory>

namespace kova {

class AlarmScheduler;
class AlarmViewModel;
class PowerManager;

/// The item in the desktop's menu bar with its menu. Its lines follow the store and the scheduler; whatever is
/// published in one turn of the event loop makes one update, and an equal content none. Main thread.
class MenuBarExtra : public QObject {
    Q_OBJECT

public:
    /// All must outlive the item.
    MenuBarExtra(const AlarmViewModel &store, const AlarmScheduler &scheduler,
                 const PowerManager &powerManager);
    ~MenuBarExtra() override;

    /// Puts the item into the menu bar; the desktop must have a place for it.
    void show();

    const QMenu &menu() const { return m_menu; }

Q_SIGNALS:
    void showWindow();
    void quit();

private:
    void scheduleRebuild();
    void rebuild();
    QAction *makeAction(const MenuBarEntry &entry);

    const AlarmViewModel &m_store;
    const PowerManager &m_powerManager;
    QMenu m_menu;
    std::unique_ptr<QSystemTrayIcon> m_icon;
    QList<MenuBarEntry> m_content;
    bool m_isRebuildScheduled = false;
};

} // namespace kova
