#include "menubar/MenuBarExtra.h"
#include "Fixture.h"

#include <QSignalSpy>
#include <QTest>

using namespace kova;
using namespace Qt::StringLiterals;

class MenuBarExtraTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // GNOME's extension removes the first "_" before another character, other panels read "__" as "_".
    void aLabelIsShownAsTyped() {
        const QString rows[][3] = {
            {u"file_v2"_s, u"7:00  file_v2"_s, u"7:00  file__v2"_s},
            {u"a\tb\nc"_s, u"7:00  a b c"_s, u"7:00  a b c"_s},
            {u"123456789012345678901234567890"_s, u"7:00  123456789012345678901234567890"_s,
             u"7:00  123456789012345678901234567890"_s},
            {u"12345678901234567890123456789がx"_s, u"7:00  12345678901234567890123456789が…"_s,
             u"7:00  12345678901234567890123456789が…"_s},
            {u"a & b & c"_s, u"7:00  a && b && c"_s, u"&7:00  a & b & c"_s},
            {u"a_b & c"_s, u"7:00  a_b && c"_s, u"7:00  a__b ＆ c"_s},
            {u"a_b_c & d"_s, u"7:00  a_b_c && d"_s, u"&7:00  aˍbˍc & d"_s},
            {u"שלום"_s, u"\u200E7:00  \u2068שלום\u2069"_s, u"\u200E7:00  \u2068שלום\u2069"_s},
        };
        for (const auto &[label, drawn, exported] : rows) {
            Fixture fixture;
            fixture.add(groupAt(7, label));
            const MenuBarExtra extra(fixture.store, fixture.services.powerManager);
            QCOMPARE(extra.menu().actions().at(4)->text(), drawn);
            QCOMPARE(extra.exportedMenu().actions().at(4)->text(), exported);
            QVERIFY(!extra.exportedMenu().actions().at(4)->isCheckable());
        }
    }

    void aGroupsLineShowsItsStateInPlace() {
        Fixture fixture;
        AlarmGroup group = fixture.add(groupAt(7, u"A"_s));
        const AlarmGroup other = fixture.add(groupAt(8)); // stays on, and with it every line
        const MenuBarExtra extra(fixture.store, fixture.services.powerManager);
        const QAction *const row = extra.menu().actions().at(4);
        const auto picture = [row](QIcon::Mode mode) { return row->icon().pixmap(16, mode).toImage(); };
        const QImage filled = picture(QIcon::Normal);
        QCOMPARE(row->text(), u"7:00  A"_s);
        QCOMPARE(picture(QIcon::Disabled), filled);
        QVERIFY(row->isChecked());

        QSignalSpy changed(row, &QAction::changed);
        fixture.ring(group, 0);
        QTest::qWait(0);
        QCOMPARE(changed.size(), 0);

        group.label.clear();
        fixture.store.updateGroup(group);
        QTRY_COMPARE(row->text(), u"7:00"_s);
        fixture.store.toggleGroup(group.id);
        QTRY_COMPARE(extra.menu().actions().at(2)->text(), u"有効: 1 / 2"_s);
        QVERIFY(!row->isChecked() && picture(QIcon::Normal) != filled);
        QCOMPARE(extra.menu().actions().at(4), row);

        fixture.store.toggleGroup(other.id);
        QTRY_COMPARE(extra.menu().actions().at(2)->text(), u"有効: 0 / 2"_s);
        for (const QAction *action : extra.menu().actions()) {
            QVERIFY(action->text() != u"スリープ防止中"_s);
        }
    }

    void onlyTheCommandsCanBeChosen() {
        Fixture fixture;
        fixture.add(2);
        MenuBarExtra extra(fixture.store, fixture.services.powerManager);
        QSignalSpy showWindow(&extra, &MenuBarExtra::showWindow);
        QSignalSpy quit(&extra, &MenuBarExtra::quit);
        const QList<QAction *> actions = extra.menu().actions();
        const qsizetype commands = actions.size() - 2;
        for (QAction *action : actions) {
            QCOMPARE(action->isEnabled() && !action->isSeparator(), actions.indexOf(action) >= commands);
        }
        actions.at(commands)->trigger();
        actions.last()->trigger();
        QCOMPARE(actions.last()->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Q));
        QVERIFY(showWindow.size() == 1 && quit.size() == 1);
    }
};

QTEST_MAIN(MenuBarExtraTest)
#include "MenuBarExtraTest.moc"
