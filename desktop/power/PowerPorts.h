#pragma once

#include "IdleInhibitor.h"
#include "PowerAssertions.h"

namespace kova {

/// Implements assertions by an idle inhibitor, one at a time.
class InhibitorPowerAssertions : public PowerAssertions {
public:
    explicit InhibitorPowerAssertions(MessageBuses &buses) : m_inhibitor(buses) {}

    Result<AssertionID, qint32> createPreventUserIdleSystemSleep(const QString &name) override;
    void release(AssertionID id) override;

private:
    IdleInhibitor m_inhibitor;
    AssertionID m_lastId = 0;
};

/// Implements activities by idle inhibitors. The desktop does not end a process that the user started, so
/// nothing else is needed.
class InhibitorProcessActivity : public ProcessActivity {
public:
    explicit InhibitorProcessActivity(MessageBuses &buses) : m_buses(buses) {}

    std::unique_ptr<ActivityToken> beginUserInitiated(const QString &reason) override;

private:
    MessageBuses &m_buses;
};

} // namespace kova
