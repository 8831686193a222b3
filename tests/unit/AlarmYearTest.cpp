#include "FakeServices.h"

#include <QRandomGenerator>
#include <QTest>
#include <ctime>
#include <map>
#include <set>

using namespace kova;

namespace {

/// One alarm that rang: the group's label and the alarm's number.
using Ring = std::pair<QString, qint64>;

/// What must ring, worked out the long way: every alarm of every group written into a table of the day, and
/// the time taken from the C library instead of the fake clock.
class Oracle {
public:
    explicit Oracle(const QList<AlarmGroup> &groups) {
        for (const AlarmGroup &group : groups) {
            for (qint64 k = 0; group.isEnabled && k < group.alarmCount; ++k) {
                qint64 minute = group.targetHour * 60 + group.targetMinute;
                for (qint64 step = 0; step < (group.startBefore ? group.alarmCount - 1 - k : k); ++step) {
                    minute += group.startBefore ? -group.intervalMinutes : group.intervalMinutes;
                }
                while (minute < 0) {
                    minute += 24 * 60;
                }
                m_table[minute % (24 * 60)].push_back({{group.label, k + 1}, group.repeatDays});
            }
        }
    }

    std::optional<Ring> tick(time_t moment) {
        tm local{};
        localtime_r(&moment, &local);
        if (local.tm_sec != 0) {
            return std::nullopt;
        }
        if (local.tm_hour == 0 && local.tm_min == 0) {
            m_rang.clear();
        }
        for (const auto &[ring, days] : m_table[local.tm_hour * 60 + local.tm_min]) {
            const bool isDay = days.isEmpty() || std::count(days.begin(), days.end(), local.tm_wday) > 0;
            if (isDay && m_rang.insert(ring).second) {
                return ring;
            }
        }
        return std::nullopt;
    }

private:
    struct Entry {
        Ring ring;
        QList<qint64> days;
    };
    std::map<qint64, std::vector<Entry>> m_table;
    std::set<Ring> m_rang;
};

QList<AlarmGroup> randomGroups(QRandomGenerator &random) {
    QList<AlarmGroup> groups;
    for (int i = 0; i < 12; ++i) {
        AlarmGroup group;
        group.label = QString::number(i);
        // Every third group lives around the hours at which clocks are changed, or around midnight.
        group.targetHour = i % 3 == 0 ? random.bounded(4) : random.bounded(24);
        group.targetMinute = random.bounded(60);
        group.alarmCount = random.bounded(1, 21);
        group.intervalMinutes = random.bounded(0, 31);
        group.startBefore = random.bounded(2) == 0;
        group.isEnabled = random.bounded(8) != 0;
        for (qint64 day = 0; day < 7; ++day) {
            if (random.bounded(3) == 0) {
                group.repeatDays.prepend(day);
            }
        }
        groups.append(group);
    }
    return groups;
}

} // namespace

class AlarmYearTest : public QObject {
    Q_OBJECT

    std::unique_ptr<FakeServices> m_services;
    std::unique_ptr<Oracle> m_oracle;
    int m_rings = 0;

    // One tick at a moment in seconds since 1970; false when the scheduler and the oracle disagree.
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
        qputenv("TZ", zone);
        tzset();
        QRandomGenerator random(static_cast<quint32>(zone.size()));
        const QList<AlarmGroup> groups = randomGroups(random);
        m_services = std::make_unique<FakeServices>();
        m_services->clock.setZone(zone);
        m_services->scheduler.setGroups(groups);
        m_oracle = std::make_unique<Oracle>(groups);
        m_rings = 0;

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
                // A tick that comes late: below a second it counts, later it is no longer second 0.
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
