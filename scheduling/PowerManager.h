#pragma once

#include "Log.h"
#include "PowerAssertions.h"

#include <QObject>

namespace kova {

/// Prevents idle system sleep between preventSleep() and allowSleep(). Main thread.
class PowerManager : public QObject {
    Q_OBJECT

public:
    PowerManager(PowerAssertions &assertions, Log &log) : m_assertions(assertions), m_log(log) {}
    ~PowerManager() override { allowSleep(); }

    /// Returns the shared instance, which uses the installed ports.
    static PowerManager &shared();

    bool isPreventingSleep() const { return m_isPreventingSleep; }

    /// Logs a failure; the next call retries.
    void preventSleep();
    void allowSleep();

Q_SIGNALS:
    void isPreventingSleepChanged();

private:
    PowerAssertions &m_assertions;
    Log &m_log;

    bool m_isPreventingSleep = false;
    AssertionID m_assertionID = 0; // the last one created, kept after its release
};

} // namespace kova
