#include "InhibitorPowerAssertions.h"

#include "IdleInhibitor.h"

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

InhibitorPowerAssertions::InhibitorPowerAssertions(MessageBuses &buses) : m_buses(buses) {}

InhibitorPowerAssertions::~InhibitorPowerAssertions() = default;

Result<AssertionID, qint32> InhibitorPowerAssertions::createPreventUserIdleSystemSleep(const QString &name) {
    const auto answer = std::make_shared<Answer>();
    auto inhibitor =
        std::make_unique<IdleInhibitor>(m_buses, name, [answer](qint32 code) { answer->give(code); });
    if (const qint32 code = answer->wait(); code != 0) {
        return Failure{code};
    }
    m_lastId += 1;
    m_held[m_lastId] = std::move(inhibitor);
    return m_lastId;
}

void InhibitorPowerAssertions::release(AssertionID id) {
    m_held.erase(id);
}

} // namespace kova
