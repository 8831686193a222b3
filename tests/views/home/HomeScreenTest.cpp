#include "HomeFixture.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

using namespace kova;

namespace {

const QStringList names{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c"),
                        QStringLiteral("d"), QStringLiteral("e"), QStringLiteral("f")};

// One stored list for each text: a group for each letter, the same letter the same group.
QByteArray stored(const QString &letters) {
    QByteArray json = "[";
    for (const QChar letter : letters) {
        const QByteArray digit = QByteArray::number(names.indexOf(QString(letter)));
        json += json.size() > 1 ? "," : "";
        json +=
            R"({"id":"00000000-0000-0000-0000-00000000000)" + digit + R"(","label":")" +
            QString(letter).toUtf8() +
            R"(","targetHour":7,"targetMinute":0,"alarmCount":3,"intervalMinutes":1,"startBefore":true,)"
            R"("isEnabled":true,"repeatDays":[],"soundName":"morning_glass","volume":0.8,"ttsEnabled":false,)"
            R"("ttsMessage":"","ttsLastEnabled":false,"ttsLastMessage":"","ttsVolume":1,"createdAt":0})";
    }
    return json + "]";
}

QString shown(const AlarmListModel &model) {
    QString labels;
    for (int row = 0; row < model.rowCount(); ++row) {
        labels += model.data(model.index(row), AlarmListModel::Label).toString();
    }
    return labels;
}

} // namespace

class HomeScreenTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aChangedListMovesOnlyTheRowsThatMoved_data() {
        QTest::addColumn<QString>("before");
        QTest::addColumn<QString>("after");
        QTest::addColumn<int>("inserts");
        QTest::addColumn<int>("removes");
        QTest::addColumn<int>("moves");

        QTest::newRow("the first group") << ""
                                         << "a" << 1 << 0 << 0;
        QTest::newRow("appended") << "ab"
                                  << "abc" << 1 << 0 << 0;
        QTest::newRow("duplicated in the middle") << "abc"
                                                  << "adbc" << 1 << 0 << 0;
        QTest::newRow("removed in the middle") << "abc"
                                               << "ac" << 0 << 1 << 0;
        QTest::newRow("removed in two places") << "abcdef"
                                               << "adef" << 0 << 1 << 0;
        QTest::newRow("removed apart") << "abcdef"
                                       << "bcef" << 0 << 2 << 0;
        QTest::newRow("all removed") << "abc"
                                     << "" << 0 << 1 << 0;
        QTest::newRow("moved") << "abcd"
                               << "dabc" << 0 << 0 << 1;
        QTest::newRow("all at once") << "abcd"
                                     << "efdb" << 1 << 2 << 1;
        QTest::newRow("a doubled id") << "abab"
                                      << "aab" << 0 << 1 << 1;
    }
    void aChangedListMovesOnlyTheRowsThatMoved() {
        QFETCH(QString, before);
        QFETCH(QString, after);
        HomeFixture fixture;
        fixture.services.preferences.stored[QStringLiteral("kova_alarm_groups")] = stored(before);
        fixture.store.load();
        AlarmListModel &model = *fixture.home.groups();
        const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        const QSignalSpy inserts(&model, &QAbstractItemModel::rowsInserted);
        const QSignalSpy removes(&model, &QAbstractItemModel::rowsRemoved);
        const QSignalSpy moves(&model, &QAbstractItemModel::rowsMoved);
        const QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);

        fixture.services.preferences.stored[QStringLiteral("kova_alarm_groups")] = stored(after);
        fixture.store.load();

        QCOMPARE(shown(model), after);
        QTEST(int(inserts.size()), "inserts");
        QTEST(int(removes.size()), "removes");
        QTEST(int(moves.size()), "moves");
        QCOMPARE(changes.size(), 0);
    }

    void aChangedGroupAnnouncesOnlyWhatLooksDifferent() {
        HomeFixture fixture;
        AlarmGroup group = fixture.add(groupAt(7));
        const QSignalSpy changes(fixture.home.groups(), &QAbstractItemModel::dataChanged);

        group.volume = 0.1F;
        group.ttsMessage = QStringLiteral("起きて");
        fixture.store.updateGroup(group);
        QCOMPARE(changes.size(), 0);

        group.targetMinute = 5;
        group.intervalMinutes = 10;
        fixture.store.updateGroup(group);
        QCOMPARE(changes.size(), 1);
        QCOMPARE(changes.at(0).at(2).value<QList<int>>(),
                 (QList<int>{AlarmListModel::TimeText, AlarmListModel::SequenceText}));
    }

    void aToggleTouchesOneRow() {
        HomeFixture fixture;
        fixture.add(200);
        const QSignalSpy changes(fixture.home.groups(), &QAbstractItemModel::dataChanged);
        fixture.home.toggle(fixture.store.groups().at(150).idText());

        QCOMPARE(changes.size(), 1);
        QCOMPARE(changes.at(0).at(0).toModelIndex().row(), 150);
        QCOMPARE(changes.at(0).at(1).toModelIndex().row(), 150);
        QCOMPARE(changes.at(0).at(2).value<QList<int>>(), QList<int>{AlarmListModel::IsEnabled});
    }

    void theSelectionFollowsItsButtons() {
        HomeFixture fixture;
        HomeSelection &selection = *fixture.home.selection();
        selection.toggleEditMode();
        QCOMPARE(selection.editModeText(), QStringLiteral("完了"));
        QCOMPARE(selection.selectAllText(), QStringLiteral("全選択"));
        QCOMPARE(selection.deleteText(), QStringLiteral("0件を削除"));

        fixture.add(3);
        const QString first = fixture.store.groups().constFirst().idText();
        const QSignalSpy changes(fixture.home.groups(), &QAbstractItemModel::dataChanged);
        selection.toggle(first);
        QCOMPARE(changes.size(), 1);
        QCOMPARE(selection.deleteText(), QStringLiteral("1件を削除"));
        selection.toggleAll();
        QCOMPARE(selection.selectAllText(), QStringLiteral("全解除"));
        QCOMPARE(selection.deleteConfirmText(), QStringLiteral("3件のアラームを削除しますか？"));
        fixture.add(1);
        QCOMPARE(selection.selectAllText(), QStringLiteral("全選択"));
        selection.toggleAll();
        selection.toggleAll();
        QVERIFY(selection.isEmpty());

        selection.toggle(first);
        selection.toggleEditMode();
        QVERIFY(selection.isEmpty());
        QCOMPARE(selection.editModeText(), QStringLiteral("編集"));
    }

    void aConfirmedDeletionLeavesTheEditMode() {
        HomeFixture fixture;
        fixture.add(4);
        const AlarmGroup kept = fixture.store.groups().at(1);
        HomeSelection &selection = *fixture.home.selection();
        selection.toggleEditMode();
        selection.toggleAll();
        selection.toggle(kept.idText());
        selection.askToDelete();
        selection.cancelDeletion();
        QCOMPARE(fixture.store.groups().size(), 4);
        QVERIFY(selection.editMode() && selection.selected().size() == 3 && !selection.showDeleteConfirm());

        const int saves = fixture.services.preferences.saves;
        selection.askToDelete();
        selection.confirmDeletion();
        QCOMPARE(fixture.store.groups(), QList<AlarmGroup>{kept});
        QCOMPARE(fixture.services.preferences.saves, saves + 1);
        QVERIFY(!selection.editMode() && selection.isEmpty() && !selection.showDeleteConfirm());
    }

    void editModeTakesTheCardsControlsAway() {
        HomeFixture fixture;
        const AlarmGroup group = fixture.add(groupAt(7));
        fixture.home.preview(group.idText());
        fixture.home.selection()->toggleEditMode();
        QCOMPARE(fixture.services.soundPlayer.currentPreviewId(), group.idText());

        fixture.home.toggle(group.idText());
        fixture.home.preview(group.idText());
        fixture.home.duplicate(group.idText());
        QCOMPARE(fixture.store.groups(), QList<AlarmGroup>{group});
        QCOMPARE(fixture.services.soundPlayer.currentPreviewId(), group.idText());

        fixture.home.click(group.idText());
        QVERIFY(fixture.store.isEditing());
        QVERIFY(fixture.services.soundPlayer.isPlaying());
        fixture.home.selection()->toggleEditMode();
        QVERIFY(!fixture.services.soundPlayer.isPlaying());
    }

    void aClickStopsThePreviewAndTheMenuDoesNot() {
        HomeFixture fixture;
        const AlarmGroup group = fixture.add(groupAt(7));
        fixture.home.preview(group.idText());
        fixture.home.edit(group.idText());
        QCOMPARE(fixture.store.editingGroup(), group);
        QVERIFY(fixture.services.soundPlayer.isPlaying());
        fixture.store.cancelEditing();

        fixture.home.click(group.idText());
        QVERIFY(fixture.store.isEditing());
        QVERIFY(!fixture.services.soundPlayer.isPlaying());
        fixture.store.cancelEditing();

        fixture.home.remove(group.idText());
        QVERIFY(fixture.store.groups().isEmpty());
        fixture.home.edit(group.idText());
        QVERIFY(!fixture.store.isEditing());
    }

    void theAlertShowsThePlannedTime() {
        HomeFixture fixture;
        AlarmGroup group = groupAt(7, QStringLiteral("朝"));
        group.intervalMinutes = 5;
        fixture.ring(group, 0);
        QTRY_VERIFY(fixture.home.isRinging());
        const AlarmAlertItem item = fixture.home.alert();
        QCOMPARE(item.id(), group.idText() + QStringLiteral("-0"));
        QCOMPARE(item.alertTimeText(), QStringLiteral("6:50"));
        QCOMPARE(item.label(), QStringLiteral("朝"));
        QCOMPARE(item.positionText(), QStringLiteral("アラーム 1 / 3"));
    }

    void endingTheRingingSilencesEverything() {
        HomeFixture fixture;
        AlarmGroup group = groupAt(7);
        group.ttsEnabled = true;
        group.ttsMessage = QStringLiteral("起きて");
        fixture.add(group);
        fixture.services.clock.set({2026, 3, 2}, {6, 57, 59});
        fixture.services.runLoop.advance(std::chrono::seconds(1));
        QTRY_VERIFY(fixture.home.isRinging());
        QCOMPARE(fixture.services.audioPlayers.sounding.size(), 1);

        fixture.home.endRinging();
        QVERIFY(!fixture.home.isRinging());
        QVERIFY(fixture.services.audioPlayers.sounding.isEmpty());
        QVERIFY(fixture.services.synthesizers.reading.isNull());
    }
};

QTEST_GUILESS_MAIN(HomeScreenTest)
#include "HomeScreenTest.moc"
