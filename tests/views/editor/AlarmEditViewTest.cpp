#include "WindowFixture.h"

#include <QClipboard>
#include <QInputMethodEvent>

using namespace kova;
using namespace Qt::StringLiterals;

namespace {

/// The editor, by default in a window that is tall enough for all of it.
struct Shown : Window {
    explicit Shown(const AlarmGroup &group = {}, QSize size = {460, 1500}) {
        window.resize(size);
        edit(group);
    }
};

} // namespace

class AlarmEditViewTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
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
        shown.type(u"abc"_s);
        choose(u"すべて選択"_s);
        choose(u"切り取り"_s);
        QCOMPARE(shown.edited().label, QString());
        choose(u"貼り付け"_s);
        choose(u"貼り付け"_s);
        QCOMPARE(shown.edited().label, u"abcabc"_s);
        choose(u"すべて選択"_s);
        choose(u"コピー"_s);
        QCOMPARE(QGuiApplication::clipboard()->text(), u"abcabc"_s);
        QGuiApplication::clipboard()->setText(u"a\r\nb\tc\nd"_s); // stays on one line
        QTest::keySequence(&shown.window, QKeySequence::Paste);
        QCOMPARE(shown.edited().label, u"a b c d"_s);
    }

    void opensAPickerOverItsValue() {
        AlarmGroup group;
        group.targetMinute = 30;
        Shown shown(group);
        const QQuickItem *const minute = shown.item("PopUpPicker", 1);
        shown.click("PopUpPicker", 1);
        QTRY_VERIFY(shown.shows("pickerList"));
        const auto distance = [&] {
            const auto rows = Window::all(shown.item("pickerList"), Window::has("text", u"30"_s));
            return std::abs(Window::rect(rows.value(0)).center().y() - Window::rect(minute).center().y());
        };
        QTRY_VERIFY(distance() <= 8);
    }

    void underlinesAJapaneseCompositionInsideTheField() {
        Shown shown;
        QQuickItem *const field = shown.item("TextField");
        shown.click(field);
        const auto compose = [field](const QString &text) {
            QInputMethodEvent composing(text, {});
            QCoreApplication::sendEvent(field, &composing);
        };
        const auto underline = [field] { return Window::all(field, Window::has("height", 1)).value(0); };
        compose(u"あさ"_s);
        QVERIFY(underline() && !shown.withText(u"例: 朝のアラーム"_s));
        QCOMPARE(shown.edited().label, QString());
        compose(QString());
        QVERIFY(!underline());
        shown.type(u"7"_s);
        QCOMPARE(shown.edited().label, u"7"_s);
        field->setProperty("text", QString(100, u'長'));
        for (const int length : {2, 100}) {
            compose(QString(length, u'あ'));
            const QQuickItem *const line = underline();
            QVERIFY(line && line->width() >= (length == 2 ? 20 : field->width() - 18));
            QVERIFY(line->x() >= 8 && line->x() + line->width() <= field->width() - 8);
        }
    }

    void tabOrderIsReadingOrderAndFocusIsShown() {
        AlarmGroup group;
        group.customSoundName = group.customSoundPath = QString(u'a');
        group.ttsEnabled = group.ttsLastEnabled = true;
        group.ttsMessage = group.ttsLastMessage = u"起きて"_s;
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

    void scrollsTheTimeline() {
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

        const auto wheel = [&](QPoint angle, Qt::KeyboardModifiers modifiers = {}) {
            shown.wheel(shown.frame("TimelineStrip").center() + QPointF(0, 8), angle, modifiers);
        };
        const std::function<void(bool)> ways[] = {
            [&](bool right) { wheel(QPoint(right ? -120 : 120, 0)); },
            [&](bool right) { wheel(QPoint(0, right ? -120 : 120), Qt::ShiftModifier); },
            [&](bool right) { shown.key(right ? Qt::Key_Right : Qt::Key_Left); },
            [&](bool right) { shown.key(right ? Qt::Key_End : Qt::Key_Home); },
        };
        for (const auto &scroll : ways) {
            scroll(true);
            QTRY_VERIFY(!isAtStart());
            shown.set(&EditedGroup::setIntervalMinutes, shown.edited().intervalMinutes == 7 ? 8 : 7);
            QVERIFY(!isAtStart());
            scroll(false);
            QTRY_VERIFY(isAtStart());
            QCOMPARE(Window::rect(list).top(), top);
        }

        shown.item("QQuickSpinBox")->forceActiveFocus(Qt::TabFocusReason);
        shown.set(&EditedGroup::setAlarmCount, 3);
        QVERIFY(!list->activeFocusOnTab());
    }

    void scrollsByWheelAndToTheFocusedControlButNotByDragging() {
        Shown shown({}, {460, 560});
        const QQuickItem *const area = shown.all(Window::inherits("QQuickFlickable")).value(0);
        QTest::mousePress(&shown.window, Qt::LeftButton, {}, {200, 400});
        for (int y = 390; y >= 200; y -= 10) {
            QTest::mouseMove(&shown.window, {200, y});
        }
        QTest::mouseRelease(&shown.window, Qt::LeftButton, {}, {200, 200});
        QCOMPARE(area->property("contentY").toReal(), 0);
        shown.wheel({200, 400}, {0, -120});
        QTRY_VERIFY(area->property("contentY").toReal() > 0);

        shown.key(Qt::Key_Tab);
        QQuickItem *toggle = shown.item("CheckBox", 1);
        QVERIFY(Window::rect(toggle).top() > 560);
        toggle->forceActiveFocus();
        QTRY_VERIFY(Window::rect(toggle).bottom() <= 560);
        shown.key(Qt::Key_Home); // leaves the focus
        QTRY_VERIFY(Window::rect(toggle).top() > 560);
        shown.key(Qt::Key_Space);
        QTRY_VERIFY(Window::rect(toggle).bottom() <= 560);
        QQuickItem *save = shown.withText(u"保存"_s);
        save->forceActiveFocus();
        QTRY_VERIFY(Window::rect(save).top() >= 0);
    }

    void stopsPreviewsWhenHiddenOrDestroyed() {
        Shown shown;
        const auto tryOut = [&] { shown.editor.preview(u"morning_glass"_s); };
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
