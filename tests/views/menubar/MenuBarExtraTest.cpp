#include "menubar/MenuBarExtra.h"
#include "HomeFixture.h"

#include <QSignalSpy>
#include <QTest>

using namespace kova;

class MenuBarExtraTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theLinesSummariseTheGroups_data() {
        QTest::addColumn<int>("count");
        QTest::addColumn<int>("enabled");
        QTest::addColumn<QStringList>("lines");

        const QString rule = QStringLiteral("-");
        const QString sleep = QStringLiteral("スリープ防止中");
        const QStringList commands{rule, QStringLiteral("ウィンドウを表示"), QStringLiteral("終了")};
        const auto rows = [](int n) {
            QStringList texts;
            for (int i = 0; i < n; ++i) {
                texts << QStringLiteral("%1:00").arg(i);
            }
            return texts;
        };
        QTest::newRow("none") << 0 << 0 << QStringList{QStringLiteral("アラームなし"), rule} + commands;
        QTest::newRow("all off") << 1 << 0
                                 << QStringList{QStringLiteral("有効: 0 / 1"), rule} + rows(1) +
                                        QStringList{rule} + commands;
        QTest::newRow("five") << 5 << 5
                              << QStringList{QStringLiteral("有効: 5 / 5"), rule} + rows(5) +
                                     QStringList{rule, sleep} + commands;
        QTest::newRow("seven") << 7 << 6
                               << QStringList{QStringLiteral("有効: 6 / 7"), rule} + rows(5) +
                                      QStringList{QStringLiteral("他 2件..."), rule, sleep} + commands;
    }
    void theLinesSummariseTheGroups() {
        QFETCH(int, count);
        QFETCH(int, enabled);
        QFETCH(QStringList, lines);
        QList<AlarmGroup> groups;
        for (int i = 0; i < count; ++i) {
            groups << groupAt(i);
            groups.last().isEnabled = i < enabled;
        }
        QStringList texts;
        for (const MenuBarEntry &entry : menuBarContent(groups, enabled > 0)) {
            texts << (entry.kind == MenuBarEntry::Separator ? QStringLiteral("-") : entry.text);
        }
        QCOMPARE(texts, QStringList({QStringLiteral("KOVA アラーム"), QStringLiteral("-")}) + lines);
    }

    void aLabelStandsAsTyped_data() {
        QTest::addColumn<QString>("label");
        QTest::addColumn<QString>("drawn");
        QTest::addColumn<QString>("exported");

        const auto row = [](const char *name, const char16_t *label, const char16_t *drawn,
                            const char16_t *exported) {
            const QString time = QStringLiteral("7:00  ");
            QTest::newRow(name) << QString::fromUtf16(label) << time + QString::fromUtf16(drawn)
                                << time + QString::fromUtf16(exported);
        };
        row("an underscore", u"file_v2", u"file_v2", u"file__v2");
        row("control characters", u"a\tb\nc", u"a b c", u"a b c");
        row("30 characters", u"123456789012345678901234567890", u"123456789012345678901234567890",
            u"123456789012345678901234567890");
        row("more", u"12345678901234567890123456789がx", u"12345678901234567890123456789が…",
            u"12345678901234567890123456789が…");
        QTest::newRow("a mnemonic's mark")
            << QStringLiteral("a & b & c") << QStringLiteral("7:00  a && b && c")
            << QStringLiteral("&7:00  a & b & c");
        const QString fromRight = QStringLiteral("\u200E7:00  \u2068שלום\u2069");
        QTest::newRow("right to left") << QStringLiteral("שלום") << fromRight << fromRight;
    }
    void aLabelStandsAsTyped() {
        QFETCH(QString, label);
        HomeFixture fixture;
        fixture.add(groupAt(7, label));
        const MenuBarExtra extra(fixture.store, fixture.services.powerManager);
        QTEST(extra.menu().actions().at(4)->text(), "drawn");
        QTEST(extra.exportedMenu().actions().at(4)->text(), "exported");
    }

    void aGroupsLineTellsItsState() {
        HomeFixture fixture;
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
        HomeFixture fixture;
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
        HomeFixture fixture;
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
