#include "Fixture.h"

#include <QAbstractItemModelTester>
#include <QTest>

using namespace kova;

using Change = std::function<void(AlarmViewModel &)>;

class HomeScreenTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void changeTouchesOnlyItsRows_data() {
        QTest::addColumn<Change>("change");
        QTest::addColumn<QString>("steps");
        QTest::addColumn<QString>("labels");
        const auto at = [](const AlarmViewModel &store, int index) { return store.groups().at(index); };
        const auto row = [](const char *name, const char *steps, const char *labels, const Change &change) {
            QTest::newRow(name) << change << QString::fromLatin1(steps) << QString::fromLatin1(labels);
        };
        row("added", "+4", "abcde", [](auto &store) { store.saveEditedGroup(groupAt(7, QString(u'e'))); });
        row("duplicated", "+2", "abbcd", [=](auto &store) { store.duplicateGroup(at(store, 1)); });
        row("edited", "=1", "axcd", [=](auto &store) {
            AlarmGroup group = at(store, 1);
            group.label = QString(u'x');
            store.updateGroup(group);
        });
        row("toggled", "=3", "abcd", [=](auto &store) { store.toggleGroup(at(store, 3).id); });
        row("deleted", "-2", "abd", [=](auto &store) { store.deleteGroup(at(store, 2).id); });
        row("deleted apart", "-2..3-0", "b", [=](auto &store) {
            store.deleteSelectedGroups({at(store, 0).id, at(store, 2).id, at(store, 3).id});
        });
        row("unknown", "", "abcd", [](auto &store) { store.toggleGroup(QUuid::createUuid()); });
        row("loaded", "0", "abcd", [](auto &store) { store.load(); });
    }
    void changeTouchesOnlyItsRows() {
        QFETCH(Change, change);
        Fixture fixture;
        for (const char *label : {"a", "b", "c", "d"}) {
            fixture.add(groupAt(7, QString::fromLatin1(label)));
        }
        AlarmViewModel &model = fixture.store;
        const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        QString steps;
        const auto note = [&steps](QChar kind) {
            return [&steps, kind](const QModelIndex &, int first, int last) {
                steps += kind + QString::number(first);
                steps += first == last ? QString() : QStringLiteral("..") + QString::number(last);
            };
        };
        connect(&model, &AlarmViewModel::rowsInserted, this, note(u'+'));
        connect(&model, &AlarmViewModel::rowsRemoved, this, note(u'-'));
        connect(&model, &AlarmViewModel::modelReset, this, [&steps] { steps += u'0'; });
        connect(&model, &AlarmViewModel::dataChanged, this,
                [&](const QModelIndex &first, const QModelIndex &last) {
                    note(u'=')({}, first.row(), last.row());
                });
        change(fixture.store);
        QTEST(steps, "steps");
        QString labels;
        for (int index = 0; index < model.rowCount(); ++index) {
            labels += model.data(model.index(index, 0), AlarmViewModel::Label).toString();
        }
        QTEST(labels, "labels");
    }
};

QTEST_GUILESS_MAIN(HomeScreenTest)
#include "HomeScreenTest.moc"
