#include "FakeServices.h"
#include "groups.h"

#include <QTest>

using namespace kova;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

AlarmGroup makeGroup(const QString &label, int hour, int minute, qint64 count, qint64 interval,
                     bool startBefore = true) {
    AlarmGroup group = kova::makeGroup(hour, minute, count, interval, startBefore);
    group.label = label;
    return group;
}

/// The services on fake ports, with the scheduler started on Monday, 2026-01-05.
struct Services : FakeServices {
    Services(const QTime &time, const QList<AlarmGroup> &groups) {
        clock.set({2026, 1, 5}, time);
        scheduler.start(groups);
        log.lines.clear();
    }

    QStringList fires() const { return log.lines.filter(u"FIRE"_s); }
    bool isSilent() const {
        return audioPlayers.sounding.isEmpty() && synthesizers.reading.isNull() && !scheduler.activeAlarm();
    }
};

} // namespace

class AlarmSchedulerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void startsTimerAndRequestsPermissionOnce() {
        FakeServices services;
        QCOMPARE(services.notificationCenter.asked, 1);
        services.scheduler.start({});
        services.scheduler.start({AlarmGroup()});
        QCOMPARE(services.runLoop.timersMade, 1);
        QCOMPARE(services.scheduler.groups().size(), 1);
        QCOMPARE(services.notificationCenter.asked, 1);
        services.notificationCenter.answer(true, std::nullopt);
        services.notificationCenter.answer(false, u"no service"_s);
        QCOMPARE(services.log.lines,
                 (QStringList{u"[Scheduler] Started"_s, u"[Scheduler] Notifications granted"_s,
                              u"[Scheduler] Notification error: no service"_s,
                              u"[Scheduler] Notifications denied"_s}));
    }

    void firingPerformsItsStepsInOrder() {
        AlarmGroup group = makeGroup(u"朝"_s, 7, 0, 3, 5);
        group.ttsEnabled = true;
        group.ttsMessage = u"おはよう"_s;
        group.ttsVolume = 0.5F;
        Services services({6, 49, 59}, {group});
        bool isHeardBeforeItIsShown = false;
        services.notificationCenter.added = [&] {
            isHeardBeforeItIsShown = services.soundPlayer.isPlaying() &&
                                     services.synthesizers.reading == group.ttsMessage &&
                                     services.application.activations == 0;
        };
        services.runLoop.advance(1s);
        QVERIFY(isHeardBeforeItIsShown);
        QCOMPARE(services.log.lines,
                 (QStringList{u"[Scheduler] FIRE: 朝 alarm #1"_s,
                              u"[TTSPlayer] speaking: \"おはよう\" vol=0.5 loop=true"_s}));
        QVERIFY(services.scheduler.activeAlarm() == (FiringAlarm{group, 0, services.clock.time}));
        QCOMPARE(services.scheduler.firedToday(), QSet{group.idText() + u"-0"_s});
        QCOMPARE(services.soundPlayer.currentPreviewId(), u"alarm"_s);
        QCOMPARE(services.audioPlayers.sounding.first().loops, -1);
        QCOMPARE(services.application.activations, 1);
    }

    void notificationContainsThePlannedTime() {
        Services services({6, 49, 59},
                          {makeGroup(QString(), 7, 5, 2, 15), makeGroup(u"Work"_s, 23, 55, 1, 1),
                           makeGroup(u" "_s, 8, 0, 1, 1), makeGroup(QString(2000, u'長'), 9, 0, 1, 1)});
        services.runLoop.advance(18h);
        QStringList bodies;
        for (const NotificationRequest &request : services.notificationCenter.requests) {
            QCOMPARE(request.title, u"KOVA"_s);
            QCOMPARE(request.lifetime, 55s);
            bodies.append(request.body);
        }
        QCOMPARE(bodies, (QStringList{u"アラーム 6:50"_s, u"アラーム 7:05"_s, u"  — 8:00"_s,
                                      QString(1000, u'長') + u"… — 9:00"_s, u"Work — 23:55"_s}));
    }

    void speaksTheMessageOfEachAlarm() {
        const QString m = u"m"_s;
        const QString last = u"last"_s;
        const std::tuple<qint64, bool, bool, QString, QStringList> rows[] = {
            {3, true, true, m, {m, m, last}}, {3, true, false, m, {m, m}}, {3, false, true, m, {last}},
            {3, false, false, m, {}},         {3, true, true, {}, {last}}, {1, true, false, m, {}},
            {1, false, true, m, {last}},
        };
        for (const auto &[count, ttsEnabled, ttsLastEnabled, message, spoken] : rows) {
            AlarmGroup group = makeGroup(QString(), 7, 0, count, 1);
            group.ttsEnabled = ttsEnabled;
            group.ttsMessage = message;
            group.ttsLastEnabled = ttsLastEnabled;
            group.ttsLastMessage = last;
            Services services({6, 50}, {group});
            services.runLoop.advance(20min);
            QCOMPARE(services.synthesizers.readings, spoken);
        }
    }

    void endsAutomatically() {
        Services services({6, 59, 58}, {makeGroup(QString(), 7, 0, 3, 1, false)});
        services.runLoop.advance(2s + 54999ms);
        QVERIFY(services.scheduler.activeAlarm());
        services.runLoop.advance(1ms);
        QVERIFY(services.isSilent());
        services.runLoop.advance(5s);
        QCOMPARE(services.scheduler.activeAlarm()->index, 1);
        services.clock.set({2026, 1, 5}, {7, 1, 59}); // set forward while it rings
        services.runLoop.advance(55s);                // its automatic stop finds the group's next alarm
        QCOMPARE(services.scheduler.activeAlarm()->index, 2);
    }

    void stoppedAlarmDoesNotRingAgainThatDay() {
        Services services({6, 59, 59}, {makeGroup(QString(), 7, 0, 1, 1)});
        services.runLoop.advance(1s);
        services.scheduler.endRinging();
        QVERIFY(services.isSilent());
        services.scheduler.tick();
        services.clock.set({2026, 1, 5}, {6, 59, 59}); // the user sets the clock back
        services.runLoop.advance(1h);
        QCOMPARE(services.fires().size(), 1);
        services.runLoop.advance(24h);
        QCOMPARE(services.fires().size(), 2);
    }

    void newerAlarmReplacesRingingAlarm() {
        AlarmGroup b = makeGroup(u"b"_s, 7, 1, 1, 1);
        b.soundName = u"wakeup_pulse"_s;
        Services services({6, 59, 59}, {b, makeGroup(u"a"_s, 7, 0, 1, 1)});
        services.runLoop.advance(31s);
        QStringList seen;
        connect(&services.scheduler, &AlarmScheduler::activeAlarmChanged, this, [&] {
            seen.append(services.scheduler.activeAlarm() ? services.scheduler.activeAlarm()->group.label
                                                         : u"none"_s);
        });
        // The clock is set forward to b's minute while a still rings.
        services.clock.set({2026, 1, 5}, {7, 0, 59});
        services.runLoop.advance(1s);
        QCOMPARE(seen, (QStringList{u"none"_s, u"b"_s}));
        QCOMPARE(services.audioPlayers.sounding.size(), 1);
        services.runLoop.advance(54s); // a's automatic stop finds b
        QCOMPARE(services.scheduler.activeAlarm()->group.label, u"b"_s);
        QCOMPARE(services.audioPlayers.sounding.first().path, u"/resources/Sounds/wakeup_pulse.mp3"_s);
        services.runLoop.advance(1s);
        QVERIFY(services.isSilent());
    }

    void editsDoNotAffectRingingAlarm() {
        AlarmGroup group = makeGroup(u"old"_s, 7, 0, 1, 1);
        Services services({6, 59, 59}, {group});
        services.runLoop.advance(1s);
        group.label = u"new"_s;
        services.scheduler.setGroups({group});
        QCOMPARE(services.scheduler.activeAlarm()->group.label, u"old"_s);
        services.scheduler.setGroups({});
        services.runLoop.advance(54s);
        QVERIFY(services.scheduler.activeAlarm());
        services.runLoop.advance(1s);
        QVERIFY(services.isSilent());
    }

    void firesOneAlarmPerTick() {
        Services services({6, 59, 59}, {makeGroup(u"a"_s, 7, 0, 2, 0), makeGroup(u"b"_s, 7, 0, 1, 1)});
        services.runLoop.advance(23h);
        QCOMPARE(services.fires(), QStringList{u"[Scheduler] FIRE: a alarm #1"_s});
        // A second tick in the same second continues after the alarm that the first one fired.
        services.clock.set({2026, 1, 6}, {7, 0, 0});
        services.log.lines.clear();
        for (int tick = 0; tick < 4; ++tick) {
            services.scheduler.tick();
        }
        QCOMPARE(services.fires(),
                 (QStringList{u"[Scheduler] FIRE: a alarm #1"_s, u"[Scheduler] FIRE: a alarm #2"_s,
                              u"[Scheduler] FIRE: b alarm #1"_s}));
    }

    void midnightDuringSuspendDoesNotReset() {
        Services services({6, 59, 59}, {makeGroup(QString(), 7, 0, 1, 1)});
        services.runLoop.advance(2s);
        services.runLoop.sleep(23h + 59min + 50s); // over midnight, up to the next morning
        services.runLoop.advance(1min);
        QCOMPARE(services.fires().size(), 1);
        QCOMPARE(services.scheduler.firedToday().size(), 1);
        services.runLoop.advance(25h);
        QCOMPARE(services.fires().size(), 2);
    }

    void alarmCountsAsFiredIfServicesFail() {
        AlarmGroup group = makeGroup(QString(), 7, 0, 1, 1);
        group.soundName = u"missing"_s;
        Services services({6, 59, 59}, {group});
        services.clock.isReadable = false;
        services.scheduler.tick();
        services.clock.isReadable = true;
        services.soundPlayer.preview(u"wakeup_pulse"_s, 1);
        services.runLoop.advance(1s);
        QVERIFY(!services.soundPlayer.isPlaying());
        QCOMPARE(services.log.lines, (QStringList{u"[Scheduler] FIRE:  alarm #1"_s,
                                                  u"[SoundPlayer] Sound not found: missing"_s}));
        QVERIFY(services.scheduler.activeAlarm());
        QCOMPARE(services.notificationCenter.requests.size(), 1);
    }
};

QTEST_GUILESS_MAIN(AlarmSchedulerTest)
#include "AlarmSchedulerTest.moc"
