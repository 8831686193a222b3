#include "InhibitorPowerAssertions.h"

#include <cerrno>
#include <future>

namespace kova {

using namespace std::chrono_literals;

Result<AssertionID, qint32> InhibitorPowerAssertions::createPreventUserIdleSystemSleep(const QString &name) {
    const auto answer = std::make_shared<std::promise<qint32>>();
    std::future<qint32> answered = answer->get_future();
    m_inhibitor.hold(name, [answer](qint32 code) { answer->set_value(code); });
    const bool isInTime = answered.wait_for(450ms) == std::future_status::ready;
    if (const qint32 code = isInTime ? answered.get() : -ETIMEDOUT; code != 0) {
        m_inhibitor.letGo();
        return Failure{code};
    }
    return ++m_lastId;
}

void InhibitorPowerAssertions::release(AssertionID id) {
    if (id == m_lastId) {
        m_inhibitor.letGo();
    }
}

} // namespace kova
