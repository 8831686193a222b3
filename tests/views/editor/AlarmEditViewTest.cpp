#include "EditorFixture.h"
#include "ViewFixture.h"

#include <QClipboard>
#include <QFontMetricsF>
#include <QInputMethodEvent>
#include <QSignalSpy>

using namespace kova;

namespace {

/// Tall enough to show the whole editor.
constexpr QSize tall{460, 1500};

struct Shown : EditorFixture, ViewFixture {
    explicit Shown(const AlarmGroup &group = {}, QSize size = tall)
        : EditorFixture(group),
          ViewFixture(QStringLiteral("editor/AlarmEditView"),
                      {{QStringLiteral("editor"), QVariant::fromValue(&editor)}}, size) {}

    QList<QQuickItem *> ofTypes(const QByteArray &type) { return all(root(), isA(type)); }
};

using Act = std::function<void(Shown &)>;

QRectF rect(const QQuickItem *item) {
    return ViewFixture::rect(item);
}

} // namespace

class AlarmEditViewTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void choosesTimesInThePickers() {
        Shown shown;
        QQuickItem *hour = shown.ofType("PopUpPicker", 0);
        QQuickItem *minute = shown.ofType("PopUpPicker", 1);
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

    void anOpenPickerTakesTheClickThatClosesIt() {
        Shown shown;
        shown.click(shown.ofType("PopUpPicker", 1));
        QTRY_VERIFY(shown.ofType("PickerItem"));
        shown.click(shown.ofType("DayChip", 3));
        QTRY_VERIFY(!shown.ofType("PickerItem"));
        QVERIFY(shown.edited().repeatDays.isEmpty());
    }

    void keepsPastedTextOnOneLine() {
        Shown shown;
        shown.click(shown.ofType("TextField"));
        QGuiApplication::clipboard()->setText(QStringLiteral("a\r\nb\tc\nd"));
        QTest::keySequence(&shown.window(), QKeySequence::Paste);
        QCOMPARE(shown.edited().label, QStringLiteral("a b c d"));
    }

    void offersWhatCanBeDoneWithAText() {
        Shown shown;
        QQuickItem *const field = shown.ofType("TextField");
        const auto choose = [&](const QString &entry) {
            QTest::mouseClick(&shown.window(), Qt::RightButton, {}, rect(field).center().toPoint());
            const auto item =
                ViewFixture::both(ViewFixture::isA("ContextMenuItem"), ViewFixture::has("text", entry));
            QTRY_VERIFY(shown.first(item));
            shown.click(shown.first(item));
            QTRY_VERIFY(!shown.first(item));
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
        QQuickItem *minute = shown.ofType("PopUpPicker", 1);
        shown.click(minute);
        const auto row = [&](const QString &text) {
            return shown.first(
                ViewFixture::both(ViewFixture::isA("PickerItem"), ViewFixture::has("text", text)));
        };
        QTRY_VERIFY(row(QStringLiteral("30")));
        QTRY_VERIFY(std::abs(rect(row(QStringLiteral("30"))).center().y() - rect(minute).center().y()) <= 8);
        shown.click(row(QStringLiteral("31")));
        QCOMPARE(shown.edited().targetMinute, 31);
        QTRY_VERIFY(!row(QStringLiteral("31")));
    }

    void bringsAStrangeCountIntoItsRange() {
        AlarmGroup strange;
        strange.alarmCount = 500;
        Shown shown(strange);
        const QRectF count = rect(shown.ofType("Stepper"));
        QVERIFY(shown.text(QStringLiteral("500回")));
        shown.click(count.topRight() + QPointF(-10, 6));
        QCOMPARE(shown.edited().alarmCount, 500);
        shown.click(count.bottomRight() + QPointF(-10, -6));
        QCOMPARE(shown.edited().alarmCount, 20);
    }

    void takesJapaneseText() {
        Shown shown;
        QQuickItem *field = shown.ofType("TextField");
        shown.click(field);
        QVERIFY(field->hasActiveFocus());
        QInputMethodEvent composing(QStringLiteral("あさ"), {});
        QCoreApplication::sendEvent(field, &composing);
        QVERIFY(!shown.text(QStringLiteral("例: 朝のアラーム")));
        QCOMPARE(shown.edited().label, QString());
        QInputMethodEvent committed;
        committed.setCommitString(QStringLiteral("朝の"));
        QCoreApplication::sendEvent(field, &committed);
        QCOMPARE(shown.edited().label, QStringLiteral("朝の"));
        const auto underline = [field] {
            return ViewFixture::all(field, ViewFixture::has("height", 1)).value(0);
        };
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
    }

    void leadsTheKeysFromSoundToSound() {
        Shown shown;
        const QList<QQuickItem *> rows = shown.ofTypes("SoundRow");
        const auto playButton = [](QQuickItem *row) {
            return ViewFixture::all(row, ViewFixture::isA("PlainButton")).value(0);
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

    void cutsALongFileNameShort() {
        Shown shown;
        shown.fileChooser.answer = QStringLiteral("/music/%1.mp3").arg(QString(200, u'長'));
        shown.click(shown.text(QStringLiteral("ファイルから選択")));
        const QQuickItem *const name = shown.text(*shown.edited().customSoundName);
        QVERIFY(name && name->property("truncated").toBool());
        QVERIFY(rect(name).right() < 428);
    }

    void leadsTheKeyboardInReadingOrder() {
        AlarmGroup group;
        group.ttsEnabled = group.ttsLastEnabled = true;
        group.ttsMessage = group.ttsLastMessage = QStringLiteral("起きて");
        Shown shown(group);
        shown.text(QStringLiteral("キャンセル"))->parentItem()->forceActiveFocus();
        QTest::keyClick(&shown.window(), Qt::Key_Backtab);
        QList<QQuickItem *> stops;
        for (int i = 0; i < 40; ++i) {
            shown.key(Qt::Key_Tab);
            QQuickItem *stop = shown.window().activeFocusItem();
            if (stops.contains(stop)) {
                break;
            }
            stops.append(stop);
        }
        // 2 in the header, 2 pickers, 1 segment, the label, 7 days, 2 steppers, the file, a row and its
        // button, the volume, 2 toggles with 2 messages and 2 buttons, the speech volume.
        QCOMPARE(stops.size(), 26);
        for (qsizetype i = 1; i < stops.size(); ++i) {
            const QRectF before = rect(stops.at(i - 1));
            const QRectF after = rect(stops.at(i));
            const bool isBelow = after.top() >= before.bottom();
            const bool isRight = after.left() >= before.left() && after.bottom() > before.top();
            QVERIFY2(isBelow || isRight, stops.at(i)->metaObject()->className());
        }
    }

    void scrollsByWheelButNotByDragging() {
        Shown shown({}, {460, 560});
        QQuickItem *area = shown.ofType("ScrollArea");
        const QPoint start(200, 400);
        QTest::mousePress(&shown.window(), Qt::LeftButton, {}, start);
        for (int y = 390; y > 200; y -= 10) {
            QTest::mouseMove(&shown.window(), {200, y});
        }
        QTest::mouseRelease(&shown.window(), Qt::LeftButton, {}, {200, 200});
        QCOMPARE(area->property("contentY").toReal(), 0);

        shown.wheel(start, {0, -120});
        QTRY_VERIFY(area->property("contentY").toReal() > 0);
    }

    void scrollsTheTimeline_data() {
        QTest::addColumn<Act>("right");
        QTest::addColumn<Act>("left");
        const auto wheel = [](QPoint angle, Qt::KeyboardModifiers modifiers) {
            return Act([=](Shown &shown) {
                const QRectF strip = rect(shown.ofType("TimelineStrip"));
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
        QQuickItem *const list =
            shown.first([](QQuickItem &item) { return item.inherits("QQuickListView"); });
        const auto isAtStart = [list] { return list->property("atXBeginning").toBool(); };
        shown.ofType("Stepper", 1)->forceActiveFocus(Qt::TabFocusReason);
        shown.key(Qt::Key_Tab);
        QVERIFY(list->hasActiveFocus());
        QVERIFY(!ViewFixture::all(shown.ofType("TimelineStrip"), [](QQuickItem &item) {
                     return item.inherits("kova::FocusRing");
                 }).isEmpty());
        QTRY_VERIFY(rect(list).bottom() < 800);
        const qreal top = rect(list).top();

        right(shown);
        QTRY_VERIFY(!isAtStart());
        shown.set(&EditedGroup::setIntervalMinutes, 7);
        QVERIFY(!isAtStart());
        left(shown);
        QTRY_VERIFY(isAtStart());
        QCOMPARE(rect(list).top(), top);

        shown.ofType("Stepper")->forceActiveFocus(Qt::TabFocusReason);
        shown.set(&EditedGroup::setAlarmCount, 3);
        QVERIFY(!list->activeFocusOnTab());
        QSignalSpy changed(&shown.editor, &AlarmEditor::timelineChanged);
        shown.set(&EditedGroup::setVolume, 0.1F);
        QCOMPARE(changed.size(), 0);
    }

    void followsTheFocusOutOfSight() {
        Shown shown({}, {460, 560});
        shown.key(Qt::Key_Tab);
        QQuickItem *toggle = shown.ofType("CheckBox", 1);
        QVERIFY(rect(toggle).top() > 560);
        toggle->forceActiveFocus();
        QTRY_VERIFY(rect(toggle).bottom() <= 560);
        shown.key(Qt::Key_Home); // leaves the focus
        QTRY_VERIFY(rect(toggle).top() > 560);
        shown.key(Qt::Key_Space);
        QTRY_VERIFY(rect(toggle).bottom() <= 560);
        QQuickItem *save = shown.text(QStringLiteral("保存"));
        save->forceActiveFocus();
        QTRY_VERIFY(rect(save).top() >= 0);
    }

    void silencesTryOutsWhenItLeavesTheScreen() {
        Shown shown;
        const auto tryOut = [&] { shown.editor.preview(QStringLiteral("morning_glass")); };
        tryOut();
        shown.window().hide();
        QTRY_VERIFY(!shown.services.soundPlayer.isPlaying());
        shown.window().show();
        QVERIFY(shown.store.isEditing());
        tryOut();
        shown.window().setSource({});
        QVERIFY(!shown.services.soundPlayer.isPlaying());
    }
};

QTEST_MAIN(AlarmEditViewTest)
#include "AlarmEditViewTest.moc"
