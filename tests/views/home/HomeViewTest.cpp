#include "application/RandomUser.h"
#include "application/WholeWindow.h"

#include "AlarmGroupJson.h"

#include <QAccessible>
#include <QSignalSpy>

using namespace kova;

class HomeViewTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aCardStandsBelowTheHeaderWithItsLabelAsTyped() {
        Window w;
        w.add(groupAt(7, QStringLiteral("<b>&朝</b>")));
        QTRY_VERIFY(w.shows("cardLabel"));
        QTRY_COMPARE(w.frame("cardSurface").topLeft(), QPointF(12, 52));
        QCOMPARE(w.text("cardLabel"), QStringLiteral("<b>&朝</b>"));
        QCOMPARE(w.item("cardLabel")->property("textFormat").toInt(), 0);
    }

    void aSwitchShowsTheStoresStateOnly() {
        Window w(1);
        w.click("enabledSwitch");
        QCOMPARE(w.item("enabledSwitch")->property("checked").toBool(), false);
        w.store.toggleGroup(w.store.groups().constFirst().id);
        w.click("editButton");
        w.click("enabledSwitch"); // inert
        QCOMPARE(w.item("enabledSwitch")->property("checked").toBool(), true);
    }

    void theEditorLiesOverTheList() {
        Window w(1);
        w.click("cardTime");
        QTRY_VERIFY(w.shows("editorPanel"));
        QTRY_COMPARE(w.frame("editorPanel"), QRectF(20, 20, 400, 580));
        w.window.resize(700, 560);
        QTRY_COMPARE(w.frame("editorPanel"), QRectF(120, 5, 460, 550));
        w.window.resize(420, 500);
        QTRY_COMPARE(w.frame("editorPanel"), QRectF(10, 0, 400, 500));
        QVERIFY(!w.editor.isNew());
        w.store.saveEditedGroup(*w.store.editingGroup());
        QTRY_VERIFY(!w.shows("editorPanel"));
    }

    void anAlertTakesTheKeyboardAndGivesWayToANewerOne() {
        Window w;
        w.home.add();
        QTRY_VERIFY(w.shows("editorPanel"));
        AlarmGroup group = groupAt(7, QStringLiteral("朝"));
        group.intervalMinutes = 5;
        w.ring(group, 0);
        QTRY_COMPARE(w.text("alertTime"), QStringLiteral("6:50"));
        w.click(QPointF(5, 5)); // would close the editor
        QVERIFY(w.store.isEditing());

        w.ring(groupAt(8), 2);
        QTRY_COMPARE(w.text("alertTime"), QStringLiteral("8:00"));
        QCOMPARE(w.all("alertTime").size(), 1);
        QVERIFY(!w.shows("alertLabel"));
        w.click("snoozeButton");
        QVERIFY(!w.home.isRinging());
        QTRY_VERIFY(!w.shows("alertTime"));
        QVERIFY(w.shows("editorPanel"));
    }

    // Laying out such a text would block the window for minutes.
    void hugeTextsAreShortenedBeforeTheirLayout() {
        AlarmGroup group = groupAt(7, QString(5'000'000, u'長'));
        group.ttsMessage = group.ttsLastMessage = group.label;
        group.customSoundPath = group.customSoundName = group.label;
        group.ttsEnabled = group.ttsLastEnabled = true;
        WholeWindow w;
        const auto maxLength = [&w](const char *type) {
            qsizetype length = 0;
            for (const QQuickItem *item : w.window.contentItem()->findChildren<QQuickItem *>()) {
                length =
                    std::max(length, item->inherits(type) ? item->property("text").toString().size() : 0);
            }
            return length;
        };
        w.add(group);
        QTRY_COMPARE(w.all("cardSurface").size(), 3);
        w.store.startEditing(group);
        QTRY_VERIFY(w.shows("editorPanel") && !w.shows("doubleClickGuard"));
        QCOMPARE(maxLength("QQuickTextInput"), EditedGroup::maximumTextLength);
        w.click(w.item("TextField"));
        w.key(Qt::Key_Home);
        w.key(Qt::Key_Delete);
        QCOMPARE(w.store.editingGroup()->label.size(), group.label.size() - 1);
        w.ring(group, 0);
        QTRY_VERIFY(w.shows("alertLabel"));
        QCOMPARE(maxLength("QQuickText"), maxShownLength + 1);
    }

    void anAlertGrowsWithItsLabel() {
        Window w;
        for (const bool grows : {false, true}) {
            w.ring(groupAt(7, grows ? QStringLiteral("一\n二\n三") : QStringLiteral("朝")), 1);
            QTRY_VERIFY(w.shows("alertBell"));
            const QRectF sheet = Window::rect(w.item("snoozeButton")->parentItem()->parentItem());
            const QRectF texts = w.frame("alertTexts");
            QVERIFY(grows ? sheet.height() > 400 : sheet.height() == 400);
            const qreal above = texts.top() - sheet.top();
            QVERIFY(above >= 20 && (!grows || above <= 21));
            QVERIFY(std::abs(above - (w.frame("snoozeButton").top() - texts.bottom() - 20)) <= 1);
            QTRY_VERIFY(w.item("alertBell")->scale() > 1.0);
            w.services.scheduler.endRinging();
            QTRY_VERIFY(!w.shows("alertBell"));
        }
    }

    void thousandsOfGroupsMakeOnlyTheVisibleCards() {
        Window w;
        QList<AlarmGroup> many(10'000);
        for (AlarmGroup &group : many) {
            group.id = QUuid::createUuid();
        }
        w.services.listStorage.store(encodeGroups(many));
        w.store.load();
        QTRY_VERIFY(w.shows("cardSurface"));
        QCOMPARE(w.store.groups().size(), 10'000);
        QQuickItem *const first = w.item("cardSurface");
        w.click("enabledSwitch");
        const qsizetype cards = w.all("cardSurface").size();
        QVERIFY2(cards > 3 && cards < 20, qPrintable(QString::number(cards)));
        QCOMPARE(w.item("cardSurface"), first);
        QQuickItem *const list = first->parentItem()->parentItem()->parentItem();
        QVERIFY(QAccessible::queryAccessibleInterface(list)); // as Qt does without assistive tools
        QCoreApplication::processEvents();
        QCOMPARE(list->property("cacheBuffer").toInt(), 0);
    }

    void aHiddenWindowComesBackWithItsAlert() {
        Window w(1);
        QSignalSpy closed(&w.window, &MainWindow::closed);
        w.window.close(); // nothing could bring it back
        QVERIFY(w.window.isVisible() && w.window.windowStates() == Qt::WindowMinimized);
        w.window.hideOnClose();
        w.window.close();
        QCOMPARE(closed.size(), 2);
        QVERIFY(!w.window.isVisible());
        w.ring(w.store.groups().constFirst(), 0);
        w.window.showNormal();
        QTRY_VERIFY(w.shows("stopButton"));
        w.click("stopButton");
        QVERIFY(!w.home.isRinging());
        QTRY_VERIFY(w.shows("cardTime"));
    }

    void theKeyboardReachesEveryCard_data() {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("stopsOfACard");
        QTest::addColumn<bool>("inEditMode");
        QTest::newRow("tab") << int(Qt::Key_Tab) << 4 << false;
        QTest::newRow("tab, editing") << int(Qt::Key_Tab) << 2 << true;
        QTest::newRow("down") << int(Qt::Key_Down) << 1 << false;
    }
    void theKeyboardReachesEveryCard() {
        QFETCH(int, key);
        QFETCH(int, stopsOfACard);
        QFETCH(bool, inEditMode);
        Window w(30);
        if (inEditMode) {
            w.click("editButton");
        }
        w.item(inEditMode ? "selectionMark" : "cardSurface")->forceActiveFocus();
        const int back = key == Qt::Key_Tab ? int(Qt::Key_Backtab) : int(Qt::Key_Up);
        for (const int direction : {key, back}) {
            for (int i = 0; i < 29 * stopsOfACard; ++i) {
                w.key(Qt::Key(direction));
                const QRectF focus = Window::rect(w.window.activeFocusItem());
                QVERIFY2(focus.top() >= 48 && focus.bottom() <= (inEditMode ? 620 - 48 : 620),
                         qPrintable(QString::number(i)));
            }
            const QString last = direction == key ? QStringLiteral("5:00") : QStringLiteral("0:00");
            const QQuickItem *row = w.window.activeFocusItem();
            while (row && !row->property("timeText").isValid()) {
                row = row->parentItem();
            }
            QVERIFY(row);
            QCOMPARE(row->property("timeText"), last);
        }
    }

    void theKeyboardScrollsTheList() {
        Window w(200);
        const QString top = w.visibleCard();
        w.key(Qt::Key_End);
        QTRY_COMPARE(Window::rect(w.all("cardSurface").constLast()).bottom(), 620.0 - 12);
        w.key(Qt::Key_Home);
        QTRY_COMPARE(w.visibleCard(), top);
        w.key(Qt::Key_PageDown);
        QTRY_VERIFY(w.visibleCard() != top);
        const QString second = w.visibleCard();
        w.key(Qt::Key_PageDown);
        w.key(Qt::Key_PageUp);
        QTRY_COMPARE(w.visibleCard(), second);
        w.key(Qt::Key_PageUp);
        QTRY_COMPARE(w.visibleCard(), top);
    }

    void theListKeepsItsPlaceWhileHidden() {
        Window w(200);
        w.key(Qt::Key_PageDown);
        w.key(Qt::Key_PageDown);
        QCoreApplication::processEvents();
        const QString card = w.visibleCard();
        w.window.hide();
        QCoreApplication::processEvents();
        w.window.show();
        QTRY_COMPARE(w.visibleCard(), card);
    }

    void anOverlayTakesTheFocusAndGivesItBack_data() {
        QTest::addColumn<QByteArray>("from");
        QTest::addColumn<int>("opens");
        QTest::addColumn<QString>("focused");
        QTest::newRow("editor") << QByteArray("cardSurface") << int(Qt::Key_Return) << QStringLiteral("時");
        QTest::newRow("new") << QByteArray("addButton") << int(Qt::Key_Space) << QStringLiteral("時");
        QTest::newRow("menu") << QByteArray("duplicateButton") << int(Qt::Key_Menu) << QStringLiteral("編集");
        QTest::newRow("confirmation")
            << QByteArray("deleteButton") << int(Qt::Key_Return) << QStringLiteral("キャンセル");
        QTest::newRow("alert") << QByteArray("cardSurface") << 0 << QStringLiteral("停止");
        QTest::newRow("alert over a text") << QByteArray("TextField") << 0 << QStringLiteral("停止");
    }
    void anOverlayTakesTheFocusAndGivesItBack() {
        QFETCH(QByteArray, from);
        QFETCH(int, opens);
        QFETCH(QString, focused);
        WholeWindow w;
        if (from == "deleteButton") {
            w.selectFirst();
        } else if (from == "TextField") {
            w.openEditor();
        }
        QQuickItem *const before = w.item(from);
        before->forceActiveFocus();
        ManualAnimationDriver time;
        if (opens == 0) {
            w.ring(w.store.groups().constFirst(), 0);
            QTRY_VERIFY(w.shows("stopButton"));
        } else {
            w.key(Qt::Key(opens));
        }
        QTRY_VERIFY(w.window.activeFocusItem() != before);
        const auto focusAfter = [&](qint64 milliseconds) {
            QCoreApplication::processEvents();
            time.pass(milliseconds);
            QCoreApplication::processEvents();
            return QAccessible::queryAccessibleInterface(w.window.activeFocusItem())->text(QAccessible::Name);
        };
        if (opens == 0) {
            focusAfter(1); // the wait begins
            QCOMPARE(focusAfter(900), QStringLiteral("6:50"));
            w.key(Qt::Key_Space); // typed for something else: starts the wait again
            focusAfter(1);
            QCOMPARE(focusAfter(900), QStringLiteral("6:50"));
            w.key(Qt::Key_Space);
            QVERIFY(w.home.isRinging());
        }
        QTRY_COMPARE(focusAfter(200), focused);
        w.key(opens == 0 ? Qt::Key_Return : Qt::Key_Escape);
        time.pass(300); // a panel fades
        QTRY_VERIFY(before->hasActiveFocus());
    }

    void theSecondClickOfADoubleClickHitsNoControl() {
        WholeWindow w;
        ManualAnimationDriver time;
        w.click("cardTime");
        QTRY_VERIFY(w.item("DayChip"));
        w.click(w.item("DayChip"));
        QCOMPARE(w.store.editingGroup()->repeatDays, (QList<qint64>{5, 1}));
        time.pass(300);
        QTRY_VERIFY(!w.shows("doubleClickGuard"));
        w.click(w.item("DayChip"));
        QCOMPARE(w.store.editingGroup()->repeatDays, (QList<qint64>{5, 1, 0}));
    }

    void onlyWhatIsInFrontTakesTheWheel() {
        Window w(200);
        w.click("cardTime");
        QTRY_VERIFY(w.shows("editorPanel"));
        const QString card = w.visibleCard();
        w.wheel({8, 300}, {0, -120});
        QTRY_VERIFY(w.window.activeFocusItem()->inherits("QQuickComboBox"));
        w.key(Qt::Key_Space);
        QTRY_VERIFY(w.shows("pickerList"));
        const qreal before = w.item("pickerList")->property("contentY").toReal();
        w.wheel(w.frame("pickerList").center(), {0, -120});
        QTRY_VERIFY(w.item("pickerList")->property("contentY").toReal() > before);
        QCOMPARE(w.visibleCard(), card);
    }

    void escapeLosesNoEdits() {
        Window w(1);
        w.click("cardTime");
        QTRY_VERIFY(w.shows("editorPanel"));
        const AlarmGroup before = *w.store.editingGroup();
        AlarmGroup changed = before;
        changed.targetHour = 9;
        w.store.setEditingGroup(changed);
        w.key(Qt::Key_Escape);
        QVERIFY(w.store.isEditing());
        w.store.setEditingGroup(before);
        w.key(Qt::Key_Escape);
        QVERIFY(!w.store.isEditing());
    }

    void aTipFollowsItsButtonUnlessItIsInert() {
        Window w(1);
        const QPoint button = w.frame("previewButton").center().toPoint();
        QTest::mouseMove(&w.window, button);
        QTRY_COMPARE(w.text("toolTip"), QStringLiteral("プレビュー"));
        w.click(QPointF(button));
        QTRY_COMPARE(w.text("toolTip"), QStringLiteral("停止"));
        w.click("editButton");
        QTest::mouseMove(&w.window, w.frame("previewButton").center().toPoint());
        QVERIFY(!w.item("previewButton")->property("hovered").toBool() && !w.shows("toolTip"));
    }

    // The tool waits for the answer, and what it presses may open a dialog that lasts.
    void anAssistiveToolsPressIsAnsweredBeforeItActs() {
        Window w(1);
        QAccessibleInterface *const card = QAccessible::queryAccessibleInterface(w.item("cardSurface"));
        card->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QVERIFY(!w.store.isEditing());
        QTRY_VERIFY(w.store.isEditing());
    }

    void theKeyboardUsesACardsButtonsAndQuits() {
        Window w(1);
        for (const char *name : {"editButton", "addButton", "cardSurface", "previewButton", "duplicateButton",
                                 "enabledSwitch"}) {
            w.key(Qt::Key_Tab);
            QVERIFY2(w.item(name)->hasActiveFocus(), name);
        }
        w.key(Qt::Key_Space);
        QVERIFY(!w.store.groups().constFirst().isEnabled);
        QSignalSpy quit(&w.window, &MainWindow::quit);
        QTest::keyClick(&w.window, Qt::Key_Q, Qt::ControlModifier);
        QCOMPARE(quit.size(), 1);
    }
};

QTEST_MAIN(HomeViewTest)
#include "HomeViewTest.moc"
