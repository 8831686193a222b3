#pragma once

#include "AlarmViewModel.h"
#include "MainWindow.h"
#include "RingingCoordinator.h"
#include "editor/AlarmEditor.h"
#include "home/HomeScreen.h"
#include "menubar/MenuBarExtra.h"

#include <QQmlEngine>
#include <memory>

namespace kova {

class Application;
struct Platform;

/// The application. Begins the process activity, then creates the store, which loads the list and starts the
/// scheduler, then the main window. Main thread.
class KovaAlarmApp : public QObject {
    Q_OBJECT

public:
    /// The ports must be installed already.
    explicit KovaAlarmApp(const Platform &platform);

    /// Not shown yet.
    MainWindow &mainWindow() { return m_mainWindow; }

    /// Creates the menu-bar item. Call when a panel can show it, through the message bus or in a tray.
    void showMenuBarExtra(bool isOnBus);

    void showWindow();

    /// Releases sleep prevention and exits.
    void quit();

private:
    Application &m_application;
    std::unique_ptr<QObject> m_activity;
    QQmlEngine m_engine;
    AlarmViewModel m_viewModel;
    AlarmScheduler &m_scheduler;
    RingingCoordinator m_ringingCoordinator;
    HomeScreen m_home;
    AlarmEditor m_editor;
    MainWindow m_mainWindow;
    std::unique_ptr<MenuBarExtra> m_menuBarExtra; ///< null until a panel can show it
};

} // namespace kova
