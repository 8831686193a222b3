#include "InhibitorPowerAssertions.h"

#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>

namespace kova {

namespace {

// The answer of another thread, for which this one waits a bounded time.
class Answer {
public:
    void give(qint32 code) {
        const std::lock_guard lock(m_mutex);
        m_code = code;
        m_given.notify_one();
    }

    qint32 wait() {
        constexpr std::chrono::milliseconds longest{450};
        std::unique_lock lock(m_mutex);
        return m_given.wait_for(lock, longest, [this] { return m_code.has_value(); }) ? *m_code : -ETIMEDOUT;
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_given;
    std::optional<qint32> m_code;
};

} // namespace

Result<AssertionID, qint32> InhibitorPowerAssertions::createPreventUserIdleSystemSleep(const QString &name) {
    const auto answer = std::make_shared<Answer>();
    m_inhibitor.hold(name, [answer](qint32 code) { answer->give(code); });
    if (const qint32 code = answer->wait(); code != 0) {
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
