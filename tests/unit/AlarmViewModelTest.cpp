#include "AlarmViewModel.h"

#include "AlarmGroupJson.h"
#include "FakeServices.h"

#include <QSignalSpy>
#include <QTest>

using namespace kova;

namespace {

AlarmGroup makeGroup(const QString &label, bool isEnabled = true) {
    AlarmGroup group;
    group.id = QUuid::createUuid();
    group.label = label;
    group.isEnabled = isEnabled;
    return group;
}

QString labelsOf(const QList<AlarmGroup> &groups) {
    QString labels;
    for (const AlarmGroup &group : groups) {
        labels += group.label;
    }
    return labels;
}

} // namespace

class AlarmViewModelTest : public QObject {
    Q_OBJECT

    std::unique_ptr<FakeServices> m_services;
    std::unique_ptr<AlarmViewModel> m_store;
    const AlarmGroup m_a = makeGroup(QStringLiteral("a"));
    const AlarmGroup m_b = makeGroup(QStringLiteral("b"), false);

    void open(const QList<AlarmGroup> &groups) {
        m_services->listStorage.store(encodeGroups(groups));
        m_store = makeStore();
    }
    std::unique_ptr<AlarmViewModel> makeStore() {
        return std::make_unique<AlarmViewModel>(m_services->listStorage, m_services->clock,
                                                m_services->scheduler, m_services->powerManager);
    }
    QList<AlarmGroup> saved() const { return decodeGroups(*m_services->listStorage.stored()).value(); }
    // The scheduler and the storage both hold what the store holds.
    bool isPublished() const {
        return m_services->scheduler.groups() == m_store->groups() && saved() == m_store->groups();
    }

private Q_SLOTS:
    void init() { m_services = std::make_unique<FakeServices>(); }
    void cleanup() {
        m_store.reset();
        m_services.reset();
    }

    void sleepIsPreventedBeforeTheSchedulerStarts() {
        open({m_a, m_b});
        QCOMPARE(m_services->log.lines,
                 (QStringList{QStringLiteral("[PowerManager] Sleep prevention ON (id: 12345)"),
                              QStringLiteral("[Scheduler] Started")}));
        QVERIFY(m_services->scheduler.groups() == (QList{m_a, m_b}));
        QCOMPARE(m_services->listStorage.writes, 0);
    }

    void unreadableListIsReportedAndReplacedAtTheNextSave() {
        const QByteArray junk = R"([{"id":1}])";
        m_services->listStorage.store(junk);
        m_store = makeStore();
        QVERIFY(m_store->groups().isEmpty());
        QCOMPARE(m_services->listStorage.unreadable.size(), 1);
        QCOMPARE(m_services->listStorage.stored(), junk);
        m_store->saveEditedGroup(m_a);
        QVERIFY(isPublished());
    }

    void listThatCannotBeEncodedIsNotSaved() {
        open({m_a});
        AlarmGroup broken = m_a;
        broken.volume = std::numeric_limits<float>::quiet_NaN();
        m_store->updateGroup(broken);
        QVERIFY(saved() == QList{m_a});
        QVERIFY(std::isnan(m_store->groups().first().volume));
    }

    void sleepPreventionFollowsTheList() {
        open({m_a, m_b});
        m_services->log.lines.clear();
        m_store->toggleGroup(m_b.id);
        m_store->toggleGroup(m_a.id);
        QVERIFY(m_services->powerManager.isPreventingSleep() && m_services->log.lines.isEmpty());
        m_store->toggleGroup(m_b.id);
        QCOMPARE(m_services->log.take(), QStringList{QStringLiteral("[PowerManager] Sleep prevention OFF")});
        m_store->duplicateGroup(m_b);
        QVERIFY(m_services->log.lines.isEmpty());
        m_store->toggleGroup(m_a.id);
        QVERIFY(m_services->powerManager.isPreventingSleep());
        m_store->deleteSelectedGroups({m_a.id, m_b.id});
        QVERIFY(!m_services->powerManager.isPreventingSleep() && isPublished());
    }

    void duplicatesFollowTheirOriginal() {
        open({m_a, m_b});
        m_services->clock.time = 800000000.5;
        m_store->duplicateGroup(m_a);
        m_store->duplicateGroup(m_a);
        QCOMPARE(labelsOf(m_store->groups()), QStringLiteral("aaab"));
        QVERIFY(m_store->groups().first() == m_a);
        const AlarmGroup copy = m_store->groups().at(1);
        QVERIFY(copy.id != m_a.id && copy.id != m_store->groups().at(2).id);
        QCOMPARE(copy.createdAt, 800000000.5);
        AlarmGroup same = copy;
        same.id = m_a.id;
        same.createdAt = m_a.createdAt;
        QVERIFY(same == m_a);
        m_store->duplicateGroup(makeGroup(QStringLiteral("x")));
        QCOMPARE(labelsOf(m_store->groups()), QStringLiteral("aaabx"));
        QVERIFY(isPublished());
    }

    void unknownGroupsChangeNothing() {
        open({m_a});
        const QSignalSpy changes(m_store.get(), &AlarmViewModel::groupsChanged);
        m_store->updateGroup(m_b);
        m_store->toggleGroup(m_b.id);
        QCOMPARE(m_services->listStorage.writes, 0);
        QCOMPARE(changes.count(), 0);
        m_store->deleteGroup(m_b.id);
        m_store->deleteSelectedGroups({});
        QCOMPARE(m_services->listStorage.writes, 2);
        QVERIFY(isPublished());
    }

    void editorWorksOnACopy() {
        open({m_a, m_b});
        m_store->startEditing(m_a);
        QVERIFY(m_store->isEditing() && m_store->editingGroup() == m_a);
        AlarmGroup edited = m_a;
        edited.targetHour = 23;
        m_store->setEditingGroup(edited);
        QVERIFY(m_store->groups().first() == m_a);
        m_store->cancelEditing();
        QVERIFY(!m_store->isEditing() && !m_store->editingGroup());
        QCOMPARE(m_services->listStorage.writes, 0);

        m_store->startEditing(m_a);
        m_store->saveEditedGroup(edited);
        QVERIFY(m_store->groups() == (QList{edited, m_b}));
        QVERIFY(!m_store->isEditing() && !m_store->editingGroup() && isPublished());
        m_store->saveEditedGroup(makeGroup(QStringLiteral("n")));
        QCOMPARE(labelsOf(m_store->groups()), QStringLiteral("abn"));
        QVERIFY(isPublished());
    }
};

QTEST_GUILESS_MAIN(AlarmViewModelTest)
#include "AlarmViewModelTest.moc"
