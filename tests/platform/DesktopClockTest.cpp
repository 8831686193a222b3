#include "DesktopClock.h"

#include <QDateTime>
#include <QTest>
#include <limits>

using namespace kova;

class DesktopClockTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void localTimeFollowsTheCalendar() {
        const struct {
            const char *zone;
            Instant moment;
            const char *local;
        } rows[] = {
            {"UTC", 0, "0:00:00 day 2"},
            {"UTC", -0.25, "23:59:59 day 1"},
            {"Asia/Tokyo", instant("2026-01-03T15:00:59.999Z"), "0:00:59 day 1"},
            {"Asia/Kathmandu", instant("2026-01-05T00:00:00Z"), "5:45:00 day 2"},
            {"America/New_York", instant("2026-03-08T06:59:59Z"), "1:59:59 day 1"},
            {"America/New_York", instant("2026-03-08T07:00:00Z"), "3:00:00 day 1"},
            {"America/New_York", instant("2026-11-01T06:00:00Z"), "1:00:00 day 1"},
            {"UTC", 9e16, "none"}, // too large for a year
            {"UTC", -1e300, "none"},
            {"UTC", std::numeric_limits<double>::quiet_NaN(), "none"},
        };
        for (const auto &[zone, moment, local] : rows) {
            qputenv("TZ", zone);
            tzset();
            QCOMPARE(text(DesktopClock().localTime(moment)), QString::fromLatin1(local));
        }
    }

private:
    static Instant instant(const char *utc) {
        const auto moment = QDateTime::fromString(QString::fromLatin1(utc), Qt::ISODateWithMs);
        return static_cast<double>(moment.toMSecsSinceEpoch()) / 1000 - instantEpoch;
    }

    static QString text(const std::optional<LocalTime> &time) {
        return time ? QString::asprintf("%d:%02d:%02d day %d", time->hour, time->minute, time->second,
                                        time->weekday)
                    : QStringLiteral("none");
    }
};

QTEST_GUILESS_MAIN(DesktopClockTest)
#include "DesktopClockTest.moc"
