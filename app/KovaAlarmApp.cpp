#include "KovaAlarmApp.h"

#include "Application.h"
#include "Platform.h"
#include "PowerAssertions.h"
#include "TTSPlayer.h"

#include <QCoreApplication>

namespace kova {

KovaAlarmApp::KovaAlarmApp(const Platform &platform)
    : m_application(platform.application),
      m_activity(platform.powerAssertions.beginUserInitiated(
          QStringLiteral("KOVA alarm scheduling must remain active"))),
      m_viewModel(platform.listStorage, platform.clock, AlarmScheduler::shared(), PowerManager::shared()),
      m_scheduler(AlarmScheduler::shared()),
      m_ringingCoordinator(m_scheduler, platform.fileChooser),
      m_home(m_viewModel, SoundPlayer::shared(), m_scheduler, PowerManager::shared()),
      m_editor({m_viewModel, SoundPlayer::shared(), TTSPlayer::shared(), platform.fileChooser,
                platform.bookmarks, platform.log}),
      m_mainWindow(m_engine, {{QStringLiteral("home"), QVariant::fromValue(&m_home)},
                              {QStringLiteral("editor"), QVariant::fromValue(&m_editor)}}) {
    connect(&m_mainWindow, &MainWindow::quit, this, &KovaAlarmApp::quit);
    connect(&m_mainWindow, &MainWindow::closed, &m_ringingCoordinator, &RingingCoordinator::windowClosed);
}

void KovaAlarmApp::showMenuBarExtra(bool isOnBus) {
    if (!m_menuBarExtra) {
        m_menuBarExtra = std::make_unique<MenuBarExtra>(m_viewModel, PowerManager::shared());
        connect(m_menuBarExtra.get(), &MenuBarExtra::showWindow, this, &KovaAlarmApp::showWindow);
        connect(m_menuBarExtra.get(), &MenuBarExtra::quit, this, &KovaAlarmApp::quit);
        m_menuBarExtra->show(isOnBus ? MenuBarMenu::Exported : MenuBarMenu::Drawn);
        m_mainWindow.hideOnClose();
    }
}

void KovaAlarmApp::showWindow() {
    m_application.showMainWindow();
}

void KovaAlarmApp::quit() {
    PowerManager::shared().allowSleep();
    QCoreApplication::quit();
}

} // namespace kova
