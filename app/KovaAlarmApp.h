#pragma once

#include "AlarmViewModel.h"
#include "MainWindow.h"
#include "ProcessActivity.h"
#include "RingingRules.h"
#include "editor/AlarmEditor.h"
#include "home/HomeScreen.h"
#include "menubar/MenuBarExtra.h"

#include <QQmlEngine>
#include <memory>

namespace kova {

struct Platform;

/// The application: it begins the process activity, then makes the store, which loads the list and starts the
/// scheduler, then the main window and the menu-bar item. Main thread.
class KovaAlarmApp : public QObject {
    Q_OBJECT

public:
    /// The ports must be installed already.
    explicit KovaAlarmApp(const Platform &platform);

    /// Made, but not shown yet.
    MainWindow &mainWindow() { return m_mainWindow; }

    /// Call when the desktop has a place for the item, on the message bus or in a tray.
    void showMenuBarExtra(bool isOnBus);

    /// Brings the main window back, in front of other applications.
    void showWindow();

    /// Lets the machine sleep again, and ends.
    void quit();

private:
    const Platform &m_platform;
    std::unique_ptr<ActivityToken> m_activity;
    QQmlEngine m_engine;
    AlarmViewModel m_viewModel;
    AlarmScheduler &m_scheduler;
    RingingRules m_ringingRules;
    HomeScreen m_home;
    AlarmEditor m_editor;
    MainWindow m_mainWindow;
    std::unique_ptr<MenuBarExtra> m_menuBarExtra; ///< from the moment when there is a place for it
};

} // namespace kova
