#include "FakeServices.h"
#include "groups.h"

#include <QTest>

using namespace kova;
using namespace std::chrono_literals;

namespace {

AlarmGroup makeGroup(const QString &label, int hour, int minute, qint64 count, qint64 interval,
                     bool startBefore = true) {
    AlarmGroup group = kova::makeGroup(hour, minute, count, interval, startBefore);
    group.label = label;
    return group;
}

const QString alarmSound = QStringLiteral("alarm");

} // namespace

class AlarmSchedulerTest : public QObject {
    Q_OBJECT

    std::unique_ptr<FakeServices> m_services;

    // Starts on 2026-01-05, a Monday.
    AlarmScheduler &startAt(const QTime &time, const QList<AlarmGroup> &groups) {
        m_services->clock.set({2026, 1, 5}, time);
        m_services->scheduler.start(groups);
        m_services->log.lines.clear();
        return m_services->scheduler;
    }
    QStringList fires() const { return m_services->log.lines.filter(QStringLiteral("FIRE")); }
    bool isSilent() const {
        return m_services->audioPlayers.sounding.isEmpty() && m_services->synthesizers.reading.isNull() &&
               !m_services->scheduler.activeAlarm();
    }

private Q_SLOTS:
    void init() { m_services = std::make_unique<FakeServices>(); }

    void requestsPermissionOnceAndLogsTheResult() {
        FakeNotificationCenter &center = m_services->notificationCenter;
        QCOMPARE(center.asked, 1);
        center.answer(true, std::nullopt);
        center.answer(false, QStringLiteral("no service"));
        QCOMPARE(m_services->log.lines,
                 (QStringList{QStringLiteral("[Scheduler] Notifications granted"),
                              QStringLiteral("[Scheduler] Notification error: no service"),
                              QStringLiteral("[Scheduler] Notifications denied")}));
    }

    void startsTimerOnce() {
        AlarmScheduler &scheduler = m_services->scheduler;
        scheduler.start({});
        scheduler.start({AlarmGroup()});
        QCOMPARE(m_services->runLoop.timersMade, 1);
        QCOMPARE(m_services->log.lines, QStringList{QStringLiteral("[Scheduler] Started")});
        QCOMPARE(scheduler.groups().size(), 1);
    }

    void firingPerformsItsStepsInOrder() {
        AlarmGroup group = makeGroup(QStringLiteral("朝"), 7, 0, 3, 5);
        group.ttsEnabled = true;
        group.ttsMessage = QStringLiteral("おはよう");
        group.ttsVolume = 0.5F;
        AlarmScheduler &scheduler = startAt({6, 49, 59}, {group});
        bool isHeardBeforeItIsShown = false;
        m_services->notificationCenter.added = [&] {
            isHeardBeforeItIsShown = m_services->soundPlayer.isPlaying() &&
                                     m_services->synthesizers.reading == group.ttsMessage &&
                                     m_services->application.activations == 0;
        };
        m_services->runLoop.advance(1s);
        QVERIFY(isHeardBeforeItIsShown);
        QCOMPARE(m_services->log.lines,
                 (QStringList{QStringLiteral("[Scheduler] FIRE: 朝 alarm #1"),
                              QStringLiteral("[TTSPlayer] speaking: \"おはよう\" vol=0.5 loop=true")}));
        QVERIFY(scheduler.activeAlarm() == (FiringAlarm{group, 0, m_services->clock.time}));
        QCOMPARE(scheduler.firedToday(), QSet{group.idText() + QStringLiteral("-0")});
        QCOMPARE(m_services->soundPlayer.currentPreviewId(), alarmSound);
        QCOMPARE(m_services->audioPlayers.sounding.first().loops, -1);
        QCOMPARE(m_services->application.activations, 1);
    }

    void notificationContainsThePlannedTime() {
        startAt({6, 49, 59},
                {makeGroup(QString(), 7, 5, 2, 15), makeGroup(QStringLiteral("Work"), 23, 55, 1, 1),
                 makeGroup(QStringLiteral(" "), 8, 0, 1, 1), makeGroup(QString(2000, u'長'), 9, 0, 1, 1)});
        m_services->runLoop.advance(18h);
        QStringList bodies;
        QSet<QString> identifiers;
        for (const NotificationRequest &request : m_services->notificationCenter.requests) {
            QCOMPARE(request.title, QStringLiteral("KOVA"));
            QCOMPARE(request.lifetime, 55s);
            bodies.append(request.body);
            identifiers.insert(request.identifier);
            QCOMPARE(QUuid::fromString(request.identifier).toString(QUuid::WithoutBraces).toUpper(),
                     request.identifier);
        }
        QCOMPARE(bodies,
                 (QStringList{QStringLiteral("アラーム 6:50"), QStringLiteral("アラーム 7:05"),
                              QStringLiteral("  — 8:00"), QString(1000, u'長') + QStringLiteral("… — 9:00"),
                              QStringLiteral("Work — 23:55")}));
        QCOMPARE(identifiers.size(), 5);
    }

    void speaksTheMessageOfEachAlarm() {
        const QString m = QStringLiteral("m");
        const QString last = QStringLiteral("last");
        const struct {
            qint64 count;
            bool ttsEnabled;
            bool ttsLastEnabled;
            QString message;
            QStringList spoken;
        } rows[] = {
            {3, true, true, m, {m, m, last}}, {3, true, false, m, {m, m}}, {3, false, true, m, {last}},
            {3, false, false, m, {}},         {3, true, true, {}, {last}}, {1, true, false, m, {}},
            {1, false, true, m, {last}},
        };
        for (const auto &row : rows) {
            init();
            AlarmGroup group = makeGroup(QString(), 7, 0, row.count, 1);
            group.ttsEnabled = row.ttsEnabled;
            group.ttsMessage = row.message;
            group.ttsLastEnabled = row.ttsLastEnabled;
            group.ttsLastMessage = last;
            startAt({6, 50}, {group});
            m_services->runLoop.advance(20min);
            QCOMPARE(m_services->synthesizers.readings, row.spoken);
        }
    }

    void endsAutomatically() {
        AlarmScheduler &scheduler = startAt({6, 59, 58}, {makeGroup(QString(), 7, 0, 3, 1, false)});
        m_services->runLoop.advance(2s + 54999ms);
        QVERIFY(scheduler.activeAlarm());
        m_services->runLoop.advance(1ms);
        QVERIFY(isSilent());
        m_services->runLoop.advance(5s);
        QCOMPARE(scheduler.activeAlarm()->index, 1);
        m_services->clock.set({2026, 1, 5}, {7, 1, 59}); // set forward while it rings
        m_services->runLoop.advance(55s);                // its automatic stop finds the group's next alarm
        QCOMPARE(scheduler.activeAlarm()->index, 2);
    }

    void stoppedAlarmDoesNotRingAgainThatDay() {
        AlarmScheduler &scheduler = startAt({6, 59, 59}, {makeGroup(QString(), 7, 0, 1, 1)});
        m_services->runLoop.advance(1s);
        scheduler.endRinging();
        QVERIFY(isSilent());
        scheduler.tick();
        m_services->clock.set({2026, 1, 5}, {6, 59, 59}); // the user sets the clock back
        m_services->runLoop.advance(1h);
        QCOMPARE(fires().size(), 1);
        m_services->runLoop.advance(24h);
        QCOMPARE(fires().size(), 2);
    }

    void newerAlarmReplacesRingingAlarm() {
        const AlarmGroup a = makeGroup(QStringLiteral("a"), 7, 0, 1, 1);
        AlarmGroup b = makeGroup(QStringLiteral("b"), 7, 1, 1, 1);
        b.soundName = QStringLiteral("wakeup_pulse");
        AlarmScheduler &scheduler = startAt({6, 59, 59}, {b, a});
        m_services->runLoop.advance(31s);
        QList<QString> seen;
        connect(&scheduler, &AlarmScheduler::activeAlarmChanged, this, [&] {
            seen.append(scheduler.activeAlarm() ? scheduler.activeAlarm()->group.label
                                                : QStringLiteral("none"));
        });
        // The clock is set forward to b's minute while a still rings.
        m_services->clock.set({2026, 1, 5}, {7, 0, 59});
        m_services->runLoop.advance(1s);
        QCOMPARE(seen, (QList<QString>{QStringLiteral("none"), QStringLiteral("b")}));
        QCOMPARE(m_services->audioPlayers.sounding.size(), 1);
        m_services->runLoop.advance(54s); // a's automatic stop finds b
        QCOMPARE(scheduler.activeAlarm()->group.label, QStringLiteral("b"));
        QCOMPARE(m_services->audioPlayers.sounding.first().path,
                 QStringLiteral("/resources/Sounds/wakeup_pulse.mp3"));
        m_services->runLoop.advance(1s);
        QVERIFY(isSilent());
    }

    void editsDoNotAffectRingingAlarm() {
        AlarmGroup group = makeGroup(QStringLiteral("old"), 7, 0, 1, 1);
        AlarmScheduler &scheduler = startAt({6, 59, 59}, {group});
        m_services->runLoop.advance(1s);
        group.label = QStringLiteral("new");
        scheduler.setGroups({group});
        QCOMPARE(scheduler.activeAlarm()->group.label, QStringLiteral("old"));
        scheduler.setGroups({});
        m_services->runLoop.advance(54s);
        QVERIFY(scheduler.activeAlarm());
        m_services->runLoop.advance(1s);
        QVERIFY(isSilent());
    }

    void firesOneAlarmPerTick() {
        startAt({6, 59, 59},
                {makeGroup(QStringLiteral("a"), 7, 0, 2, 0), makeGroup(QStringLiteral("b"), 7, 0, 1, 1)});
        m_services->runLoop.advance(23h);
        QCOMPARE(fires(), QStringList{QStringLiteral("[Scheduler] FIRE: a alarm #1")});
        // A second tick in the same second continues after the alarm that the first one fired.
        m_services->clock.set({2026, 1, 6}, {7, 0, 0});
        m_services->log.lines.clear();
        for (int tick = 0; tick < 4; ++tick) {
            m_services->scheduler.tick();
        }
        QCOMPARE(fires(), (QStringList{QStringLiteral("[Scheduler] FIRE: a alarm #1"),
                                       QStringLiteral("[Scheduler] FIRE: a alarm #2"),
                                       QStringLiteral("[Scheduler] FIRE: b alarm #1")}));
    }

    void midnightDuringSuspendDoesNotReset() {
        AlarmScheduler &scheduler = startAt({6, 59, 59}, {makeGroup(QString(), 7, 0, 1, 1)});
        m_services->runLoop.advance(2s);
        m_services->runLoop.sleep(23h + 59min + 50s); // over midnight, up to the next morning
        m_services->runLoop.advance(1min);
        QCOMPARE(fires().size(), 1);
        QCOMPARE(scheduler.firedToday().size(), 1);
        m_services->runLoop.advance(25h);
        QCOMPARE(fires().size(), 2);
    }

    void alarmCountsAsFiredIfServicesFail() {
        AlarmGroup group = makeGroup(QString(), 7, 0, 1, 1);
        group.soundName = QStringLiteral("missing");
        AlarmScheduler &scheduler = startAt({6, 59, 59}, {group});
        m_services->clock.isReadable = false;
        scheduler.tick();
        m_services->clock.isReadable = true;
        m_services->soundPlayer.preview(QStringLiteral("wakeup_pulse"), 1);
        m_services->runLoop.advance(1s);
        QVERIFY(!m_services->soundPlayer.isPlaying());
        QCOMPARE(m_services->log.lines,
                 (QStringList{QStringLiteral("[Scheduler] FIRE:  alarm #1"),
                              QStringLiteral("[SoundPlayer] Sound not found: missing")}));
        QVERIFY(scheduler.activeAlarm());
        QCOMPARE(m_services->notificationCenter.requests.size(), 1);
    }
};

QTEST_GUILESS_MAIN(AlarmSchedulerTest)
#include "AlarmSchedulerTest.moc"
