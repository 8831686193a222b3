#pragma once

#include "PowerAssertions.h"

#include <map>
#include <memory>

namespace kova {

class IdleInhibitor;
class MessageBuses;

/// Assertions held as idle inhibitors.
class InhibitorPowerAssertions : public PowerAssertions {
public:
    explicit InhibitorPowerAssertions(MessageBuses &buses);
    ~InhibitorPowerAssertions() override;

    Result<AssertionID, qint32> createPreventUserIdleSystemSleep(const QString &name) override;
    void release(AssertionID id) override;

private:
    MessageBuses &m_buses;
    AssertionID m_lastId = 0;
    std::map<AssertionID, std::unique_ptr<IdleInhibitor>> m_held;
};

} // namespace kova
