#pragma once

#include "Result.h"

namespace kova {

/// Identifies a held assertion.
using AssertionID = quint32;

/// Prevents idle sleep. Main thread; a call blocks for at most half a second.
class PowerAssertions {
public:
    virtual ~PowerAssertions() = default;

    /// Prevents idle sleep of the system, not of the screen, until release(). The desktop shows the name as
    /// the reason. The error is the service's result code, never 0.
    virtual Result<AssertionID, qint32> createPreventUserIdleSystemSleep(const QString &name) = 0;

    virtual void release(AssertionID id) = 0;
};

} // namespace kova
