#pragma once

#include "IdleInhibitor.h"
#include "PowerAssertions.h"

namespace kova {

/// Implements assertions, one at a time, and activities by idle inhibitors. The desktop does not end a
/// process that the user started, so an activity needs nothing else.
class InhibitorPowerAssertions : public PowerAssertions {
public:
    explicit InhibitorPowerAssertions(MessageBuses &buses) : m_buses(buses), m_inhibitor(buses) {}

    Result<AssertionID, qint32> createPreventUserIdleSystemSleep(const QString &name) override;
    void release(AssertionID id) override;
    std::unique_ptr<QObject> beginUserInitiated(const QString &reason) override;

private:
    MessageBuses &m_buses;
    IdleInhibitor m_inhibitor;
    AssertionID m_lastId = 0;
};

} // namespace kova
