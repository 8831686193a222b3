#include "DesktopApplication.h"

#include <QTest>

using namespace kova;

class DesktopApplicationTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void windowIsRestoredButShownOnlyOnRequest() {
        QWindow window;
        DesktopApplication application;
        application.setMainWindow(&window);
        application.activate();
        QCoreApplication::processEvents();
        QVERIFY(!window.isVisible()); // an alarm does not show a closed window
        window.showMinimized();
        application.activate();
        QVERIFY(window.windowStates() & Qt::WindowMinimized); // a hung display must not delay the caller
        QTRY_VERIFY(!(window.windowStates() & Qt::WindowMinimized));
        window.showMinimized();
        window.close();
        application.showMainWindow();
        QTRY_VERIFY(window.isVisible() && !(window.windowStates() & Qt::WindowMinimized));
    }
};

QTEST_MAIN(DesktopApplicationTest)
#include "DesktopApplicationTest.moc"
