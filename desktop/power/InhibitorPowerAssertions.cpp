#include "InhibitorPowerAssertions.h"

#include <cerrno>
#include <future>

namespace kova {

using namespace std::chrono_literals;

Result<AssertionID, qint32> InhibitorPowerAssertions::createPreventUserIdleSystemSleep(const QString &name) {
    const auto promise = std::make_shared<std::promise<qint32>>();
    std::future<qint32> result = promise->get_future();
    m_inhibitor.acquire(name, [promise](qint32 code) { promise->set_value(code); });
    const bool isInTime = result.wait_for(450ms) == std::future_status::ready;
    if (const qint32 code = isInTime ? result.get() : -ETIMEDOUT; code != 0) {
        m_inhibitor.release();
        return Failure{code};
    }
    return ++m_lastId;
}

void InhibitorPowerAssertions::release(AssertionID id) {
    if (id == m_lastId) {
        m_inhibitor.release();
    }
}

std::unique_ptr<QObject> InhibitorPowerAssertions::beginUserInitiated(const QString &reason) {
    auto inhibitor = std::make_unique<IdleInhibitor>(m_buses);
    inhibitor->acquire(reason);
    return inhibitor;
}

} // namespace kova
