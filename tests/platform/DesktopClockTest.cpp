#include "DesktopClock.h"

#include <QDateTime>
#include <QTest>

#include <limits>

using namespace kova;

namespace {

Instant instant(const char *utc) {
    const auto moment = QDateTime::fromString(QString::fromLatin1(utc), Qt::ISODateWithMs);
    return static_cast<double>(moment.toMSecsSinceEpoch()) / 1000 - instantEpoch;
}

QString text(const std::optional<LocalTime> &time) {
    return time ? QString::asprintf("%d:%02d:%02d day %d", time->hour, time->minute, time->second,
                                    time->weekday)
                : QStringLiteral("none");
}

} // namespace

class DesktopClockTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void nowIsTheSystemTime() {
        const auto system = [] { return static_cast<double>(QDateTime::currentMSecsSinceEpoch()) / 1000; };
        const double before = system();
        const Instant now = DesktopClock().now();
        QVERIFY(before <= now + instantEpoch + 1e-6 && now + instantEpoch <= system() + 0.001);
    }

    void localTimeFollowsTheCalendar_data() {
        QTest::addColumn<QByteArray>("zone");
        QTest::addColumn<double>("moment");
        QTest::addColumn<QString>("local");
        const auto row = [](const char *name, const char *zone, Instant moment, const char *local) {
            QTest::newRow(name) << QByteArray(zone) << moment << QString::fromLatin1(local);
        };
        row("the epoch", "UTC", 0, "0:00:00 day 2");
        row("before the epoch", "UTC", -0.25, "23:59:59 day 1");
        row("the end of a second", "Asia/Tokyo", instant("2026-01-03T15:00:59.999Z"), "0:00:59 day 1");
        row("a zone of 45 minutes", "Asia/Kathmandu", instant("2026-01-05T00:00:00Z"), "5:45:00 day 2");
        row("before summer time", "America/New_York", instant("2026-03-08T06:59:59Z"), "1:59:59 day 1");
        row("summer time begins", "America/New_York", instant("2026-03-08T07:00:00Z"), "3:00:00 day 1");
        row("summer time ends", "America/New_York", instant("2026-11-01T06:00:00Z"), "1:00:00 day 1");
        row("too large for a year", "UTC", 9e16, "none");
        row("too large for a second", "UTC", -1e300, "none");
        row("not a number", "UTC", std::numeric_limits<double>::quiet_NaN(), "none");
    }

    void localTimeFollowsTheCalendar() {
        QFETCH(QByteArray, zone);
        QFETCH(double, moment);
        QFETCH(QString, local);
        qputenv("TZ", zone);
        tzset();
        QCOMPARE(text(DesktopClock().localTime(moment)), local);
    }
};

QTEST_GUILESS_MAIN(DesktopClockTest)
#include "DesktopClockTest.moc"
