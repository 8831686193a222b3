#include "HomeFixture.h"

#include <QAbstractItemModelTester>
#include <QTest>

using namespace kova;

namespace {

QString shown(const AlarmListModel &model) {
    QString labels;
    for (int row = 0; row < model.rowCount(); ++row) {
        labels += model.data(model.index(row, 0), AlarmViewModel::Label).toString();
    }
    return labels;
}

} // namespace

class HomeScreenTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void changeTouchesOnlyItsRows_data() {
        using Change = std::function<void(AlarmViewModel &)>;
        QTest::addColumn<Change>("change");
        QTest::addColumn<QString>("steps");
        QTest::addColumn<QString>("labels");
        const auto row = [](const char *name, const Change &change, const char *steps, const char *labels) {
            QTest::newRow(name) << change << QString::fromLatin1(steps) << QString::fromLatin1(labels);
        };
        const auto at = [](const AlarmViewModel &store, int index) { return store.groups().at(index); };
        const Change edit = [=](AlarmViewModel &store) {
            AlarmGroup group = at(store, 1);
            group.label = QStringLiteral("x");
            store.updateGroup(group);
        };
        row(
            "added", [](auto &store) { store.saveEditedGroup(groupAt(7, QStringLiteral("e"))); }, "+4",
            "abcde");
        row(
            "duplicated", [=](auto &store) { store.duplicateGroup(at(store, 1)); }, "+2", "abbcd");
        row("edited", edit, "=1", "axcd");
        row(
            "toggled", [=](auto &store) { store.toggleGroup(at(store, 3).id); }, "=3", "abcd");
        row(
            "deleted", [=](auto &store) { store.deleteGroup(at(store, 2).id); }, "-2", "abd");
        row(
            "deleted apart",
            [=](auto &store) {
                store.deleteSelectedGroups({at(store, 0).id, at(store, 2).id, at(store, 3).id});
            },
            "-2..3-0", "b");
        row(
            "unknown", [](auto &store) { store.toggleGroup(QUuid::createUuid()); }, "", "abcd");
        row(
            "loaded", [](auto &store) { store.load(); }, "0", "abcd");
    }
    void changeTouchesOnlyItsRows() {
        QFETCH(std::function<void(AlarmViewModel &)>, change);
        HomeFixture fixture;
        for (const char *label : {"a", "b", "c", "d"}) {
            fixture.add(groupAt(7, QString::fromLatin1(label)));
        }
        AlarmListModel &model = *fixture.home.groups();
        const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        QString steps;
        const auto note = [&steps](QChar kind) {
            return [&steps, kind](const QModelIndex &, int first, int last) {
                steps += kind + QString::number(first);
                steps += first == last ? QString() : QStringLiteral("..") + QString::number(last);
            };
        };
        connect(&model, &AlarmListModel::rowsInserted, this, note(u'+'));
        connect(&model, &AlarmListModel::rowsRemoved, this, note(u'-'));
        connect(&model, &AlarmListModel::modelReset, this, [&steps] { steps += u'0'; });
        connect(&model, &AlarmListModel::dataChanged, this,
                [&](const QModelIndex &first, const QModelIndex &last) {
                    note(u'=')({}, first.row(), last.row());
                });
        change(fixture.store);
        QTEST(steps, "steps");
        QTEST(shown(model), "labels");
    }
};

QTEST_GUILESS_MAIN(HomeScreenTest)
#include "HomeScreenTest.moc"
