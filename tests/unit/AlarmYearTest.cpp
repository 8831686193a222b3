#include "FakeServices.h"
#include "RingOracle.h"

#include <QTest>

using namespace kova;
using namespace Qt::StringLiterals;

namespace {

// Ticks at a time in seconds since 1970. The scheduler must fire what the oracle expects.
void tickAt(double moment, FakeServices &services, RingOracle &oracle) {
    services.clock.time = moment - instantEpoch;
    services.log.lines.clear();
    services.scheduler.tick();
    QStringList expected;
    if (const std::optional<Ring> ring = oracle.tick(static_cast<time_t>(moment))) {
        expected.append(u"[Scheduler] FIRE: %1 alarm #%2"_s.arg(ring->first).arg(ring->second));
    }
    if (services.log.lines != expected) {
        qWarning() << QDateTime::fromSecsSinceEpoch(qint64(moment)) << "expected" << expected;
        QCOMPARE(services.log.lines, expected);
    }
}

} // namespace

class AlarmYearTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyAlarmRingsInItsMinute_data() {
        QTest::addColumn<QByteArray>("zone");
        for (const char *zone : {"Asia/Tokyo", "Europe/Berlin", "America/New_York", "Australia/Lord_Howe"}) {
            QTest::newRow(zone) << QByteArray(zone);
        }
    }
    void everyAlarmRingsInItsMinute() {
        QFETCH(QByteArray, zone);
        qputenv("TZ", zone);
        tzset();
        QRandomGenerator random(static_cast<quint32>(zone.size()));
        const QList<AlarmGroup> groups = randomGroups(random, 12);
        FakeServices services;
        services.scheduler.setGroups(groups);
        RingOracle oracle(groups);
        const auto tick = [&](double moment) { tickAt(moment, services, oracle); };

        const time_t newYear = 1767225600; // 2026-01-01 00:00:00 UTC
        constexpr time_t year = 365 * 86400;
        const bool isThorough = qEnvironmentVariableIsSet("KOVA_THOROUGH");
        time_t previousOffset = 0;
        for (time_t minute = newYear; minute < newYear + year && !QTest::currentTestFailed(); minute += 60) {
            tm local{};
            localtime_r(&minute, &local);
            const bool isChange = local.tm_gmtoff != previousOffset; // the clocks were just changed
            previousOffset = local.tm_gmtoff;
            if (!isThorough && !QList{2, 3, 9, 10}.contains(local.tm_mon)) {
                continue; // the clocks of these zones change in the other months only
            }
            const int kind = random.bounded(2000);
            if (isChange) {
                // Second by second through the hours around the change.
                for (time_t second = minute - 7200; second < minute + 7200; ++second) {
                    tick(static_cast<double>(second));
                }
            } else if (kind == 0) {
                // A late tick: within second 0 it fires, afterwards it does not.
                tick(static_cast<double>(minute) + 0.1 + 1.9 * random.generateDouble());
            } else if (kind == 1) {
                // The clock is set back or forward by up to two hours, for a minute.
                tick(static_cast<double>(minute + 60 * random.bounded(-120, 120)));
            } else {
                tick(static_cast<double>(minute));
                tick(static_cast<double>(minute) + 1 + random.bounded(59));
            }
        }
        QVERIFY(services.notificationCenter.requests.size() > (isThorough ? 5000 : 2000));
    }
};

QTEST_GUILESS_MAIN(AlarmYearTest)
#include "AlarmYearTest.moc"
