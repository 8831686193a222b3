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
    connect(&m_timer, &QTimer::timeout, this, &WallClockTimer::onTimeout);
    watchClock();
    schedule(wallClock());
}

WallClockTimer::~WallClockTimer() {
    m_clockNotifier.reset();
    if (m_clockDescriptor >= 0) {
        close(m_clockDescriptor);
    }
}

// A timerfd that never expires but becomes readable when the clock is set or the machine resumes.
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

void WallClockTimer::schedule(const timespec &now) {
    m_targetSecond = now.tv_sec + 1;
    m_timer.start(delayToNextSecond(now));
}

void WallClockTimer::onTimeout() {
    // The wall clock runs slower than the timer's monotonic clock while it is being adjusted.
    constexpr long earliest = 900'000'000;
    const timespec now = wallClock();
    const bool early = now.tv_sec == m_targetSecond - 1 && now.tv_nsec >= earliest;
    schedule(now);
    if (!early) {
        run();
    }
}

void WallClockTimer::clockWasSet() {
    quint64 expirations = 0;
    const ssize_t count = read(m_clockDescriptor, &expirations, sizeof expirations);
    if (count > 0) {
        // It expired after all, so the process runs under a simulated clock. Stop watching, or the notifier
        // would fire continuously.
        m_clockNotifier->setEnabled(false);
    }
    if (count >= 0 || errno != ECANCELED) {
        return;
    }
    schedule(wallClock());
    run();
}

// The action may destroy the timer.
void WallClockTimer::run() const {
    if (m_owner) {
        const std::function<void()> action = m_action;
        action();
    }
}

} // namespace kova
