#include "WallClockTimer.h"

#include <QSocketNotifier>
#include <cerrno>
#include <sys/timerfd.h>
#include <unistd.h>

namespace kova {

namespace {

timespec wallClock() {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    return now;
}

} // namespace

std::chrono::milliseconds delayToNextSecond(const timespec &now) {
    const std::chrono::nanoseconds left = std::chrono::seconds(1) - std::chrono::nanoseconds(now.tv_nsec);
    return std::chrono::ceil<std::chrono::milliseconds>(left);
}

WallClockTimer::WallClockTimer(QObject *owner, std::function<void()> action)
    : m_owner(owner),
      m_action(std::move(action)) {
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &WallClockTimer::second);
    watchClock();
    aim(wallClock());
}

WallClockTimer::~WallClockTimer() {
    m_clockNotifier.reset();
    if (m_clockDescriptor >= 0) {
        close(m_clockDescriptor);
    }
}

// An alarm of the kernel's that never comes due, and that is cancelled when the clock is set or the machine
// wakes up. Without it the next tick would still follow the new time, up to a second late.
void WallClockTimer::watchClock() {
    m_clockDescriptor = timerfd_create(CLOCK_REALTIME, TFD_NONBLOCK | TFD_CLOEXEC);
    if (m_clockDescriptor < 0) {
        return;
    }
    constexpr time_t never = 1LL << 33; // in the 23rd century
    const itimerspec due{.it_interval = {}, .it_value = {.tv_sec = never, .tv_nsec = 0}};
    if (timerfd_settime(m_clockDescriptor, TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET, &due, nullptr) != 0) {
        return;
    }
    m_clockNotifier = std::make_unique<QSocketNotifier>(m_clockDescriptor, QSocketNotifier::Read);
    connect(m_clockNotifier.get(), &QSocketNotifier::activated, this, &WallClockTimer::clockWasSet);
}

void WallClockTimer::aim(const timespec &now) {
    m_aimedAt = now.tv_sec + 1;
    m_timer.start(delayToNextSecond(now));
}

void WallClockTimer::second() {
    // The wall clock may run a little slower than the timer's while it is being adjusted.
    constexpr long mostEarly = 900'000'000;
    const timespec now = wallClock();
    const bool early = now.tv_sec == m_aimedAt - 1 && now.tv_nsec >= mostEarly;
    aim(now);
    if (!early) {
        run();
    }
}

void WallClockTimer::clockWasSet() {
    quint64 expirations = 0;
    const ssize_t count = read(m_clockDescriptor, &expirations, sizeof expirations);
    if (count > 0) {
        // It came due, under a clock that is not the kernel's: no help, and it must not spin.
        m_clockNotifier->setEnabled(false);
    }
    if (count >= 0 || errno != ECANCELED) {
        return;
    }
    aim(wallClock());
    run();
}

// The action may end the timer.
void WallClockTimer::run() const {
    if (m_owner) {
        const std::function<void()> action = m_action;
        action();
    }
}

} // namespace kova
