#include "Fixture.h"

#include <QSignalSpy>
#include <QTest>

using namespace kova;
using namespace Qt::StringLiterals;

namespace {

struct EditorFixture : Fixture {
    explicit EditorFixture(const AlarmGroup &group = {}) { store.startEditing(group); }
};

} // namespace

class AlarmEditorTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void togglingADayRemovesEveryOccurrence() {
        AlarmGroup group;
        group.repeatDays = {2, 4, 2, 9};
        EditorFixture fixture(group);
        fixture.editor.toggleDay(2);
        QCOMPARE(fixture.edited().repeatDays, (QList<qint64>{4, 9}));
    }

    // A slider's positions are sums of steps, not quite the decimals that they stand for.
    void offersTwentyOneVolumes() {
        EditorFixture fixture;
        double position = 0;
        for (int step = 0; step <= 20; ++step, position += 0.05) {
            fixture.set(&EditedGroup::setVolume, static_cast<float>(position));
            fixture.set(&EditedGroup::setTtsVolume, static_cast<float>(position));
            QCOMPARE(fixture.edited().volume, QString::number(step * 0.05, 'f', 2).toFloat());
            QCOMPARE(fixture.edited().ttsVolume, fixture.edited().volume);
            QCOMPARE(fixture.editor.group().volumeText(), u"%1%"_s.arg(step * 5));
            QCOMPARE(fixture.editor.group().ttsVolumeText(), fixture.editor.group().volumeText());
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
        EditedGroup edited = fixture.editor.group();
        QCOMPARE(edited.hourIndex(), -1);
        QCOMPARE(edited.hourText(), u"30"_s);
        QCOMPARE(edited.minuteIndex(), -1);
        QCOMPARE(edited.minuteText(), u"-4"_s);
        QCOMPARE(edited.alarmCountText(), u"5000000000回"_s);
        QCOMPARE(edited.nearestCount(), std::numeric_limits<int>::max());
        QCOMPARE(edited.intervalText(), u"99分"_s);
        QCOMPARE(edited.volumeText(), u"150%"_s);
        group.label = edited.label = u"朝"_s;
        fixture.editor.setGroup(edited);
        fixture.editor.save();
        QVERIFY(fixture.store.groups() == QList{group});
    }

    void keepsTheSoundWhenNoFileIsGiven() {
        AlarmGroup group;
        group.customSoundPath = u"b2xk"_s;
        group.customSoundName = u"old.wav"_s;
        EditorFixture fixture(group);
        fixture.services.bookmarks.lost = {u"/lost.mp3"_s};
        fixture.services.log.take();
        for (const auto &answer :
             {std::optional<QString>(), std::optional(QString()), std::optional(u"/lost.mp3"_s)}) {
            fixture.fileChooser.answer = answer;
            fixture.editor.chooseSoundFile();
            QVERIFY(fixture.edited() == group);
        }
        QCOMPARE(fixture.services.log.lines, QStringList{u"[SoundPlayer] bookmark error: no such file"_s});
        QCOMPARE(fixture.fileChooser.requests.first().message, u"アラーム用のサウンドファイルを選択"_s);
    }

    // The dialog or the disk may take its time.
    void dropsAFileThatIsNoLongerWanted() {
        const std::function<void(EditorFixture &)> acts[] = {
            [](EditorFixture &fixture) { fixture.editor.cancel(); },
            [](EditorFixture &fixture) {
                const AlarmGroup group = fixture.edited();
                fixture.editor.cancel();
                fixture.store.startEditing(group);
            },
            [](EditorFixture &fixture) { fixture.store.startAdding(); },
            [](EditorFixture &fixture) { fixture.editor.selectBuiltInSound(u"wakeup_pulse"_s); },
        };
        for (const auto &meanwhile : acts) {
            EditorFixture fixture;
            fixture.fileChooser.answer = u"/music/late.mp3"_s;
            fixture.fileChooser.meanwhile = [&] { meanwhile(fixture); };
            fixture.editor.chooseSoundFile();
            QVERIFY(!fixture.editor.group().customSoundPath);

            fixture.store.startAdding();
            fixture.fileChooser.meanwhile = [] {};
            fixture.services.bookmarks.isSlow = true;
            fixture.editor.chooseSoundFile();
            meanwhile(fixture);
            fixture.services.bookmarks.respond();
            QVERIFY(!fixture.editor.group().customSoundPath);
            fixture.store.startAdding();
            fixture.editor.chooseSoundFile();
            fixture.services.bookmarks.respond();
            QCOMPARE(fixture.edited().customSoundName, u"late.mp3"_s);
        }
    }

    // The view completes a text and fades while it closes.
    void staysClosedAtALateChange() {
        EditorFixture fixture;
        QSignalSpy changed(&fixture.editor, &AlarmEditor::groupChanged);
        fixture.set(&EditedGroup::setHourIndex, 8);
        fixture.editor.cancel();
        fixture.set(&EditedGroup::setHourIndex, 9);
        QVERIFY(!fixture.store.editingGroup());
        QCOMPARE(changed.size(), 1);
    }
};

QTEST_GUILESS_MAIN(AlarmEditorTest)
#include "AlarmEditorTest.moc"
