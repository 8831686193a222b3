#pragma once

#include "RunLoop.h"

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <ctime>

class QSocketNotifier;

namespace kova {

/// Returns the time from `now` to the next whole second, rounded up to milliseconds.
std::chrono::milliseconds delayToNextSecond(const timespec &now);

/// Runs an action just after each whole second of the wall clock, and immediately when the clock is set.
class WallClockTimer : public QObject {
public:
    WallClockTimer(QObject *owner, std::function<void()> action);
    ~WallClockTimer() override;

private:
    void watchClock();
    void schedule(const timespec &now);
    void onTimeout();
    void clockWasSet();
    void run() const;

    QPointer<QObject> m_owner;
    std::function<void()> m_action;
    QTimer m_timer;
    time_t m_targetSecond = 0;
    int m_clockDescriptor = -1;
    std::unique_ptr<QSocketNotifier> m_clockNotifier;
};

/// The main thread's event loop.
class EventLoopRunLoop : public RunLoop {
public:
    std::unique_ptr<QObject> everySecond(QObject *owner, std::function<void()> action) override {
        return std::make_unique<WallClockTimer>(owner, std::move(action));
    }
    void after(std::chrono::milliseconds delay, QObject *owner, std::function<void()> action) override {
        QTimer::singleShot(delay, Qt::PreciseTimer, owner, std::move(action));
    }
};

} // namespace kova
