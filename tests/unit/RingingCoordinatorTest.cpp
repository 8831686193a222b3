#include "RingingCoordinator.h"

#include "FakeServices.h"

#include <QTest>
#include <QTimer>

using namespace kova;

class RingingCoordinatorTest : public QObject {
    Q_OBJECT

    FakeServices m_services;
    FakeFileChooser m_fileChooser;
    RingingCoordinator m_coordinator{m_services.scheduler, m_fileChooser};

    void ring() {
        m_services.soundPlayer.play(AlarmGroup(), true, QStringLiteral("alarm"));
        m_services.scheduler.setActiveAlarm(FiringAlarm{AlarmGroup(), 0, m_services.clock.time});
    }
    bool isSilent() const {
        return m_services.audioPlayers.sounding.isEmpty() && !m_services.scheduler.activeAlarm();
    }

private Q_SLOTS:
    void alarmClosesTheFileDialogAfterFiring() {
        ring();
        QCOMPARE(m_fileChooser.cancellations, 0);
        QCoreApplication::processEvents();
        QCOMPARE(m_fileChooser.cancellations, 1);
        m_services.scheduler.endRinging();
        QCoreApplication::processEvents();
        QCOMPARE(m_fileChooser.cancellations, 1);
    }

    void closingTheWindowEndsTheRingingButNotAPreview() {
        m_services.soundPlayer.togglePreview(AlarmGroup());
        m_coordinator.windowClosed();
        QVERIFY(!isSilent());
        ring();
        m_coordinator.windowClosed();
        QVERIFY(isSilent());
    }

    void quittingEndsTheRinging() {
        ring();
        QTimer::singleShot(0, QCoreApplication::instance(), &QCoreApplication::quit);
        QCoreApplication::exec();
        QVERIFY(isSilent());
    }
};

QTEST_GUILESS_MAIN(RingingCoordinatorTest)
#include "RingingCoordinatorTest.moc"
