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

} // namespace kova
