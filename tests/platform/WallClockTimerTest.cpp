#include "WallClockTimer.h"

#include <QTest>
#include <cerrno>
#include <sys/eventfd.h>
#include <sys/syscall.h>
#include <sys/timerfd.h>
#include <unistd.h>

using namespace kova;
using namespace std::chrono;

namespace {

timespec theWallClock{};
int theReadings = 0; // of the wall clock
int theClockWatch = -1;

} // namespace

// These replace the C library's functions: the wall clock and the notice that it was set are the test's.

extern "C" int clock_gettime(clockid_t clock, timespec *now) noexcept {
    if (clock != CLOCK_REALTIME) {
        return static_cast<int>(syscall(SYS_clock_gettime, clock, now));
    }
    *now = theWallClock;
    theReadings += 1;
    return 0;
}

extern "C" int timerfd_create(clockid_t, int) noexcept {
    theClockWatch = eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC);
    return theClockWatch;
}

extern "C" int timerfd_settime(int, int flags, const itimerspec *, itimerspec *) noexcept {
    return flags == (TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET) ? 0 : -1;
}

extern "C" ssize_t read(int descriptor, void *buffer, size_t size) {
    const ssize_t count = syscall(SYS_read, descriptor, buffer, size);
    if (count > 0 && descriptor == theClockWatch) {
        errno = ECANCELED;
        return -1;
    }
    return count;
}

class WallClockTimerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void delayEndsJustAfterTheNextSecond() {
        const std::pair<long, milliseconds> rows[] = {
            {0, 1000ms}, {1, 1000ms}, {1'000'000, 999ms}, {500'400'000, 500ms}, {999'999'999, 1ms}};
        for (const auto &[nanoseconds, delay] : rows) {
            QCOMPARE(delayToNextSecond({.tv_sec = 1'800'000'000, .tv_nsec = nanoseconds}), delay);
        }
    }

    void earlyWakeUpIsNoTick() {
        theWallClock = {.tv_sec = 1000, .tv_nsec = 999'000'000};
        int ticks = 0;
        const WallClockTimer timer(this, [&ticks] { ticks += 1; });
        for (int i = 0; i < 3; ++i) { // the wall clock is slower than the timer's
            theWallClock.tv_nsec += 200'000;
            theReadings = 0;
            QTRY_VERIFY(theReadings > 0);
            QCOMPARE(ticks, 0);
        }
        theWallClock = {.tv_sec = 1001, .tv_nsec = 100'000};
        QTRY_COMPARE(ticks, 1);
    }

    void settingTheClockIsATick() {
        for (const time_t second : {5000, 500}) { // forwards and backwards
            theWallClock = {.tv_sec = 1000, .tv_nsec = 1'000};
            int ticks = 0;
            const WallClockTimer timer(this, [&ticks] { ticks += 1; });
            QCoreApplication::processEvents();
            QCOMPARE(ticks, 0);
            theWallClock = {.tv_sec = second, .tv_nsec = 998'500'000};
            QCOMPARE(eventfd_write(theClockWatch, 1), 0);
            QCoreApplication::processEvents(); // the next tick of the old time is a second away
            QVERIFY(ticks > 0);
            theWallClock = {.tv_sec = second + 1, .tv_nsec = 500'000};
            QTRY_COMPARE_WITH_TIMEOUT(ticks, 2, 900); // the timer follows the new time
        }
    }

    void actionMayDestroyTheTimer() {
        theWallClock = {.tv_sec = 1000, .tv_nsec = 999'000'000};
        std::unique_ptr<WallClockTimer> timer;
        timer = std::make_unique<WallClockTimer>(this, [&timer] { timer.reset(); });
        theWallClock = {.tv_sec = 1001, .tv_nsec = 0};
        QTRY_VERIFY(!timer);
    }
};

QTEST_GUILESS_MAIN(WallClockTimerTest)
#include "WallClockTimerTest.moc"
