#pragma once

#include "RunLoop.h"

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <ctime>

class QSocketNotifier;

namespace kova {

/// From a time of the wall clock to just after its next whole second; never less, at most a millisecond more.
std::chrono::milliseconds delayToNextSecond(const timespec &now);

/// Runs an action just after each whole second of the wall clock, and at once when the clock was set. It aims
/// anew at every tick: a timer with a free phase would drift and step over a second now and then.
class WallClockTimer : public QObject, public RepeatingTimer {
public:
    WallClockTimer(QObject *owner, std::function<void()> action);
    ~WallClockTimer() override;

private:
    void watchClock();
    void aim(const timespec &now);
    void second();
    void clockWasSet();
    void run() const;

    QPointer<QObject> m_owner;
    std::function<void()> m_action;
    QTimer m_timer;
    time_t m_aimedAt = 0;
    int m_clockDescriptor = -1;
    std::unique_ptr<QSocketNotifier> m_clockNotifier;
};

} // namespace kova
