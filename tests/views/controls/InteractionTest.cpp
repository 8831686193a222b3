#include "WindowFixture.h"

#include <QStyleHints>

using namespace kova;

namespace {

qsizetype visibleRings(WholeWindow &w) {
    return w.all(Window::inherits("kova::FocusRing")).size();
}

// Counts the hovered controls. Not the popups, of which the editor's is below the pointer everywhere.
qsizetype hovered(WholeWindow &w) {
    const auto isHovered = [](const QQuickItem &item) {
        return (item.property("hovered").toBool() && !item.inherits("QQuickPopupItem")) ||
               item.property("isHovered").toBool();
    };
    return w.all(isHovered).size();
}

} // namespace

class InteractionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // As on a desktop; without it no control is ever hovered.
    void initTestCase() { QGuiApplication::styleHints()->setUseHoverEffects(true); }

    void focusIndicatorStaysUntilTheMouseIsUsed_data() {
        QTest::addColumn<Act>("interrupt");
        QTest::newRow("window left") << Act([](WholeWindow &w) {
            QWindow other;
            other.show();
            other.requestActivate();
            QVERIFY(QTest::qWaitForWindowActive(&other));
            QCOMPARE(visibleRings(w), 0);
            w.activate();
        });
        QTest::newRow("alert") << Act([](WholeWindow &w) {
            w.showAlert(w.store.groups().constFirst());
            w.endAlert();
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
        QTest::addColumn<Act>("open");
        QTest::addColumn<Act>("close");
        const Act showAlert = [](WholeWindow &w) { w.showAlert(w.store.groups().constFirst()); };
        for (const char *type : {"PopUpPicker", "StepperButton", "CustomFileRow", "soundRow"}) {
            QTest::addRow("%s, alert", type) << QByteArray(type) << showAlert << Act(&WholeWindow::endAlert);
        }
        const Act openList = [](WholeWindow &w) {
            w.click("PopUpPicker");
            QTRY_VERIFY(w.shows("pickerList"));
        };
        const Act closeList = [](WholeWindow &w) {
            w.key(Qt::Key_Escape);
            QTRY_VERIFY(!w.shows("pickerList"));
        };
        QTest::newRow("PopUpPicker, list") << QByteArray("PopUpPicker") << openList << closeList;
    }
    void hoverFollowsThePointerWhenAPopupCloses() {
        QFETCH(QByteArray, type);
        QFETCH(Act, open);
        QFETCH(Act, close);
        WholeWindow w;
        w.openEditor();
        const QRectF control = w.frame(type);
        const QPoint place = (control.topLeft() + QPointF(10, control.height() / 2)).toPoint();
        const auto openAndClose = [&](QPoint meanwhile) {
            open(w);
            QTest::mouseMove(&w.window, meanwhile);
            QCoreApplication::processEvents();
            close(w);
        };
        QTest::mouseMove(&w.window, place);
        QTRY_VERIFY(hovered(w) > 0);
        const qsizetype before = hovered(w);
        openAndClose({230, 1490});
        QTRY_COMPARE(hovered(w), 0);
        QTest::mouseMove(&w.window, place);
        QTRY_COMPARE(hovered(w), before);
        openAndClose(place + QPoint(1, 0));
        QTRY_COMPARE(hovered(w), before);
    }
};

QTEST_MAIN(InteractionTest)
#include "InteractionTest.moc"
