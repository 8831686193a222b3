#include "AlarmGroupJson.h"
#include "application/RandomUser.h"

#include <QAccessible>
#include <QSignalSpy>

using namespace kova;
using namespace Qt::StringLiterals;

class HomeViewTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aCardShowsItsLabelAsTypedAndTheStoresState() {
        Window w;
        w.add(groupAt(7, u"<b>&朝</b>"_s));
        QTRY_COMPARE(w.frame("cardSurface").topLeft(), QPointF(12, 52));
        QCOMPARE(w.text("cardLabel"), u"<b>&朝</b>"_s);
        QCOMPARE(w.item("cardLabel")->property("textFormat").toInt(), 0);
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
        QTRY_COMPARE(w.frame("editorPanel"), QRectF(20, 20, 400, 580));
        w.window.resize(700, 560);
        QTRY_COMPARE(w.frame("editorPanel"), QRectF(120, 5, 460, 550));
        w.window.resize(420, 500);
        QTRY_COMPARE(w.frame("editorPanel"), QRectF(10, 0, 400, 500));
    }

    void anAlertIsInFrontOfTheEditorAndGivesWayToANewerOne() {
        Window w;
        w.home.add();
        QTRY_VERIFY(w.shows("editorPanel"));
        w.showAlert(groupAt(7, u"朝"_s));
        QCOMPARE(w.text("alertTime"), u"6:58"_s);
        w.click(QPointF(5, 5)); // would close the editor
        QVERIFY(w.store.isEditing());

        w.ring(groupAt(8), 2);
        QTRY_COMPARE(w.text("alertTime"), u"8:00"_s);
        QCOMPARE(w.all("alertTime").size(), 1);
        QVERIFY(!w.shows("alertLabel"));
        w.endAlert();
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
            for (const QQuickItem *item : w.all(Window::inherits(type))) {
                length = std::max(length, item->property("text").toString().size());
            }
            return length;
        };
        w.add(group);
        QTRY_COMPARE(w.all("cardSurface").size(), 3);
        w.edit(group);
        QCOMPARE(maxLength("QQuickTextInput"), EditedGroup::maximumTextLength);
        for (const QQuickItem *text : Window::all(w.item("CustomFileRow"), Window::inherits("QQuickText"))) {
            QVERIFY(Window::rect(text).right() <= w.frame("CustomFileRow").right());
        }
        w.click(w.item("TextField"));
        w.key(Qt::Key_Home);
        w.key(Qt::Key_Delete);
        QCOMPARE(w.store.editingGroup()->label.size(), group.label.size() - 1);
        w.showAlert(group);
        QCOMPARE(maxLength("QQuickText"), maxShownLength + 1);
    }

    void anAlertGrowsWithItsLabel() {
        Window w;
        for (const bool grows : {false, true}) {
            w.showAlert(groupAt(7, grows ? u"一\n二\n三"_s : u"朝"_s), 1);
            const QRectF sheet = Window::rect(w.item("snoozeButton")->parentItem()->parentItem());
            const QRectF texts = w.frame("alertTexts");
            QVERIFY(grows ? sheet.height() > 400 : sheet.height() == 400);
            QVERIFY(texts.top() >= sheet.top() + 20);
            QVERIFY(texts.bottom() + 20 <= w.frame("snoozeButton").top());
            QTRY_VERIFY(w.item("alertBell")->scale() > 1.0);
            w.endAlert();
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
        QVERIFY(cards > 3 && cards < 20);
        QCOMPARE(w.item("cardSurface"), first);
        QQuickItem *const list = first->parentItem()->parentItem()->parentItem();
        QVERIFY(QAccessible::queryAccessibleInterface(list)); // as Qt does without assistive tools
        QCoreApplication::processEvents();
        QCOMPARE(list->property("cacheBuffer").toInt(), 0);
    }

    void aKeyQuitsAndAClosedWindowComesBackWithItsAlert() {
        Window w(1);
        QSignalSpy quit(&w.window, &MainWindow::quit);
        QSignalSpy closed(&w.window, &MainWindow::closed);
        QTest::keyClick(&w.window, Qt::Key_Q, Qt::ControlModifier);
        QCOMPARE(quit.size(), 1);
        w.window.close(); // nothing could bring it back
        QVERIFY(w.window.isVisible() && w.window.windowStates() == Qt::WindowMinimized);
        w.window.hideOnClose();
        w.window.close();
        QCOMPARE(closed.size(), 2);
        QVERIFY(!w.window.isVisible());
        w.ring(w.store.groups().constFirst(), 0);
        w.window.showNormal();
        QTRY_VERIFY(w.shows("stopButton"));
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
        const QQuickItem *const list = w.all(Window::inherits("QQuickListView")).value(0);
        const int back = key == Qt::Key_Tab ? int(Qt::Key_Backtab) : int(Qt::Key_Up);
        for (const int direction : {key, back}) {
            for (int i = 0; i < 29 * stopsOfACard; ++i) {
                w.key(Qt::Key(direction));
                const QRectF focus = Window::rect(w.window.activeFocusItem());
                QVERIFY2(focus.top() >= 48 && focus.bottom() <= (inEditMode ? 620 - 48 : 620),
                         qPrintable(QString::number(i)));
            }
            QCOMPARE(list->property("currentIndex").toInt(), direction == key ? 29 : 0);
        }
    }

    void theKeyboardScrollsTheListWhichKeepsItsPlaceWhileHidden() {
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
        w.window.hide();
        QCoreApplication::processEvents();
        w.window.show();
        QTRY_COMPARE(w.visibleCard(), second);
    }

    void anOverlayTakesTheFocusAndGivesItBack_data() {
        QTest::addColumn<QByteArray>("from");
        QTest::addColumn<int>("opens");
        QTest::addColumn<QString>("focused");
        QTest::newRow("editor") << QByteArray("cardSurface") << int(Qt::Key_Return) << u"時"_s;
        QTest::newRow("menu") << QByteArray("duplicateButton") << int(Qt::Key_Menu) << u"編集"_s;
        QTest::newRow("confirmation") << QByteArray("deleteButton") << int(Qt::Key_Return) << u"キャンセル"_s;
        QTest::newRow("alert") << QByteArray("cardSurface") << 0 << u"停止"_s;
        QTest::newRow("alert over a text") << QByteArray("TextField") << 0 << u"停止"_s;
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
            w.showAlert(w.store.groups().constFirst());
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
            for (int typed = 0; typed < 2; ++typed) {
                focusAfter(1); // the wait begins
                QCOMPARE(focusAfter(900), u"6:50"_s);
                w.key(Qt::Key_Space); // typed for something else: starts the wait again
            }
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

    void aTipFollowsItsButtonUnlessItIsInert() {
        Window w(1);
        const QPoint button = w.frame("previewButton").center().toPoint();
        QTest::mouseMove(&w.window, button);
        QTRY_COMPARE(w.text("toolTip"), u"プレビュー"_s);
        w.click(QPointF(button));
        QTRY_COMPARE(w.text("toolTip"), u"停止"_s);
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
};

QTEST_MAIN(HomeViewTest)
#include "HomeViewTest.moc"
