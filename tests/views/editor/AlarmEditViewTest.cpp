#include "WindowFixture.h"

#include <QClipboard>
#include <QFontMetricsF>
#include <QInputMethodEvent>
#include <QSignalSpy>

using namespace kova;

namespace {

/// Tall enough to show the whole editor.
constexpr QSize tall{460, 1500};

struct Shown : Window {
    explicit Shown(const AlarmGroup &group = {}, QSize size = tall) {
        window.resize(size);
        edit(group);
    }
};

using Act = std::function<void(Shown &)>;

} // namespace

class AlarmEditViewTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void choosesTimesInThePickers() {
        Shown shown;
        QQuickItem *hour = shown.item("PopUpPicker", 0);
        QQuickItem *minute = shown.item("PopUpPicker", 1);
        hour->forceActiveFocus();
        shown.type(QStringLiteral("23"));
        QCOMPARE(shown.edited().targetHour, 23);
        shown.key(Qt::Key_Up);
        QCOMPARE(shown.edited().targetHour, 22);
        shown.key(Qt::Key_Tab);
        QVERIFY(minute->hasActiveFocus());
        shown.type(QStringLiteral("5"));
        QCOMPARE(minute->property("displayText"), QStringLiteral("05"));
        shown.type(QStringLiteral("9"));
        QCOMPARE(shown.edited().targetMinute, 59);
        shown.key(Qt::Key_Down);
        QCOMPARE(shown.edited().targetMinute, 59);

        shown.key(Qt::Key_Return);
        QTRY_VERIFY(minute->property("down").toBool());
        shown.key(Qt::Key_Up);
        QCOMPARE(shown.edited().targetMinute, 59);
        shown.key(Qt::Key_Return);
        QCOMPARE(shown.edited().targetMinute, 58);
        shown.key(Qt::Key_Space);
        shown.key(Qt::Key_Up);
        shown.key(Qt::Key_Escape);
        QCOMPARE(shown.edited().targetMinute, 58);
    }

    void clickThatClosesAPickerHasNoOtherEffect() {
        Shown shown;
        shown.click(shown.item("PopUpPicker", 1));
        QTRY_VERIFY(shown.item("pickerItem"));
        shown.click(shown.item("DayChip", 3));
        QTRY_VERIFY(!shown.item("pickerItem"));
        QVERIFY(shown.edited().repeatDays.isEmpty());
    }

    void keepsPastedTextOnOneLine() {
        Shown shown;
        shown.click(shown.item("TextField"));
        QGuiApplication::clipboard()->setText(QStringLiteral("a\r\nb\tc\nd"));
        QTest::keySequence(&shown.window, QKeySequence::Paste);
        QCOMPARE(shown.edited().label, QStringLiteral("a b c d"));
    }

    void contextMenuEditsTheText() {
        Shown shown;
        QQuickItem *const field = shown.item("TextField");
        const auto choose = [&](const QString &entry) {
            shown.click(Window::rect(field).center(), Qt::RightButton);
            QTRY_VERIFY(shown.withText(entry));
            shown.click(shown.withText(entry));
            QTRY_VERIFY(!shown.withText(entry));
            QVERIFY(field->hasActiveFocus());
        };
        shown.click(field);
        shown.type(QStringLiteral("abc"));
        choose(QStringLiteral("すべて選択"));
        choose(QStringLiteral("切り取り"));
        QCOMPARE(shown.edited().label, QString());
        choose(QStringLiteral("貼り付け"));
        choose(QStringLiteral("貼り付け"));
        QCOMPARE(shown.edited().label, QStringLiteral("abcabc"));
        choose(QStringLiteral("すべて選択"));
        choose(QStringLiteral("コピー"));
        QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("abcabc"));
    }

    void opensAPickerOverItsValue() {
        AlarmGroup group;
        group.targetMinute = 30;
        Shown shown(group);
        QQuickItem *minute = shown.item("PopUpPicker", 1);
        shown.click(minute);
        const auto row = [&](const QString &text) {
            const QQuickItem *const list = shown.item("pickerList");
            return list ? Window::all(list, Window::has("text", text)).value(0) : nullptr;
        };
        QTRY_VERIFY(row(QStringLiteral("30")));
        QTRY_VERIFY(std::abs(Window::rect(row(QStringLiteral("30"))).center().y() -
                             Window::rect(minute).center().y()) <= 8);
        shown.click(row(QStringLiteral("31")));
        QCOMPARE(shown.edited().targetMinute, 31);
        QTRY_VERIFY(!row(QStringLiteral("31")));
    }

    void stepBringsACountIntoItsRange() {
        AlarmGroup outOfRange;
        outOfRange.alarmCount = 500;
        Shown shown(outOfRange);
        const QRectF count = Window::rect(shown.item("QQuickSpinBox"));
        QVERIFY(shown.withText(QStringLiteral("500回")));
        shown.click(count.topRight() + QPointF(-10, 6));
        QCOMPARE(shown.edited().alarmCount, 500);
        shown.click(count.bottomRight() + QPointF(-10, -6));
        QCOMPARE(shown.edited().alarmCount, 20);
    }

    void composesJapaneseText() {
        Shown shown;
        QQuickItem *field = shown.item("TextField");
        shown.click(field);
        QVERIFY(field->hasActiveFocus());
        QInputMethodEvent composing(QStringLiteral("あさ"), {});
        QCoreApplication::sendEvent(field, &composing);
        QVERIFY(!shown.withText(QStringLiteral("例: 朝のアラーム")));
        QCOMPARE(shown.edited().label, QString());
        QInputMethodEvent committed;
        committed.setCommitString(QStringLiteral("朝の"));
        QCoreApplication::sendEvent(field, &committed);
        QCOMPARE(shown.edited().label, QStringLiteral("朝の"));
        const auto underline = [field] { return Window::all(field, Window::has("height", 1)).value(0); };
        QVERIFY(!underline());
        QCoreApplication::sendEvent(field, &composing);
        QVERIFY(underline());
        const qreal width =
            QFontMetricsF(field->property("font").value<QFont>()).horizontalAdvance(QStringLiteral("あさ"));
        const QRectF cursor = field->property("cursorRectangle").toRectF();
        QCOMPARE(underline()->width(), std::ceil(width));
        QVERIFY(std::abs(underline()->x() + width - cursor.x()) <= 1);
        QVERIFY(underline()->y() >= cursor.bottom() - 2 && underline()->y() < field->height() - 1);
        QInputMethodEvent givenUp;
        QCoreApplication::sendEvent(field, &givenUp);
        QVERIFY(!underline());
        shown.type(QStringLiteral("7"));
        shown.key(Qt::Key_Return);
        QCOMPARE(shown.edited().label, QStringLiteral("朝の7"));
        field->setProperty("text", QString(100, u'長'));
        for (const int length : {2, 100}) {
            QInputMethodEvent longer(QString(length, u'あ'), {});
            QCoreApplication::sendEvent(field, &longer);
            const QQuickItem *const line = underline();
            QVERIFY(line && line->width() >= (length == 2 ? 20 : field->width() - 18));
            QVERIFY(line->x() >= 8 && line->x() + line->width() <= field->width() - 8);
        }
    }

    void arrowKeysMoveBetweenSounds() {
        Shown shown;
        const QList<QQuickItem *> rows = shown.all("soundRow");
        const auto playButton = [](QQuickItem *row) {
            return Window::all(row, Window::isA("SymbolButton")).value(0);
        };
        shown.click(rows.at(2));
        shown.key(Qt::Key_Down);
        QCOMPARE(shown.edited().soundName, QStringLiteral("dawn_bird_drift"));
        shown.key(Qt::Key_Tab);
        QVERIFY(playButton(rows.at(3))->hasActiveFocus());
        shown.key(Qt::Key_Up);
        QVERIFY(playButton(rows.at(2))->hasActiveFocus());
        QCOMPARE(shown.edited().soundName, QStringLiteral("dawn_bird_drift"));
    }

    void elidesALongFileName() {
        Shown shown;
        shown.fileChooser.answer = QStringLiteral("/music/%1.mp3").arg(QString(200, u'長'));
        shown.click(shown.withText(QStringLiteral("ファイルから選択")));
        const QQuickItem *const name = shown.withText(*shown.edited().customSoundName);
        QVERIFY(name && name->property("truncated").toBool());
        QVERIFY(Window::rect(name).right() < 428);
    }

    void tabOrderIsReadingOrderAndFocusIsShown() {
        AlarmGroup group;
        group.customSoundName = group.customSoundPath = QString(u'a');
        group.ttsEnabled = group.ttsLastEnabled = true;
        group.ttsMessage = group.ttsLastMessage = QStringLiteral("起きて");
        Shown shown(group);
        shown.item("cancelEditButton")->forceActiveFocus();
        shown.key(Qt::Key_Backtab);
        QList<QQuickItem *> stops;
        for (shown.key(Qt::Key_Tab); !stops.contains(shown.window.activeFocusItem());
             shown.key(Qt::Key_Tab)) {
            stops << shown.window.activeFocusItem();
            const bool hasRing = !stops.constLast()->inherits("QQuickTextInput");
            QVERIFY2(shown.all(Window::inherits("kova::FocusRing")).size() == (hasRing ? 1 : 0),
                     stops.constLast()->metaObject()->className());
        }
        // 2 in the header, 2 pickers, 1 segment, the label, 7 days, 2 steppers, 2 of the file, a row and its
        // button, the volume, 2 toggles with 2 messages and 2 buttons, the speech volume.
        QCOMPARE(stops.size(), 27);
        for (qsizetype i = 1; i < stops.size(); ++i) {
            const QRectF before = Window::rect(stops.at(i - 1));
            const QRectF after = Window::rect(stops.at(i));
            const bool isBelow = after.top() >= before.bottom();
            const bool isRight = after.left() >= before.left() && after.bottom() > before.top();
            QVERIFY2(isBelow || isRight, stops.at(i)->metaObject()->className());
        }
    }

    void scrollsByWheelButNotByDragging() {
        Shown shown({}, {460, 560});
        QQuickItem *area = shown.all(Window::inherits("QQuickFlickable")).value(0);
        const QPoint start(200, 400);
        QTest::mousePress(&shown.window, Qt::LeftButton, {}, start);
        for (int y = 390; y > 200; y -= 10) {
            QTest::mouseMove(&shown.window, {200, y});
        }
        QTest::mouseRelease(&shown.window, Qt::LeftButton, {}, {200, 200});
        QCOMPARE(area->property("contentY").toReal(), 0);

        shown.wheel(start, {0, -120});
        QTRY_VERIFY(area->property("contentY").toReal() > 0);
    }

    void scrollsTheTimeline_data() {
        QTest::addColumn<Act>("right");
        QTest::addColumn<Act>("left");
        const auto wheel = [](QPoint angle, Qt::KeyboardModifiers modifiers) {
            return Act([=](Shown &shown) {
                const QRectF strip = Window::rect(shown.item("TimelineStrip"));
                shown.wheel(strip.center() + QPointF(0, 8), angle, modifiers);
            });
        };
        QTest::newRow("horizontal wheel") << wheel({-120, 0}, {}) << wheel({120, 0}, {});
        QTest::newRow("wheel with Shift")
            << wheel({0, -120}, Qt::ShiftModifier) << wheel({0, 120}, Qt::ShiftModifier);
        QTest::newRow("arrow keys") << Act([](Shown &shown) { shown.key(Qt::Key_Right); })
                                    << Act([](Shown &shown) { shown.key(Qt::Key_Left); });
        QTest::newRow("Home and End") << Act([](Shown &shown) { shown.key(Qt::Key_End); })
                                      << Act([](Shown &shown) { shown.key(Qt::Key_Home); });
    }
    void scrollsTheTimeline() {
        QFETCH(Act, right);
        QFETCH(Act, left);
        AlarmGroup group;
        group.alarmCount = 20;
        Shown shown(group, {460, 800});
        QQuickItem *const list = shown.all(Window::inherits("QQuickListView")).value(0);
        const auto isAtStart = [list] { return list->property("atXBeginning").toBool(); };
        shown.item("QQuickSpinBox", 1)->forceActiveFocus(Qt::TabFocusReason);
        shown.key(Qt::Key_Tab);
        QVERIFY(list->hasActiveFocus());
        QVERIFY(!Window::all(shown.item("TimelineStrip"), Window::inherits("kova::FocusRing")).isEmpty());
        QTRY_VERIFY(Window::rect(list).bottom() < 800);
        const qreal top = Window::rect(list).top();

        right(shown);
        QTRY_VERIFY(!isAtStart());
        shown.set(&EditedGroup::setIntervalMinutes, 7);
        QVERIFY(!isAtStart());
        left(shown);
        QTRY_VERIFY(isAtStart());
        QCOMPARE(Window::rect(list).top(), top);

        shown.item("QQuickSpinBox")->forceActiveFocus(Qt::TabFocusReason);
        shown.set(&EditedGroup::setAlarmCount, 3);
        QVERIFY(!list->activeFocusOnTab());
        QSignalSpy changed(&shown.editor, &AlarmEditor::timelineChanged);
        shown.set(&EditedGroup::setVolume, 0.1F);
        QCOMPARE(changed.size(), 0);
    }

    void scrollsToTheFocusedControl() {
        Shown shown({}, {460, 560});
        shown.key(Qt::Key_Tab);
        QQuickItem *toggle = shown.item("CheckBox", 1);
        QVERIFY(Window::rect(toggle).top() > 560);
        toggle->forceActiveFocus();
        QTRY_VERIFY(Window::rect(toggle).bottom() <= 560);
        shown.key(Qt::Key_Home); // leaves the focus
        QTRY_VERIFY(Window::rect(toggle).top() > 560);
        shown.key(Qt::Key_Space);
        QTRY_VERIFY(Window::rect(toggle).bottom() <= 560);
        QQuickItem *save = shown.withText(QStringLiteral("保存"));
        save->forceActiveFocus();
        QTRY_VERIFY(Window::rect(save).top() >= 0);
    }

    void stopsPreviewsWhenHiddenOrDestroyed() {
        Shown shown;
        const auto tryOut = [&] { shown.editor.preview(QStringLiteral("morning_glass")); };
        tryOut();
        shown.window.hide();
        QTRY_VERIFY(!shown.services.soundPlayer.isPlaying());
        shown.window.show();
        QVERIFY(shown.store.isEditing());
        tryOut();
        shown.window.setSource({});
        QVERIFY(!shown.services.soundPlayer.isPlaying());
    }
};

QTEST_MAIN(AlarmEditViewTest)
#include "AlarmEditViewTest.moc"
