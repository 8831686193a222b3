#include "AlarmTimes.h"

#include "groups.h"

#include <QRandomGenerator>
#include <QTest>
#include <limits>

using namespace kova;

namespace {

QStringList timesOf(const AlarmGroup &group) {
    QStringList times;
    for (qint64 index = 0; index < group.alarmCount; ++index) {
        times.append(timeText(alarmTime(group, index)));
    }
    return times;
}

} // namespace

class AlarmTimesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void runs_data() {
        QTest::addColumn<QList<int>>("numbers"); // hour, minute, count, interval
        QTest::addColumn<bool>("startBefore");
        QTest::addColumn<QString>("times");
        const auto row = [](QList<int> numbers, bool startBefore, const char *times) {
            QTest::addRow("%s", times) << numbers << startBefore << QString::fromLatin1(times);
        };
        row({7, 0, 3, 1}, true, "6:58 6:59 7:00");
        row({7, 0, 3, 5}, false, "7:00 7:05 7:10");
        row({0, 2, 3, 5}, true, "23:52 23:57 0:02");
        row({23, 55, 3, 5}, false, "23:55 0:00 0:05");
        row({6, 30, 1, 10}, true, "6:30");
        row({8, 0, 4, 0}, true, "8:00 8:00 8:00 8:00");
        row({12, 0, 3, 1440}, true, "12:00 12:00 12:00");
        row({12, 0, 3, 1440}, false, "12:00 12:00 12:00");
        row({12, 0, 3, 1000}, false, "12:00 4:40 21:20");
        row({7, 0, 3, -5}, true, "7:10 7:05 7:00");
        row({30, 90, 2, 5}, false, "7:30 7:35");
        row({-1, -1, 1, 5}, false, "22:59");
    }
    void runs() {
        QFETCH(QList<int>, numbers);
        QFETCH(bool, startBefore);
        QFETCH(QString, times);
        const AlarmGroup group = makeGroup(numbers[0], numbers[1], numbers[2], numbers[3], startBefore);
        QCOMPARE(timesOf(group).join(u' '), times);
    }

    // The indexes found from step to step are those whose own times agree.
    void alarmsAtATimeAgreeWithTheWholeRun() {
        QRandomGenerator random(7);
        const QList<qint64> intervals{0, 1, 5, 7, 30, 60, 480, 720, 1440, 1441, -1, -45, 1000003};
        for (int round = 0; round < 100; ++round) {
            const AlarmGroup group =
                makeGroup(random.bounded(-30, 60), random.bounded(-70, 130), random.bounded(0, 2000),
                          intervals.at(random.bounded(intervals.size())), random.bounded(2) == 0);
            QMap<int, QList<qint64>> walked;
            for (qint64 index = 0; index < group.alarmCount; ++index) {
                const ClockTime time = alarmTime(group, index);
                walked[time.hour * 60 + time.minute].append(index);
            }
            for (int minute = 0; minute < 1440; minute += 1 + random.bounded(3)) {
                QCOMPARE(alarmsAt(group, {minute / 60, minute % 60}), walked.value(minute));
            }
        }
    }

    void runsOutsideOfAllReasonHaveNoAlarms_data() {
        constexpr qint64 most = std::numeric_limits<qint64>::max();
        constexpr qint64 least = std::numeric_limits<qint64>::min();
        QTest::addColumn<AlarmGroup>("group");
        QTest::addColumn<bool>("has");
        QTest::newRow("none") << makeGroup(7, 0, 0, 5, true) << false;
        QTest::newRow("negative") << makeGroup(7, 0, -3, 5, true) << false;
        QTest::newRow("least count") << makeGroup(7, 0, least, 5, true) << false;
        QTest::newRow("enormous count") << makeGroup(7, 0, most, 1, false) << false;
        QTest::newRow("too many") << makeGroup(7, 0, 100'001, 1, false) << false;
        QTest::newRow("as many as can be") << makeGroup(7, 0, 100'000, 1, false) << true;
        QTest::newRow("enormous interval") << makeGroup(7, 0, 3, most, true) << false;
        QTest::newRow("least interval") << makeGroup(7, 0, 3, least, false) << false;
        QTest::newRow("interval that fits") << makeGroup(7, 0, 2, most - 5000, false) << true;
        QTest::newRow("end that does not fit") << makeGroup(7, 0, 2, most - 400, false) << false;
        QTest::newRow("enormous hour") << makeGroup(most, 0, 1, 1, true) << false;
        QTest::newRow("enormous minute") << makeGroup(1, most, 1, 1, true) << false;
        QTest::newRow("interval of one alarm") << makeGroup(7, 0, 1, most, true) << true;
    }
    void runsOutsideOfAllReasonHaveNoAlarms() {
        QFETCH(AlarmGroup, group);
        QFETCH(bool, has);
        QCOMPARE(hasAlarms(group), has);
        bool rings = false;
        for (int minute = 0; minute < 1440; ++minute) {
            rings = rings || !alarmsAt(group, {minute / 60, minute % 60}).isEmpty();
        }
        QCOMPARE(rings, has);
        const ClockTime time = alarmTime(group, std::numeric_limits<qint64>::max());
        QVERIFY(time.hour >= 0 && time.hour < 24 && time.minute >= 0 && time.minute < 60);
    }

    void theLastAlarmIsTheLastOfTheRun() {
        QVERIFY(isLastAlarm(makeGroup(7, 0, 3, 5, true), 2));
        QVERIFY(!isLastAlarm(makeGroup(7, 0, 3, 5, false), 0));
        QVERIFY(isLastAlarm(makeGroup(7, 0, 1, 5, false), 0));
        QVERIFY(!isLastAlarm(makeGroup(7, 0, 0, 5, false), -1));
    }

    void texts() {
        QCOMPARE(timeText(9, 5), QStringLiteral("9:05"));
        QCOMPARE(timeText(0, 0), QStringLiteral("0:00"));
        QCOMPARE(timeText(30, 100), QStringLiteral("30:100"));
        QCOMPARE(sequenceText(makeGroup(7, 0, 2, 10, true)), QStringLiteral("2回 / 10分間隔"));
        QVERIFY(!sequenceText(makeGroup(7, 0, 1, 10, true)));
        QVERIFY(!sequenceText(makeGroup(7, 0, -5, 10, true)));
    }

    void weekdays_data() {
        QTest::addColumn<QList<qint64>>("days");
        QTest::addColumn<QString>("text");
        QTest::newRow("none") << QList<qint64>{} << QStringLiteral("一度だけ");
        QTest::newRow("all") << QList<qint64>{1, 2, 3, 4, 5, 6, 0} << QStringLiteral("毎日");
        QTest::newRow("any seven") << QList<qint64>{1, 1, 1, 1, 1, 1, 9} << QStringLiteral("毎日");
        QTest::newRow("sorted") << QList<qint64>{5, 1, 3} << QStringLiteral("月・水・金");
        QTest::newRow("weekend") << QList<qint64>{6, 0} << QStringLiteral("日・土");
        QTest::newRow("twice") << QList<qint64>{1, 1} << QStringLiteral("月・月");
        QTest::newRow("unknown") << QList<qint64>{7, -1, 2} << QStringLiteral("火");
        QTest::newRow("only unknown") << QList<qint64>{7} << QString();
    }
    void weekdays() {
        QFETCH(QList<qint64>, days);
        QFETCH(QString, text);
        AlarmGroup group;
        group.repeatDays = days;
        QVERIFY(repeatDaysText(group) == text);
    }
};

QTEST_GUILESS_MAIN(AlarmTimesTest)
#include "AlarmTimesTest.moc"
