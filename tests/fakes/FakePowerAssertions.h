#pragma once

#include "PowerAssertions.h"

#include <QMap>

namespace kova {

/// Creates assertions with the ids 12345, 12346 and so on, or fails with a code.
class FakePowerAssertions : public PowerAssertions {
public:
    QMap<AssertionID, QString> held; ///< id to name
    qint32 failure = 0;              ///< the code to fail with, 0 to succeed
    int made = 0;

    Result<AssertionID, qint32> createPreventUserIdleSystemSleep(const QString &name) override {
        if (failure != 0) {
            return Failure{failure};
        }
        const AssertionID id = 12345U + static_cast<AssertionID>(made);
        made += 1;
        held.insert(id, name);
        return id;
    }
    void release(AssertionID id) override { held.remove(id); }
};

} // namespace kova
