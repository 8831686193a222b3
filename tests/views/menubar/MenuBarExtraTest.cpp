#include "menubar/MenuBarExtra.h"
#include "Fixture.h"

#include <QSignalSpy>
#include <QTest>

using namespace kova;

class MenuBarExtraTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // GNOME's extension removes the first "_" before another character, other panels read "__" as "_".
    void aLabelIsShownAsTyped() {
        const struct {
            const char16_t *label;
            const char16_t *drawn;
            const char16_t *exported;
        } rows[] = {
            {u"file_v2", u"7:00  file_v2", u"7:00  file__v2"},
            {u"a\tb\nc", u"7:00  a b c", u"7:00  a b c"},
            {u"123456789012345678901234567890", u"7:00  123456789012345678901234567890",
             u"7:00  123456789012345678901234567890"},
            {u"12345678901234567890123456789がx", u"7:00  12345678901234567890123456789が…",
             u"7:00  12345678901234567890123456789が…"},
            {u"a & b & c", u"7:00  a && b && c", u"&7:00  a & b & c"},
            {u"a_b & c", u"7:00  a_b && c", u"7:00  a__b ＆ c"},
            {u"a_b_c & d", u"7:00  a_b_c && d", u"&7:00  aˍbˍc & d"},
            {u"שלום", u"\u200E7:00  \u2068שלום\u2069", u"\u200E7:00  \u2068שלום\u2069"},
        };
        for (const auto &row : rows) {
            Fixture fixture;
            fixture.add(groupAt(7, QString::fromUtf16(row.label)));
            const MenuBarExtra extra(fixture.store, fixture.services.powerManager);
            QCOMPARE(extra.menu().actions().at(4)->text(), QString::fromUtf16(row.drawn));
            QCOMPARE(extra.exportedMenu().actions().at(4)->text(), QString::fromUtf16(row.exported));
            QVERIFY(!extra.exportedMenu().actions().at(4)->isCheckable());
        }
    }

    void aGroupsLineShowsItsState() {
        Fixture fixture;
        const AlarmGroup group = fixture.add(groupAt(7));
        fixture.add(groupAt(8)); // stays on, and with it every line
        const MenuBarExtra extra(fixture.store, fixture.services.powerManager);
        const QAction *const row = extra.menu().actions().at(4);
        const auto picture = [row](QIcon::Mode mode) { return row->icon().pixmap(16, mode).toImage(); };
        const auto isFilled = [&] {
            const QImage image = picture(QIcon::Normal);
            return image.pixelColor(image.width() / 5, image.height() / 2).alpha() == 255;
        };
        QCOMPARE(picture(QIcon::Disabled), picture(QIcon::Normal));
        QVERIFY(row->isChecked() && isFilled());
        fixture.store.toggleGroup(group.id);
        QTRY_VERIFY(!row->isChecked());
        QVERIFY(!isFilled());
    }

    void theMenuFollowsTheStoreInPlace() {
        Fixture fixture;
        const AlarmGroup group = fixture.add(groupAt(7, QStringLiteral("A")));
        const MenuBarExtra extra(fixture.store, fixture.services.powerManager);
        QAction *const row = extra.menu().actions().at(4);
        QCOMPARE(row->text(), QStringLiteral("7:00  A"));
        QSignalSpy changed(row, &QAction::changed);

        fixture.ring(group, 0);
        QTest::qWait(0);
        QCOMPARE(changed.size(), 0);

        AlarmGroup renamed = group;
        renamed.label.clear();
        fixture.store.updateGroup(renamed);
        fixture.store.updateGroup(renamed);
        QTRY_COMPARE(row->text(), QStringLiteral("7:00"));
        QCOMPARE(extra.menu().actions().at(4), row);

        fixture.store.toggleGroup(group.id);
        QTRY_COMPARE(extra.menu().actions().at(2)->text(), QStringLiteral("有効: 0 / 1"));
        for (const QAction *action : extra.menu().actions()) {
            QVERIFY(action->text() != QStringLiteral("スリープ防止中"));
        }
    }

    void onlyTheCommandsCanBeChosen() {
        Fixture fixture;
        fixture.add(2);
        MenuBarExtra extra(fixture.store, fixture.services.powerManager);
        QSignalSpy showWindow(&extra, &MenuBarExtra::showWindow);
        QSignalSpy quit(&extra, &MenuBarExtra::quit);
        QList<QAction *> enabled;
        for (QAction *action : extra.menu().actions()) {
            if (!action->isSeparator() && action->isEnabled()) {
                enabled << action;
            }
        }
        QCOMPARE(enabled.size(), 2);
        enabled.at(0)->trigger();
        enabled.at(1)->trigger();
        QCOMPARE(enabled.at(1)->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Q));
        QVERIFY(showWindow.size() == 1 && quit.size() == 1);
    }
};

QTEST_MAIN(MenuBarExtraTest)
#include "MenuBarExtraTest.moc"
