#include "application/RandomUser.h"
#include "application/WholeWindow.h"

#include <QStyleHints>

using namespace kova;

namespace {

using Act = std::function<void(WholeWindow &)>;

qsizetype visibleRings(WholeWindow &w) {
    return w.all(Window::inherits("kova::FocusRing")).size();
}

void leaveAndReturn(WholeWindow &w) {
    QWindow other;
    other.show();
    other.requestActivate();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    QCOMPARE(visibleRings(w), 0);
    w.activate();
}

// Returns the types of the hovered controls. Not the popups, of which the editor's is below the pointer
// everywhere.
QString hovered(WholeWindow &w) {
    QStringList names;
    for (QQuickItem *item : w.all([](const QQuickItem &item) {
             return (item.property("hovered").toBool() && !item.inherits("QQuickPopupItem")) ||
                    item.property("isHovered").toBool();
         })) {
        names << QString::fromLatin1(item->metaObject()->className()).section(u'_', 0, 0);
    }
    return names.join(u' ');
}

} // namespace

class InteractionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // As on a desktop; without it no control is ever hovered.
    void initTestCase() { QGuiApplication::styleHints()->setUseHoverEffects(true); }

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

    void hoverFollowsThePointerWhenAPopupCloses_data() {
        QTest::addColumn<QByteArray>("type");
        QTest::addColumn<bool>("isAlert");
        for (const char *type : {"PopUpPicker", "QQuickSpinBox", "CustomFileRow", "soundRow"}) {
            QTest::addRow("%s, alert", type) << QByteArray(type) << true;
        }
        QTest::newRow("PopUpPicker, list") << QByteArray("PopUpPicker") << false;
    }
    void hoverFollowsThePointerWhenAPopupCloses() {
        QFETCH(QByteArray, type);
        QFETCH(bool, isAlert);
        WholeWindow w;
        w.openEditor();
        const QRectF control = Window::rect(w.item(type));
        const QPoint place = (type == "QQuickSpinBox" ? control.topRight() + QPointF(-10, 6)
                                                      : control.topLeft() + QPointF(20, control.height() / 2))
                                 .toPoint();
        QTest::mouseMove(&w.window, place);
        QTRY_VERIFY(!hovered(w).isEmpty());
        const QString before = hovered(w);
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
        QTRY_COMPARE(hovered(w), QString());
        QTest::mouseMove(&w.window, place);
        QTRY_COMPARE(hovered(w), before);
        openAndClose(place + QPoint(1, 0));
        QTRY_COMPARE(hovered(w), before);
    }
};

QTEST_MAIN(InteractionTest)
#include "InteractionTest.moc"
