#include "AlarmTimes.h"

#include "groups.h"

#include <QTest>
#include <limits>

using namespace kova;

class AlarmTimesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void runs() {
        const std::pair<AlarmGroup, const char *> rows[] = {
            {makeGroup(7, 0, 3, 1, true), "6:58 6:59 7:00"},
            {makeGroup(7, 0, 3, 5, false), "7:00 7:05 7:10"},
            {makeGroup(0, 2, 3, 5, true), "23:52 23:57 0:02"},
            {makeGroup(23, 55, 3, 5, false), "23:55 0:00 0:05"},
            {makeGroup(6, 30, 1, 10, true), "6:30"},
            {makeGroup(8, 0, 4, 0, true), "8:00 8:00 8:00 8:00"},
            {makeGroup(12, 0, 3, 1440, true), "12:00 12:00 12:00"},
            {makeGroup(12, 0, 3, 1000, false), "12:00 4:40 21:20"},
            {makeGroup(7, 0, 3, -5, true), "7:10 7:05 7:00"},
            {makeGroup(30, 90, 2, 5, false), "7:30 7:35"},
            {makeGroup(-1, -1, 1, 5, false), "22:59"},
        };
        for (const auto &[group, times] : rows) {
            QStringList found;
            for (qint64 index = 0; index < group.alarmCount; ++index) {
                const ClockTime time = alarmTime(group, index);
                found.append(timeText(time));
                QVERIFY(alarmsAt(group, time).contains(index));
            }
            QCOMPARE(found.join(u' '), QString::fromLatin1(times));
        }
    }

    void outOfRangeRunsHaveNoAlarms() {
        constexpr qint64 most = std::numeric_limits<qint64>::max();
        constexpr qint64 least = std::numeric_limits<qint64>::min();
        const QList<AlarmGroup> none{
            makeGroup(7, 0, 0, 5),       makeGroup(7, 0, -3, 5),
            makeGroup(7, 0, least, 5),   makeGroup(7, 0, most, 1, false),
            makeGroup(7, 0, 100'001, 1), makeGroup(7, 0, 3, most),
            makeGroup(7, 0, 3, least),   makeGroup(7, 0, 2, most - 400, false),
            makeGroup(most, 0, 1, 1),    makeGroup(1, most, 1, 1),
        };
        const QList<AlarmGroup> some{makeGroup(7, 0, 100'000, 1), makeGroup(7, 0, 2, most - 5000, false),
                                     makeGroup(7, 0, 1, most)};
        for (const AlarmGroup &group : none + some) {
            const bool rings = some.contains(group);
            QCOMPARE(hasAlarms(group), rings);
            QCOMPARE(alarmsAt(group, alarmTime(group, 0)).isEmpty(), !rings);
            const ClockTime time = alarmTime(group, most);
            QVERIFY(time.hour >= 0 && time.hour < 24 && time.minute >= 0 && time.minute < 60);
        }
    }

    void weekdays() {
        const std::pair<QList<qint64>, const char16_t *> rows[] = {
            {{}, u"一度だけ"},
            {{1, 2, 3, 4, 5, 6, 0}, u"毎日"},
            {{5, 1, 3}, u"月・水・金"},
            {{6, 0}, u"日・土"},
            {{1, 1}, u"月・月"},
            {{7, -1, 2}, u"火"},
            {{7}, u""},
            {QList<qint64>(2, 6) + QList<qint64>(1'000'000, -1), u"土・土"},
        };
        for (const auto &[days, text] : rows) {
            AlarmGroup group;
            group.repeatDays = days;
            QCOMPARE(repeatDaysText(group), QString::fromUtf16(text));
        }
    }
};

QTEST_GUILESS_MAIN(AlarmTimesTest)
#include "AlarmTimesTest.moc"
