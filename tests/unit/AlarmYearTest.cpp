#include "FakeServices.h"
#include "RingOracle.h"

#include <QTest>

using namespace kova;

class AlarmYearTest : public QObject {
    Q_OBJECT

    std::unique_ptr<FakeServices> m_services;
    std::unique_ptr<RingOracle> m_oracle;
    int m_rings = 0;

    void prepare(const QByteArray &zone, QRandomGenerator &random, int count) {
        qputenv("TZ", zone);
        tzset();
        const QList<AlarmGroup> groups = randomGroups(random, count);
        m_services = std::make_unique<FakeServices>();
        m_services->clock.setZone(zone);
        m_services->scheduler.setGroups(groups);
        m_oracle = std::make_unique<RingOracle>(groups);
        m_rings = 0;
    }

    // One tick at a time in seconds since 1970. Returns false if the scheduler and the oracle disagree.
    bool tickAt(double moment) {
        m_services->clock.time = moment - instantEpoch;
        m_services->log.lines.clear();
        m_services->scheduler.tick();
        QStringList expected;
        if (const std::optional<Ring> ring = m_oracle->tick(static_cast<time_t>(moment))) {
            expected.append(
                QStringLiteral("[Scheduler] FIRE: %1 alarm #%2").arg(ring->first).arg(ring->second));
            m_rings += 1;
        }
        const bool agree = m_services->log.lines == expected;
        if (!agree) {
            qWarning() << QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(moment * 1000)) << "expected"
                       << expected << "but got" << m_services->log.lines;
        }
        return agree;
    }

private Q_SLOTS:
    void everyAlarmRingsInItsMinute_data() {
        QTest::addColumn<QByteArray>("zone");
        for (const char *zone : {"Asia/Tokyo", "Europe/Berlin", "America/New_York", "Australia/Lord_Howe"}) {
            QTest::newRow(zone) << QByteArray(zone);
        }
    }
    void everyAlarmRingsInItsMinute() {
        QFETCH(QByteArray, zone);
        QRandomGenerator random(static_cast<quint32>(zone.size()));
        prepare(zone, random, 12);

        const time_t newYear = 1767225600; // 2026-01-01 00:00:00 UTC
        constexpr time_t year = 365 * 86400;
        time_t previousOffset = 0;
        for (time_t minute = newYear; minute < newYear + year; minute += 60) {
            tm local{};
            localtime_r(&minute, &local);
            const bool isChange = local.tm_gmtoff != previousOffset; // the clocks were just changed
            previousOffset = local.tm_gmtoff;
            const int kind = random.bounded(2000);
            if (isChange) {
                // Second by second through the hours around the change.
                for (time_t second = minute - 7200; second < minute + 7200; ++second) {
                    QVERIFY(tickAt(static_cast<double>(second)));
                }
            } else if (kind == 0) {
                // A late tick: within second 0 it fires, afterwards it does not.
                QVERIFY(tickAt(static_cast<double>(minute) + 0.1 + 1.9 * random.generateDouble()));
            } else if (kind == 1) {
                // The clock is set back or forward, by up to two hours, and back again.
                const time_t start = minute + random.bounded(-7200, 7200);
                for (time_t second = start; second < start + 120; ++second) {
                    QVERIFY(tickAt(static_cast<double>(second)));
                }
            } else {
                QVERIFY(tickAt(static_cast<double>(minute)));
                QVERIFY(tickAt(static_cast<double>(minute) + 1 + random.bounded(59)));
            }
        }
        QVERIFY2(m_rings > 5000, qPrintable(QString::number(m_rings)));
    }
};

QTEST_GUILESS_MAIN(AlarmYearTest)
#include "AlarmYearTest.moc"
