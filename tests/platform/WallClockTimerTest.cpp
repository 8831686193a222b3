#include "WallClockTimer.h"

#include <QTest>

using namespace kova;
using namespace std::chrono;

class WallClockTimerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aimsJustAfterTheNextSecond_data() {
        QTest::addColumn<qint64>("nanoseconds");
        QTest::addColumn<qint64>("delay");
        QTest::newRow("on the second") << 0LL << 1000LL;
        QTest::newRow("just after it") << 1LL << 1000LL;
        QTest::newRow("a whole millisecond after it") << 1'000'000LL << 999LL;
        QTest::newRow("in the middle") << 500'400'000LL << 500LL;
        QTest::newRow("just before the next one") << 999'999'999LL << 1LL;
    }

    // Never before it, where the old second would still be read, and less than a millisecond too late.
    void aimsJustAfterTheNextSecond() {
        QFETCH(qint64, nanoseconds);
        QFETCH(qint64, delay);
        const milliseconds aimed = delayToNextSecond({.tv_sec = 1'800'000'000, .tv_nsec = nanoseconds});
        QCOMPARE(qint64{aimed.count()}, delay);
        const qint64 late = nanoseconds + delay * 1'000'000 - 1'000'000'000;
        QVERIFY(late >= 0 && late < 1'000'000);
    }
};

QTEST_GUILESS_MAIN(WallClockTimerTest)
#include "WallClockTimerTest.moc"
