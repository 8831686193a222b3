#include "AlarmViewModel.h"

#include "AlarmGroupJson.h"
#include "FakeServices.h"
#include "groups.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

using namespace kova;
using namespace Qt::StringLiterals;

namespace {

QString labelsOf(const AlarmViewModel &store) {
    QString labels;
    for (int row = 0; row < store.rowCount(); ++row) {
        labels += store.data(store.index(row), AlarmViewModel::Label).toString();
    }
    return labels;
}

/// The store on fake ports, with a saved list.
struct Services : FakeServices {
    std::optional<AlarmViewModel> store;

    explicit Services(const QByteArray &json) {
        listStorage.store(json);
        store.emplace(listStorage, clock, scheduler, powerManager);
    }
    explicit Services(const QList<AlarmGroup> &groups) : Services(encodeGroups(groups)) {}

    QList<AlarmGroup> saved() { return decodeGroups(*listStorage.stored()).value(); }
    // The scheduler and the storage both hold what the store holds.
    bool isPublished() { return scheduler.groups() == store->groups() && saved() == store->groups(); }
};

using Change = std::function<void(AlarmViewModel &)>;

} // namespace

class AlarmViewModelTest : public QObject {
    Q_OBJECT

    const AlarmGroup m_a = groupAt(7, u"a"_s);
    AlarmGroup m_b = groupAt(7, u"b"_s);

private Q_SLOTS:
    void initTestCase() { m_b.isEnabled = false; }

    void sleepIsPreventedBeforeTheSchedulerStarts() {
        Services services({m_a, m_b});
        QCOMPARE(services.log.lines, (QStringList{u"[PowerManager] Sleep prevention ON (id: 12345)"_s,
                                                  u"[Scheduler] Started"_s}));
        QVERIFY(services.scheduler.groups() == (QList{m_a, m_b}));
        QCOMPARE(services.listStorage.writes, 0);
    }

    void unreadableListIsReportedAndReplacedAtTheNextSave() {
        const QByteArray junk = R"([{"id":1}])";
        Services services(junk);
        QVERIFY(services.store->groups().isEmpty());
        QCOMPARE(services.listStorage.unreadable.size(), 1);
        QCOMPARE(services.listStorage.stored(), junk);
        services.store->saveEditedGroup(m_a);
        QVERIFY(services.isPublished());
    }

    void listThatCannotBeEncodedIsNotSaved() {
        Services services({m_a});
        for (float AlarmGroup::*const field : {&AlarmGroup::volume, &AlarmGroup::ttsVolume}) {
            AlarmGroup broken = m_a;
            broken.*field = std::numeric_limits<float>::quiet_NaN();
            services.store->updateGroup(broken);
            QVERIFY(services.saved() == QList{m_a});
            QVERIFY(std::isnan(services.store->groups().first().*field));
        }
    }

    void sleepPreventionFollowsTheList() {
        Services services({m_a, m_b});
        services.log.lines.clear();
        services.store->toggleGroup(m_b.id);
        services.store->toggleGroup(m_a.id);
        QVERIFY(services.powerManager.isPreventingSleep() && services.log.lines.isEmpty());
        QCOMPARE(services.powerAssertions.held.values(),
                 QStringList{u"KOVA Alarm active — preventing sleep"_s});
        services.store->toggleGroup(m_b.id);
        QCOMPARE(services.log.take(), QStringList{u"[PowerManager] Sleep prevention OFF"_s});
        QVERIFY(services.powerAssertions.held.isEmpty());
        services.store->duplicateGroup(m_b);
        QVERIFY(services.log.lines.isEmpty());
        services.store->toggleGroup(m_a.id);
        QVERIFY(services.powerManager.isPreventingSleep());
        services.store->deleteSelectedGroups({m_a.id, m_b.id});
        QVERIFY(!services.powerManager.isPreventingSleep() && services.isPublished());
    }

    void failedSleepPreventionIsLoggedAndRetried() {
        Services services({m_b});
        services.powerAssertions.failure = -536870212;
        services.store->toggleGroup(m_b.id);
        QVERIFY(!services.powerManager.isPreventingSleep());
        QCOMPARE(services.log.lines.last(), u"[PowerManager] Failed to create assertion: -536870212"_s);
        services.powerAssertions.failure = 0;
        services.store->duplicateGroup(m_b);
        QVERIFY(services.powerManager.isPreventingSleep());
    }

    void duplicateIsAnEqualGroupOfItsOwn() {
        Services services({m_a, m_b});
        services.clock.time = 800000000.5;
        services.store->duplicateGroup(m_a);
        AlarmGroup copy = services.store->groups().at(1);
        QVERIFY(copy.id != m_a.id && copy.createdAt == 800000000.5);
        copy.id = m_a.id;
        copy.createdAt = m_a.createdAt;
        QVERIFY(copy == m_a);
        services.store->duplicateGroup(groupAt(7, u"x"_s));
        QCOMPARE(labelsOf(*services.store), u"aabx"_s);
    }

    void changeTouchesOnlyItsRows_data() {
        QTest::addColumn<Change>("change");
        QTest::addColumn<QString>("steps");
        QTest::addColumn<QString>("labels");
        const auto at = [](const AlarmViewModel &store, int index) { return store.groups().at(index); };
        const auto row = [](const char *name, const char *steps, const char *labels, const Change &change) {
            QTest::newRow(name) << change << QString::fromLatin1(steps) << QString::fromLatin1(labels);
        };
        row("added", "+4", "abcde", [](auto &store) { store.saveEditedGroup(groupAt(7, u"e"_s)); });
        row("duplicated", "+2", "abbcd", [=](auto &store) { store.duplicateGroup(at(store, 1)); });
        row("edited", "=1", "axcd", [=](auto &store) {
            AlarmGroup group = at(store, 1);
            group.label = u"x"_s;
            store.updateGroup(group);
        });
        row("toggled", "=3", "abcd", [=](auto &store) { store.toggleGroup(at(store, 3).id); });
        row("deleted", "-2", "abd", [=](auto &store) { store.deleteGroup(at(store, 2).id); });
        row("deleted apart", "-2..3-0", "b", [=](auto &store) {
            store.deleteSelectedGroups({at(store, 0).id, at(store, 2).id, at(store, 3).id});
        });
        row("loaded", "0", "abcd", [](auto &store) { store.load(); });
    }
    void changeTouchesOnlyItsRows() {
        QFETCH(Change, change);
        Services services({m_a, m_b, groupAt(7, u"c"_s), groupAt(7, u"d"_s)});
        const QAbstractItemModelTester tester(&*services.store,
                                              QAbstractItemModelTester::FailureReportingMode::QtTest);
        QString steps;
        const auto note = [&steps](QChar kind) {
            return [&steps, kind](const QModelIndex &, int first, int last) {
                steps += kind + QString::number(first);
                steps += first == last ? QString() : u"..%1"_s.arg(last);
            };
        };
        connect(&*services.store, &AlarmViewModel::rowsInserted, this, note(u'+'));
        connect(&*services.store, &AlarmViewModel::rowsRemoved, this, note(u'-'));
        connect(&*services.store, &AlarmViewModel::modelReset, this, [&steps] { steps += u'0'; });
        connect(&*services.store, &AlarmViewModel::dataChanged, this,
                [&](const QModelIndex &first, const QModelIndex &last) {
                    note(u'=')({}, first.row(), last.row());
                });
        change(*services.store);
        QTEST(steps, "steps");
        QTEST(labelsOf(*services.store), "labels");
        QVERIFY(services.isPublished());
    }

    void unknownGroupsChangeNothing() {
        Services services({m_a});
        const QSignalSpy changes(&*services.store, &AlarmViewModel::groupsChanged);
        services.store->updateGroup(m_b);
        services.store->toggleGroup(m_b.id);
        QCOMPARE(services.listStorage.writes, 0);
        QCOMPARE(changes.count(), 0);
        services.store->deleteGroup(m_b.id);
        services.store->deleteSelectedGroups({});
        QVERIFY(services.store->groups() == QList{m_a} && services.isPublished());
    }
};

QTEST_GUILESS_MAIN(AlarmViewModelTest)
#include "AlarmViewModelTest.moc"
