#include "WindowFixture.h"

#include <QAccessible>
#include <QApplication>
#include <QSignalSpy>

using namespace kova;

class HomeViewTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theEmptyHomeSaysHowToBegin() {
        Window w;
        QVERIFY(w.shows("emptyState"));
        QVERIFY(!w.shows("list") && !w.shows("sleepMark") && !w.shows("editBar"));
        w.click("editButton");
        QCOMPARE(w.text("selectAllButton"), QStringLiteral("全選択"));
        QCOMPARE(w.text("deleteButton"), QStringLiteral("0件を削除"));
        QVERIFY(!w.item("deleteButton")->isEnabled());
        w.click("deleteButton");
        QVERIFY(!w.home.selection()->showDeleteConfirm());
    }

    void theHeaderHoldsItsMeasures() {
        Window w;
        w.add(1);
        QTRY_VERIFY(w.shows("list"));
        QCOMPARE(w.window.size(), QSize(440, 620));
        // Rows are laid out just before the next frame.
        QTRY_COMPARE(w.frame("addButton"), QRectF(440 - 16 - 28, 10, 28, 28));
        QCOMPARE(w.frame("title").left(), 16.0);
        QVERIFY(w.shows("sleepMark"));
        QCOMPARE(w.frame("list").top(), 48.0);
        QCOMPARE(w.text("editButton"), QStringLiteral("編集"));
        w.click("editButton");
        QVERIFY(!w.shows("addButton"));
        QTRY_COMPARE(w.frame("editButton").right(), 440.0 - 16);
        QCOMPARE(w.frame("editBar").bottom(), 620.0);
        QCOMPARE(w.frame("deleteButton").right(), 440.0 - 16);
        QCOMPARE(w.frame("deleteButton").top() - w.frame("editBar").top(), 10.0);
    }

    void cardsHoldTheirMeasures() {
        Window w;
        w.add(groupAt(7, QStringLiteral("朝")));
        w.add(groupAt(8, QStringLiteral("昼")));
        w.settle();
        const QRectF card = w.frame("cardSurface");
        QCOMPARE(card.topLeft(), QPointF(12, 48 + 4));
        QCOMPARE(card.right(), 440.0 - 12);
        QCOMPARE(w.frame("cardSurface", 1).top() - card.bottom(), 8.0);
        QCOMPARE(w.frame("cardTexts").left() - card.left(), 14.0);
        QCOMPARE(card.height() - w.frame("cardTexts").height(), 24.0);
        QCOMPARE(w.frame("cardTime").top() - w.frame("cardLabel").bottom(), 4.0);
        QCOMPARE(w.frame("cardChips").top() - w.frame("cardTime").bottom(), 4.0);
        QCOMPARE(card.right() - w.frame("cardControls").right(), 14.0);
        QCOMPARE(w.frame("previewButton").size(), QSizeF(26, 26));
        QCOMPARE(w.frame("duplicateButton").left() - w.frame("previewButton").right(), 4.0);
        QCOMPARE(w.item("enabledSwitch")->scale(), 0.8);

        w.click("editButton");
        QCOMPARE(w.frame("cardSurface").left(), 12.0 + 22 + 10);
        QCOMPARE(w.frame("cardSurface").right(), card.right());
    }

    void aCardShowsOnlyWhatItsGroupHas() {
        Window w;
        AlarmGroup group = groupAt(7);
        group.alarmCount = 1;
        group.repeatDays = {5, 1};
        w.add(group);
        w.settle();
        QVERIFY(!w.shows("cardLabel"));
        QCOMPARE(w.frame("cardTime").top(), w.frame("cardTexts").top());
        QCOMPARE(w.text("infoChip"), QStringLiteral("月・金"));
        QCOMPARE(w.all("infoChip").size(), 1);

        group.label = QStringLiteral("<b>&朝</b>");
        group.alarmCount = 2;
        w.store.updateGroup(group);
        w.settle();
        QCOMPARE(w.text("cardLabel"), group.label);
        QCOMPARE(w.item("cardLabel")->property("textFormat").toInt(), 0);
        QCOMPARE(w.all("infoChip").size(), 2);
    }

    void eachAreaOfACardDoesItsOwn_data() {
        QTest::addColumn<QByteArray>("area");
        QTest::addColumn<QString>("effect");

        QTest::newRow("label") << QByteArray("cardLabel") << "edits";
        QTest::newRow("time") << QByteArray("cardTime") << "edits";
        QTest::newRow("chip") << QByteArray("infoChip") << "edits";
        QTest::newRow("gap in the middle") << QByteArray("cardSurface") << "edits";
        QTest::newRow("preview") << QByteArray("previewButton") << "previews";
        QTest::newRow("duplicate") << QByteArray("duplicateButton") << "duplicates";
        QTest::newRow("switch") << QByteArray("enabledSwitch") << "toggles";
    }
    void eachAreaOfACardDoesItsOwn() {
        QFETCH(QByteArray, area);
        QFETCH(QString, effect);
        Window w;
        const AlarmGroup group = w.add(groupAt(7, QStringLiteral("朝")));
        w.settle();
        w.click(area.constData());

        const bool edits = effect == QStringLiteral("edits");
        QCOMPARE(w.store.isEditing(), edits);
        QCOMPARE(w.services.soundPlayer.currentPreviewId() == group.idText(),
                 effect == QStringLiteral("previews"));
        QCOMPARE(w.store.groups().size(), effect == QStringLiteral("duplicates") ? 2 : 1);
        QCOMPARE(w.store.groups().constFirst().isEnabled, effect != QStringLiteral("toggles"));
    }

    void aSwitchShowsTheStoresStateOnly() {
        Window w;
        w.add(1);
        w.settle();
        w.click("enabledSwitch");
        QCOMPARE(w.item("enabledSwitch")->property("checked").toBool(), false);
        w.store.toggleGroup(w.store.groups().constFirst().id);
        QCOMPARE(w.item("enabledSwitch")->property("checked").toBool(), true);
        w.click("editButton");
        w.click("enabledSwitch");
        QCOMPARE(w.store.groups().constFirst().isEnabled, true);
        QCOMPARE(w.item("enabledSwitch")->property("checked").toBool(), true);
    }

    void theCardMenuActsOnItsCard() {
        Window w;
        w.add(groupAt(7, QStringLiteral("朝")));
        const AlarmGroup second = w.add(groupAt(8, QStringLiteral("昼")));
        w.home.preview(second.idText());
        w.settle();

        w.click(w.frame("cardTime", 1).center(), Qt::RightButton);
        QTRY_COMPARE(w.all("menuItem").size(), 3);
        w.click("menuItem", 1);
        QCOMPARE(w.store.groups().size(), 3);

        w.click(w.frame("cardTime", 1).center(), Qt::RightButton);
        QTRY_COMPARE(w.all("menuItem").size(), 3);
        w.click("menuItem", 0);
        QCOMPARE(w.store.editingGroup()->id, second.id);
        QVERIFY(w.services.soundPlayer.isPlaying());
        w.store.cancelEditing();
        QTRY_VERIFY(!w.shows("editorPanel"));

        w.click(w.frame("cardTime", 1).center(), Qt::RightButton);
        QTRY_COMPARE(w.all("menuItem").size(), 3);
        w.click("menuItem", 2);
        QCOMPARE(w.store.groups().size(), 2);
        QVERIFY(w.store.groups().at(1).id != second.id);

        w.click("editButton");
        w.click(w.frame("cardTime", 1).center(), Qt::RightButton);
        QVERIFY(!w.shows("menuItem"));
    }

    void editModeSelectsAndDeletes() {
        Window w;
        w.add(3);
        const AlarmGroup kept = w.store.groups().at(1);
        w.settle();
        w.click("editButton");
        w.click("selectionMark", 0);
        w.click("selectionMark", 2);
        QCOMPARE(w.text("deleteButton"), QStringLiteral("2件を削除"));
        w.click("deleteButton");
        QTRY_VERIFY(w.shows("alertTitle"));
        QCOMPARE(w.text("alertTitle"), QStringLiteral("削除確認"));
        QCOMPARE(w.text("alertMessage"), QStringLiteral("2件のアラームを削除しますか？"));
        w.key(Qt::Key_Escape);
        QTRY_VERIFY(!w.shows("alertTitle"));
        QCOMPARE(w.store.groups().size(), 3);
        QVERIFY(w.home.selection()->editMode());

        w.click("deleteButton");
        QTRY_VERIFY(w.shows("destructiveButton"));
        w.click("destructiveButton");
        QCOMPARE(w.store.groups(), QList<AlarmGroup>{kept});
        QTRY_VERIFY(!w.shows("editBar") && !w.shows("selectionMark"));
    }

    void theEditorLiesOverTheList() {
        Window w;
        w.add(1);
        w.settle();
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

    void aClickBesideTheEditorAddsNothing() {
        Window w;
        w.settle();
        w.click("addButton");
        QVERIFY(w.editor.isNew());
        QTRY_COMPARE(w.frame("editorPanel").width(), 400.0);
        w.click(w.frame("editorPanel").topLeft() + QPointF(4, 60)); // the panel's own empty edge
        QVERIFY(w.store.isEditing());
        w.click(QPointF(8, 300));
        QVERIFY(!w.store.isEditing() && w.store.groups().isEmpty());
    }

    void anAlertTakesTheKeyboardAndGivesWayToANewerOne() {
        Window w;
        w.settle();
        w.home.add();
        QTRY_VERIFY(w.shows("editorPanel"));
        AlarmGroup group = groupAt(7, QStringLiteral("朝"));
        group.intervalMinutes = 5;
        w.ring(group, 0);
        QTRY_COMPARE(w.text("alertTime"), QStringLiteral("6:50"));
        QCOMPARE(w.text("alertLabel"), QStringLiteral("朝"));
        QCOMPARE(w.text("alertPosition"), QStringLiteral("アラーム 1 / 3"));
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

    void nothingButItsButtonsEndsAnAlert_data() {
        QTest::addColumn<int>("key");
        QTest::newRow("escape") << int(Qt::Key_Escape);
        QTest::newRow("space") << int(Qt::Key_Space);
        QTest::newRow("return") << int(Qt::Key_Return);
        QTest::newRow("click") << 0;
    }
    void nothingButItsButtonsEndsAnAlert() {
        QFETCH(int, key);
        Window w;
        w.add(1);
        w.settle();
        w.ring(w.store.groups().constFirst(), 0);
        QTRY_VERIFY(w.shows("stopButton"));
        if (key != 0) {
            w.key(Qt::Key(key));
        } else {
            w.click(QPointF(5, 100));
        }
        QVERIFY(w.home.isRinging() && w.shows("stopButton") && !w.store.isEditing());
        w.key(Qt::Key_Tab);
        w.key(Qt::Key_Tab);
        QVERIFY(w.item("stopButton")->hasActiveFocus());
        w.key(Qt::Key_Return);
        QVERIFY(!w.home.isRinging());
    }

    void theAlertHoldsItsMeasures_data() {
        QTest::addColumn<QString>("label");
        QTest::addColumn<bool>("grows");
        QTest::newRow("one line") << QStringLiteral("朝") << false;
        QTest::newRow("three lines") << QStringLiteral("一\n二\n三") << true;
    }
    void theAlertHoldsItsMeasures() {
        QFETCH(QString, label);
        QFETCH(bool, grows);
        Window w;
        w.settle();
        w.ring(groupAt(7, label), 1);
        QTRY_VERIFY(w.shows("alertBell"));
        const qreal height = w.item("snoozeButton")->parentItem()->parentItem()->height();
        QCOMPARE(height > 400, grows);
        QVERIFY(grows || height == 400);
        const QRectF sheet((440 - 350) / 2.0, std::round((620 - height) / 2), 350, height);
        const QRectF snooze = w.frame("snoozeButton");
        const QRectF stop = w.frame("stopButton");
        QCOMPARE(snooze.bottomLeft(), sheet.bottomLeft() + QPointF(24, -24));
        QCOMPARE(stop.bottomRight(), sheet.bottomRight() + QPointF(-24, -24));
        QCOMPARE(stop.left() - snooze.right(), 16.0);
        QCOMPARE(stop.width(), snooze.width());
        QCOMPARE(w.frame("alertLabel").top() - w.frame("alertTime").bottom(), 20.0);
        QCOMPARE(w.frame("alertPosition").top() - w.frame("alertLabel").bottom(), 20.0);
        const QRectF texts = w.frame("alertTexts");
        QVERIFY(std::abs(texts.top() - sheet.top() - (snooze.top() - texts.bottom() - 20)) <= 1);
        QVERIFY(texts.top() - sheet.top() >= 20 && (!grows || texts.top() - sheet.top() <= 21));
        QTRY_VERIFY(w.item("alertBell")->scale() > 1.0);
        w.services.scheduler.endRinging();
        QTRY_VERIFY(!w.shows("alertBell"));
    }

    void thousandsOfGroupsMakeOnlyTheVisibleCards() {
        Window w;
        w.services.preferences.stored[QStringLiteral("kova_alarm_groups")] = [] {
            HomeFixture many;
            many.add(1);
            QByteArray one = many.services.preferences.stored.first();
            one.remove(0, 1).chop(1);
            QByteArrayList all;
            for (int i = 0; i < 10'000; ++i) {
                QByteArray group = one;
                group.replace(many.store.groups().constFirst().idText().toLatin1(),
                              QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper().toLatin1());
                all << group;
            }
            return '[' + all.join(',') + ']';
        }();
        w.store.load();
        w.settle();
        QCOMPARE(w.store.groups().size(), 10'000);
        const qsizetype cards = w.all("cardSurface").size();
        QVERIFY2(cards > 3 && cards < 20, qPrintable(QString::number(cards)));
        QQuickItem *const first = w.item("cardSurface");
        w.click("enabledSwitch");
        QCOMPARE(w.all("cardSurface").size(), cards);
        QCOMPARE(w.item("cardSurface"), first);
    }

    void aHiddenWindowComesBackWithItsAlert() {
        Window w;
        w.add(1);
        w.settle();
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
        Window w;
        w.add(200);
        w.settle();
        w.focusFirstCard(inEditMode);
        const int back = key == Qt::Key_Tab ? int(Qt::Key_Backtab) : int(Qt::Key_Up);
        for (const int direction : {key, back}) {
            for (int i = 0; i < 199 * stopsOfACard; ++i) {
                w.key(Qt::Key(direction));
                const QRectF focus = Window::rect(w.window.activeFocusItem());
                QVERIFY2(focus.top() >= 48 && focus.bottom() <= (inEditMode ? 620 - 48 : 620),
                         qPrintable(QString::number(i)));
            }
            const QString last = direction == key ? QStringLiteral("7:00") : QStringLiteral("0:00");
            const QQuickItem *row = w.window.activeFocusItem();
            while (row && !row->property("timeText").isValid()) {
                row = row->parentItem();
            }
            QVERIFY(row);
            QCOMPARE(row->property("timeText"), last);
        }
    }

    void theKeyboardScrollsTheList() {
        Window w;
        w.add(200);
        w.settle();
        const QString top = w.cardInSight();
        w.key(Qt::Key_End);
        QTRY_COMPARE(Window::rect(w.all("cardSurface").constLast()).bottom(), 620.0 - 12);
        w.key(Qt::Key_Home);
        QTRY_COMPARE(w.cardInSight(), top);
        w.key(Qt::Key_PageDown);
        QTRY_VERIFY(w.cardInSight() != top);
        const QString second = w.cardInSight();
        w.key(Qt::Key_PageDown);
        w.key(Qt::Key_PageUp);
        QTRY_COMPARE(w.cardInSight(), second);
        w.key(Qt::Key_PageUp);
        QTRY_COMPARE(w.cardInSight(), top);
    }

    void theListKeepsItsPlaceWhileHidden() {
        Window w;
        w.add(200);
        w.settle();
        w.key(Qt::Key_PageDown);
        w.key(Qt::Key_PageDown);
        QCoreApplication::processEvents();
        const QString card = w.cardInSight();
        w.window.hide();
        QCoreApplication::processEvents();
        w.window.show();
        QTRY_COMPARE(w.cardInSight(), card);
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
    }
    void anOverlayTakesTheFocusAndGivesItBack() {
        QFETCH(QByteArray, from);
        QFETCH(int, opens);
        QFETCH(QString, focused);
        Window w;
        w.add(2);
        w.settle();
        if (from == "deleteButton") {
            w.click("editButton");
            w.click("selectionMark");
        }
        QQuickItem *const before = w.item(from.constData());
        before->forceActiveFocus(Qt::TabFocusReason);
        w.key(Qt::Key(opens));
        QTRY_VERIFY(w.window.activeFocusItem() != before);
        const QAccessibleInterface *const control =
            QAccessible::queryAccessibleInterface(w.window.activeFocusItem());
        QVERIFY(control);
        QCOMPARE(control->text(QAccessible::Name), focused);
        w.key(Qt::Key_Escape);
        QVERIFY(!w.store.isEditing());
        QTRY_VERIFY(before->hasActiveFocus());
        QVERIFY(before->property("visualFocus").toBool());
    }

    void escapeLosesNoEdits() {
        Window w;
        w.add(1);
        w.settle();
        w.click("cardTime");
        QTRY_VERIFY(w.shows("editorPanel"));
        w.editor.setHourIndex(9);
        w.key(Qt::Key_Escape);
        QVERIFY(w.store.isEditing());
        w.editor.setHourIndex(0);
        w.key(Qt::Key_Escape);
        QVERIFY(!w.store.isEditing());
    }

    void aTipFollowsItsButtonUnlessItIsInert() {
        Window w;
        w.add(1);
        w.settle();
        const QPoint button = w.frame("previewButton").center().toPoint();
        QTest::mouseMove(&w.window, button);
        QTRY_COMPARE(w.text("toolTip"), QStringLiteral("プレビュー"));
        w.click(QPointF(button));
        QTRY_COMPARE(w.text("toolTip"), QStringLiteral("停止"));
        w.click("editButton");
        QTest::mouseMove(&w.window, w.frame("previewButton").center().toPoint());
        QVERIFY(!w.item("previewButton")->property("hovered").toBool() && !w.shows("toolTip"));
    }

    void theKeyboardReachesEverythingInReadingOrder() {
        Window w;
        w.add(1);
        w.settle();
        for (const char *name : {"editButton", "addButton", "cardSurface", "previewButton", "duplicateButton",
                                 "enabledSwitch"}) {
            w.key(Qt::Key_Tab);
            QVERIFY2(w.item(name)->hasActiveFocus(), name);
        }
        w.key(Qt::Key_Space);
        QVERIFY(!w.store.groups().constFirst().isEnabled);
        QTest::keyClick(&w.window, Qt::Key_Backtab);
        w.key(Qt::Key_Return);
        QCOMPARE(w.store.groups().size(), 2);
        QSignalSpy quit(&w.window, &MainWindow::quit);
        QTest::keyClick(&w.window, Qt::Key_Q, Qt::ControlModifier);
        QCOMPARE(quit.size(), 1);
    }
};

int main(int argc, char *argv[]) {
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    const QApplication application(argc, argv);
    HomeViewTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "HomeViewTest.moc"
