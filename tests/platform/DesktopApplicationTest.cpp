#include "DesktopApplication.h"

#include <QTest>

using namespace kova;

class DesktopApplicationTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void windowIsBroughtBack_data() {
        QTest::addColumn<bool>("isShown");
        QTest::addColumn<bool>("isMinimised");
        QTest::addColumn<bool>("byUser");
        QTest::newRow("minimised, by an alarm") << true << true << false;
        QTest::newRow("minimised, by the user") << true << true << true;
        QTest::newRow("closed, by the user") << false << false << true;
        QTest::newRow("closed when minimised, by the user") << false << true << true;
    }

    void windowIsBroughtBack() {
        QFETCH(bool, isShown);
        QFETCH(bool, isMinimised);
        QFETCH(bool, byUser);
        QWindow window;
        DesktopApplication application;
        application.setMainWindow(&window);
        window.setVisible(true);
        window.setWindowState(isMinimised ? Qt::WindowMinimized : Qt::WindowMaximized);
        window.setVisible(isShown);
        if (byUser) {
            application.showMainWindow();
        } else {
            application.activate();
            QVERIFY(window.windowStates() & Qt::WindowMinimized); // a hung display must not delay the caller
        }
        QTRY_VERIFY(window.isVisible() && !(window.windowStates() & Qt::WindowMinimized));
    }

    void alarmDoesNotShowAClosedWindow() {
        QWindow window;
        DesktopApplication application;
        application.setMainWindow(&window);
        application.activate();
        QCoreApplication::processEvents();
        QVERIFY(!window.isVisible());
    }
};

QTEST_MAIN(DesktopApplicationTest)
#include "DesktopApplicationTest.moc"
