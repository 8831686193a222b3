#include "PowerManager.h"

#include "Platform.h"

namespace kova {

PowerManager &PowerManager::shared() {
    static const Platform &platform = Platform::installed();
    static auto *const manager = new PowerManager(platform.powerAssertions, platform.log);
    return *manager;
}

void PowerManager::preventSleep() {
    if (m_isPreventingSleep) {
        return;
    }
    const auto assertion =
        m_assertions.createPreventUserIdleSystemSleep(QStringLiteral("KOVA Alarm active — preventing sleep"));
    if (!assertion) {
        m_log.print(QStringLiteral("[PowerManager] Failed to create assertion: %1").arg(assertion.error()));
        return;
    }
    m_assertionID = assertion.value();
    m_isPreventingSleep = true;
    m_log.print(QStringLiteral("[PowerManager] Sleep prevention ON (id: %1)").arg(m_assertionID));
    Q_EMIT isPreventingSleepChanged();
}

void PowerManager::allowSleep() {
    if (!m_isPreventingSleep) {
        return;
    }
    m_assertions.release(m_assertionID);
    m_isPreventingSleep = false;
    m_log.print(QStringLiteral("[PowerManager] Sleep prevention OFF"));
    Q_EMIT isPreventingSleepChanged();
}

} // namespace kova
