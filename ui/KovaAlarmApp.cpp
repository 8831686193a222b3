#include "KovaAlarmApp.h"

#include "AlarmScheduler.h"
#include "Application.h"
#include "Platform.h"
#include "PowerManager.h"

namespace kova {

KovaAlarmApp::KovaAlarmApp(const Platform &platform)
    : m_platform(platform),
      m_activity(platform.processActivity.beginUserInitiated(
          QStringLiteral("KOVA alarm scheduling must remain active"))),
      m_viewModel(platform.preferences, platform.clock, AlarmScheduler::shared(), PowerManager::shared()) {}

void KovaAlarmApp::quit() {
    PowerManager::shared().allowSleep();
    m_platform.application.terminate();
}

} // namespace kova
