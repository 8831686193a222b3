#pragma once

#include "PowerAssertions.h"

#include <QObject>

namespace kova {

class Log;

/// Holds off idle system sleep between `preventSleep` and `allowSleep`. Main thread.
class PowerManager : public QObject {
    Q_OBJECT

public:
    PowerManager(PowerAssertions &assertions, Log &log);
    ~PowerManager() override;

    /// The one manager of the process, on the installed ports.
    static PowerManager &shared();

    /// True exactly while an assertion is held.
    bool isPreventingSleep() const { return m_isPreventingSleep; }

    /// A failure is logged; the next call tries again.
    void preventSleep();
    void allowSleep();

Q_SIGNALS:
    void isPreventingSleepChanged();

private:
    PowerAssertions &m_assertions;
    Log &m_log;

    bool m_isPreventingSleep = false;
    AssertionID m_assertionID = 0; // the last one made, also after its release
};

} // namespace kova
