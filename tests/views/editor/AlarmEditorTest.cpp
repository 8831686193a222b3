#include "EditorFixture.h"

#include <QTest>
#include <cmath>

using namespace kova;

class AlarmEditorTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void togglesDaysInTheOrderChosen_data() {
        QTest::addColumn<QList<qint64>>("before");
        QTest::addColumn<QList<int>>("presses");
        QTest::addColumn<QList<qint64>>("after");
        QTest::newRow("on, on, off") << QList<qint64>{} << QList{1, 3, 1} << QList<qint64>{3};
        QTest::newRow("not sorted") << QList<qint64>{} << QList{5, 1} << QList<qint64>{5, 1};
        QTest::newRow("stored twice") << QList<qint64>{2, 4, 2} << QList{2} << QList<qint64>{4};
        QTest::newRow("all off") << QList<qint64>{0, 6} << QList{6, 0} << QList<qint64>{};
        QTest::newRow("no weekday") << QList<qint64>{9} << QList{0} << QList<qint64>{9, 0};
    }
    void togglesDaysInTheOrderChosen() {
        QFETCH(QList<qint64>, before);
        QFETCH(QList<int>, presses);
        QFETCH(QList<qint64>, after);
        AlarmGroup group;
        group.repeatDays = before;
        EditorFixture fixture(group);
        for (const int day : presses) {
            fixture.editor.toggleDay(day);
        }
        QCOMPARE(fixture.edited().repeatDays, after);
        for (int day = 0; day < 7; ++day) {
            QCOMPARE(fixture.editor.selectedDays().at(day), after.contains(day));
        }
    }

    // A slider's positions are sums of steps, not quite the decimals that they stand for.
    void offersTwentyOneVolumes() {
        EditorFixture fixture;
        double position = 0;
        for (int step = 0; step <= 20; ++step, position += 0.05) {
            fixture.editor.setVolume(static_cast<float>(position));
            fixture.editor.setTtsVolume(static_cast<float>(position));
            QCOMPARE(fixture.edited().volume, QString::number(step * 0.05, 'f', 2).toFloat());
            QCOMPARE(fixture.edited().ttsVolume, fixture.edited().volume);
            QCOMPARE(fixture.editor.volumeText(), QStringLiteral("%1%").arg(step * 5));
            QCOMPARE(fixture.editor.ttsVolumeText(), fixture.editor.volumeText());
        }
    }

    void showsStoredValuesOutsideTheRangesUnchanged() {
        AlarmGroup group;
        group.targetHour = 30;
        group.targetMinute = -4;
        group.alarmCount = 5'000'000'000;
        group.intervalMinutes = 99;
        group.volume = 1.509F;
        EditorFixture fixture(group);
        const AlarmEditor &editor = fixture.editor;
        QCOMPARE(editor.hourIndex(), -1);
        QCOMPARE(editor.hourText(), QStringLiteral("30"));
        QCOMPARE(editor.minuteIndex(), -1);
        QCOMPARE(editor.minuteText(), QStringLiteral("-4"));
        QCOMPARE(editor.alarmCountText(), QStringLiteral("5000000000回"));
        QCOMPARE(editor.alarmCount(), std::numeric_limits<int>::max());
        QCOMPARE(editor.intervalText(), QStringLiteral("99分"));
        QCOMPARE(editor.volumeText(), QStringLiteral("150%"));
        fixture.editor.setLabel(QStringLiteral("朝"));
        group.label = QStringLiteral("朝");
        fixture.editor.save();
        QVERIFY(fixture.store.groups() == QList{group});
    }

    void bringsACountIntoItsRangeAtTheFirstStep_data() {
        QTest::addColumn<qint64>("stored");
        QTest::addColumn<int>("direction");
        QTest::addColumn<qint64>("count");
        QTest::addColumn<qint64>("interval");
        QTest::newRow("far above, down") << qint64{500} << -1 << qint64{20} << qint64{30};
        QTest::newRow("just above, down") << qint64{31} << -1 << qint64{20} << qint64{30};
        QTest::newRow("below, up") << qint64{-7} << +1 << qint64{1} << qint64{1};
        QTest::newRow("inside, down") << qint64{2} << -1 << qint64{1} << qint64{1};
    }
    void bringsACountIntoItsRangeAtTheFirstStep() {
        QFETCH(qint64, stored);
        QFETCH(int, direction);
        AlarmGroup group;
        group.alarmCount = stored;
        group.intervalMinutes = stored;
        EditorFixture fixture(group);
        fixture.editor.setAlarmCount(fixture.editor.alarmCount() + direction);
        fixture.editor.setIntervalMinutes(fixture.editor.intervalMinutes() + direction);
        QTEST(fixture.edited().alarmCount, "count");
        QTEST(fixture.edited().intervalMinutes, "interval");
    }

    void choosesASoundFile() {
        EditorFixture fixture;
        fixture.services.log.take();
        fixture.fileChooser.answer = QStringLiteral("/music/朝 の歌.mp3");
        fixture.editor.chooseSoundFile();
        QCOMPARE(fixture.fileChooser.requests.size(), 1);
        const FileChooserRequest &request = fixture.fileChooser.requests.constFirst();
        QCOMPARE(request.message, QStringLiteral("アラーム用のサウンドファイルを選択"));
        QCOMPARE(request.allowedContentTypes.constFirst(), QStringLiteral("audio/*"));
        QCOMPARE(request.allowedContentTypes.size(), 4);

        QCOMPARE(QByteArray::fromBase64(fixture.edited().customSoundPath->toLatin1()),
                 QByteArrayLiteral("bookmark:/music/朝 の歌.mp3"));
        QCOMPARE(*fixture.edited().customSoundName, QStringLiteral("朝 の歌.mp3"));
        QCOMPARE(fixture.edited().soundName, QStringLiteral("morning_glass"));
        QVERIFY(fixture.editor.hasCustomSound());
        QVERIFY(!fixture.editor.sounds()->index(0).data(SoundListModel::IsChosen).toBool());
        QCOMPARE(fixture.services.log.lines, QStringList());
        QCOMPARE(fixture.services.audioPlayers.opened, 0);
    }

    void keepsTheSoundWhenNoFileIsGiven_data() {
        QTest::addColumn<std::optional<QString>>("answer");
        QTest::addColumn<QStringList>("lines");
        QTest::newRow("cancelled") << std::optional<QString>() << QStringList();
        QTest::newRow("no location") << std::optional(QString()) << QStringList();
        QTest::newRow("no bookmark") << std::optional(QStringLiteral("/lost.mp3"))
                                     << QStringList(
                                            QStringLiteral("[SoundPlayer] bookmark error: no such file"));
    }
    void keepsTheSoundWhenNoFileIsGiven() {
        QFETCH(std::optional<QString>, answer);
        AlarmGroup group;
        group.customSoundPath = QStringLiteral("b2xk");
        group.customSoundName = QStringLiteral("old.wav");
        EditorFixture fixture(group);
        fixture.services.bookmarks.lost = {QStringLiteral("/lost.mp3")};
        fixture.fileChooser.answer = answer;
        fixture.services.log.take();
        fixture.editor.chooseSoundFile();
        QVERIFY(fixture.edited() == group);
        QTEST(fixture.services.log.lines, "lines");
    }

    // The dialog or the disk may take its time.
    void dropsAFileThatIsNoLongerWanted_data() {
        QTest::addColumn<std::function<void(EditorFixture &)>>("meanwhile");
        using Act = std::function<void(EditorFixture &)>;
        QTest::newRow("cancelled") << Act([](EditorFixture &fixture) { fixture.editor.cancel(); });
        QTest::newRow("opened again") << Act([](EditorFixture &fixture) {
            const AlarmGroup group = fixture.edited();
            fixture.editor.cancel();
            fixture.store.startEditing(group);
        });
        QTest::newRow("another group") << Act([](EditorFixture &fixture) { fixture.store.startAdding(); });
        QTest::newRow("another sound") << Act([](EditorFixture &fixture) {
            fixture.editor.selectBuiltInSound(QStringLiteral("wakeup_pulse"));
        });
    }
    void dropsAFileThatIsNoLongerWanted() {
        QFETCH(std::function<void(EditorFixture &)>, meanwhile);
        EditorFixture fixture;
        fixture.fileChooser.answer = QStringLiteral("/music/late.mp3");
        fixture.fileChooser.meanwhile = [&] { meanwhile(fixture); };
        fixture.editor.chooseSoundFile();
        const AlarmGroup none;
        QVERIFY(!fixture.store.editingGroup().value_or(none).customSoundPath);

        fixture.store.startAdding();
        fixture.fileChooser.meanwhile = [] {};
        fixture.services.bookmarks.isSlow = true;
        fixture.editor.chooseSoundFile();
        meanwhile(fixture);
        fixture.services.bookmarks.answer();
        QVERIFY(!fixture.store.editingGroup().value_or(none).customSoundPath);
        fixture.store.startAdding();
        fixture.editor.chooseSoundFile();
        fixture.services.bookmarks.answer();
        QCOMPARE(fixture.edited().customSoundName, QStringLiteral("late.mp3"));
    }

    // The view completes a text and fades while it closes.
    void staysClosedAtALateChange() {
        EditorFixture fixture;
        fixture.editor.setLabel(QStringLiteral("朝"));
        fixture.editor.cancel();
        QCOMPARE(fixture.editor.label(), QStringLiteral("朝"));
        fixture.editor.setLabel(QStringLiteral("昼"));
        QVERIFY(!fixture.store.editingGroup());
    }
};

QTEST_GUILESS_MAIN(AlarmEditorTest)
#include "AlarmEditorTest.moc"
