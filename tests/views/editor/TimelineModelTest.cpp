#include "EditorFixture.h"

#include "groups.h"

#include <QSignalSpy>
#include <QTest>

using namespace kova;

namespace {

QString shown(const TimelineModel &model) {
    QStringList texts;
    for (int row = 0; row < model.rowCount(); ++row) {
        const QModelIndex index = model.index(row);
        texts.append(index.data(TimelineModel::TimeText).toString() +
                     (index.data(TimelineModel::IsLast).toBool() ? QStringLiteral("!") : QString()));
    }
    return texts.join(u' ');
}

} // namespace

class TimelineModelTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void changesNoMoreThanItMust() {
        EditorFixture fixture(makeGroup(7, 0, 3, 5, true));
        TimelineModel &model = *fixture.editor.timeline();
        QSignalSpy inserted(&model, &TimelineModel::rowsInserted);
        QSignalSpy removed(&model, &TimelineModel::rowsRemoved);
        QSignalSpy changed(&model, &TimelineModel::dataChanged);
        QSignalSpy reset(&model, &TimelineModel::modelReset);

        fixture.store.setEditingGroup(makeGroup(7, 0, 3, 10, true));
        QCOMPARE(changed.size(), 1);
        QCOMPARE(inserted.size() + removed.size(), 0);
        fixture.store.setEditingGroup(makeGroup(7, 0, 5, 10, true));
        QCOMPARE(inserted.size(), 1);
        QCOMPARE(shown(model), QStringLiteral("6:20 6:30 6:40 6:50 7:00!"));
        fixture.store.setEditingGroup(makeGroup(7, 0, 2, 10, true));
        QCOMPARE(removed.size(), 1);
        QCOMPARE(shown(model), QStringLiteral("6:50 7:00!"));
        QCOMPARE(reset.size(), 0);
    }
};

QTEST_GUILESS_MAIN(TimelineModelTest)
#include "TimelineModelTest.moc"
