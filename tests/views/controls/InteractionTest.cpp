#include "application/RandomUser.h"
#include "application/WholeWindow.h"

#include "drawing/FocusRing.h"

using namespace kova;

namespace {

using Act = std::function<void(WholeWindow &)>;

qsizetype visibleRings(WholeWindow &w) {
    const auto isRing = [](QQuickItem &item) { return qobject_cast<FocusRing *>(&item) != nullptr; };
    return ViewFixture::all(w.window.contentItem(), isRing).size();
}

void leaveAndReturn(WholeWindow &w) {
    QWindow other;
    other.show();
    other.requestActivate();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    QCOMPARE(visibleRings(w), 0);
    w.activate();
}

QStringList hovered(WholeWindow &w) {
    QStringList names;
    for (QQuickItem *item : ViewFixture::all(w.window.contentItem(), [](QQuickItem &item) {
             return item.property("hovered").toBool() || item.property("isHovered").toBool();
         })) {
        names << QString::fromLatin1(item->metaObject()->className()).section(u'_', 0, 0);
    }
    return names;
}

} // namespace

class InteractionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void focusIndicatorStaysUntilTheMouseIsUsed_data() {
        QTest::addColumn<Act>("interrupt");
        QTest::newRow("window left") << Act(&leaveAndReturn);
        QTest::newRow("alert") << Act([](WholeWindow &w) {
            w.ring(w.store.groups().constFirst(), 0);
            QTRY_VERIFY(w.shows("stopButton"));
            w.services.scheduler.endRinging();
            QTRY_VERIFY(!w.shows("stopButton"));
        });
        QTest::newRow("menu") << Act([](WholeWindow &w) {
            w.key(Qt::Key_Menu);
            QTRY_VERIFY(w.shows("menuItem"));
            w.key(Qt::Key_Escape);
            QTRY_VERIFY(!w.shows("menuItem"));
        });
    }
    void focusIndicatorStaysUntilTheMouseIsUsed() {
        QFETCH(Act, interrupt);
        WholeWindow w;
        w.item("cardSurface")->forceActiveFocus();
        QTest::keyPress(&w.window, Qt::Key_Shift);
        QCOMPARE(visibleRings(w), 0);
        w.key(Qt::Key_Tab);
        QCOMPARE(visibleRings(w), 1);
        interrupt(w);
        QTRY_COMPARE(visibleRings(w), 1);
        w.click(QPointF(5, 5));
        QCOMPARE(visibleRings(w), 0);
    }

    void everyControlOfTheEditorShowsItsFocus() {
        WholeWindow w;
        w.openEditor(
            [](AlarmGroup &group) { group.customSoundName = group.customSoundPath = QString(u'a'); });
        QSet<QQuickItem *> stops;
        for (w.key(Qt::Key_Tab); !stops.contains(w.window.activeFocusItem()); w.key(Qt::Key_Tab)) {
            QQuickItem *const stop = w.window.activeFocusItem();
            stops << stop;
            QVERIFY2(visibleRings(w) == (stop->inherits("QQuickTextInput") ? 0 : 1),
                     stop->metaObject()->className());
        }
        QVERIFY(stops.size() > 20);
    }

    void hoverFollowsThePointerWhenAPopupCloses_data() {
        QTest::addColumn<QByteArray>("type");
        QTest::addColumn<bool>("isAlert");
        for (const char *type : {"PopUpPicker", "Stepper", "CustomFileRow", "SoundRow"}) {
            QTest::addRow("%s, alert", type) << QByteArray(type) << true;
        }
        QTest::newRow("PopUpPicker, list") << QByteArray("PopUpPicker") << false;
    }
    void hoverFollowsThePointerWhenAPopupCloses() {
        QFETCH(QByteArray, type);
        QFETCH(bool, isAlert);
        WholeWindow w;
        w.openEditor();
        const QRectF control = Window::rect(w.ofType(type));
        const QPoint place = (type == "Stepper" ? control.topRight() + QPointF(-10, 6)
                                                : control.topLeft() + QPointF(20, control.height() / 2))
                                 .toPoint();
        QTest::mouseMove(&w.window, place);
        QTRY_VERIFY(!hovered(w).isEmpty());
        const QStringList before = hovered(w);
        const auto openAndClose = [&](QPoint meanwhile) {
            if (isAlert) {
                w.ring(w.store.groups().constFirst(), 0);
                QTRY_VERIFY(w.shows("stopButton"));
            } else {
                w.click(QPointF(place));
                QTRY_VERIFY(w.shows("pickerList"));
            }
            QTest::mouseMove(&w.window, meanwhile);
            QCoreApplication::processEvents();
            if (isAlert) {
                w.services.scheduler.endRinging();
                QTRY_VERIFY(!w.shows("stopButton"));
            } else {
                w.key(Qt::Key_Escape);
                QTRY_VERIFY(!w.shows("pickerList"));
            }
        };
        openAndClose({230, 1490});
        QTRY_COMPARE(hovered(w), QStringList());
        QTest::mouseMove(&w.window, place);
        QTRY_COMPARE(hovered(w), before);
        openAndClose(place + QPoint(1, 0));
        QTRY_COMPARE(hovered(w), before);
    }

    void longCompositionIsUnderlinedInsideTheField() {
        WholeWindow w;
        w.openEditor([](AlarmGroup &group) { group.label = QString(100, u'長'); });
        QQuickItem *const field = w.ofType("TextField");
        field->forceActiveFocus();
        for (const int length : {2, 100}) {
            QInputMethodEvent composing(QString(length, u'あ'), {});
            QCoreApplication::sendEvent(field, &composing);
            const QQuickItem *const line = ViewFixture::all(field, ViewFixture::has("height", 1)).value(0);
            QVERIFY(line && line->width() >= (length == 2 ? 20 : field->width() - 18));
            QVERIFY(line->x() >= 8 && line->x() + line->width() <= field->width() - 8);
        }
    }
};

QTEST_MAIN(InteractionTest)
#include "InteractionTest.moc"
