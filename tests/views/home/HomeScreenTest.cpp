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
};

QTEST_GUILESS_MAIN(HomeScreenTest)
#include "HomeScreenTest.moc"
