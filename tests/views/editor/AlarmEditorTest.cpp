#include "Fixture.h"

#include <QSignalSpy>
#include <QTest>

using namespace kova;

namespace {

struct EditorFixture : Fixture {
    explicit EditorFixture(const AlarmGroup &group = {}) { store.startEditing(group); }
};

} // namespace

class AlarmEditorTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void togglesDaysInTheOrderChosen() {
        const struct {
            QList<qint64> before;
            QList<int> presses;
            QList<qint64> after;
        } rows[] = {{{}, {1, 3, 1}, {3}},
                    {{}, {5, 1}, {5, 1}},
                    {{2, 4, 2}, {2}, {4}},
                    {{0, 6}, {6, 0}, {}},
                    {{9}, {0}, {9, 0}}};
        for (const auto &row : rows) {
            AlarmGroup group;
            group.repeatDays = row.before;
            EditorFixture fixture(group);
            for (const int day : row.presses) {
                fixture.editor.toggleDay(day);
            }
            QCOMPARE(fixture.edited().repeatDays, row.after);
            for (int day = 0; day < 7; ++day) {
                QCOMPARE(fixture.editor.group().repeatsOn(day), row.after.contains(day));
            }
        }
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
            QCOMPARE(fixture.editor.group().volumeText(), QStringLiteral("%1%").arg(step * 5));
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
        QCOMPARE(edited.hourText(), QStringLiteral("30"));
        QCOMPARE(edited.minuteIndex(), -1);
        QCOMPARE(edited.minuteText(), QStringLiteral("-4"));
        QCOMPARE(edited.alarmCountText(), QStringLiteral("5000000000回"));
        QCOMPARE(edited.nearestCount(), std::numeric_limits<int>::max());
        QCOMPARE(edited.intervalText(), QStringLiteral("99分"));
        QCOMPARE(edited.volumeText(), QStringLiteral("150%"));
        group.label = edited.label = QStringLiteral("朝");
        fixture.editor.setGroup(edited);
        fixture.editor.save();
        QVERIFY(fixture.store.groups() == QList{group});
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

        QCOMPARE(*fixture.edited().customSoundName, QStringLiteral("朝 の歌.mp3"));
        QCOMPARE(fixture.edited().soundName, QStringLiteral("morning_glass"));
        QCOMPARE(fixture.editor.group().chosenSound(), QString());
        QCOMPARE(fixture.services.log.lines, QStringList());
        QCOMPARE(fixture.services.audioPlayers.opened, 0);
    }

    void keepsTheSoundWhenNoFileIsGiven() {
        AlarmGroup group;
        group.customSoundPath = QStringLiteral("b2xk");
        group.customSoundName = QStringLiteral("old.wav");
        EditorFixture fixture(group);
        fixture.services.bookmarks.lost = {QStringLiteral("/lost.mp3")};
        fixture.services.log.take();
        for (const auto &answer : {std::optional<QString>(), std::optional(QString()),
                                   std::optional(QStringLiteral("/lost.mp3"))}) {
            fixture.fileChooser.answer = answer;
            fixture.editor.chooseSoundFile();
            QVERIFY(fixture.edited() == group);
        }
        QCOMPARE(fixture.services.log.lines,
                 QStringList{QStringLiteral("[SoundPlayer] bookmark error: no such file")});
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
        fixture.services.bookmarks.respond();
        QVERIFY(!fixture.store.editingGroup().value_or(none).customSoundPath);
        fixture.store.startAdding();
        fixture.editor.chooseSoundFile();
        fixture.services.bookmarks.respond();
        QCOMPARE(fixture.edited().customSoundName, QStringLiteral("late.mp3"));
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
