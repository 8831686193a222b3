#include "EventLoopRunLoop.h"

#include "WallClockTimer.h"

namespace kova {

std::unique_ptr<RepeatingTimer> EventLoopRunLoop::everySecond(QObject *owner, std::function<void()> action) {
    return std::make_unique<WallClockTimer>(owner, std::move(action));
}

void EventLoopRunLoop::after(std::chrono::milliseconds delay, QObject *owner, std::function<void()> action) {
    QTimer::singleShot(delay, Qt::PreciseTimer, owner, std::move(action));
}

} // namespace kova
