#include "RingingRules.h"

#include "FakeFileChooser.h"
#include "FakeServices.h"

#include <QTest>
#include <QTimer>

using namespace kova;

class RingingRulesTest : public QObject {
    Q_OBJECT

    std::unique_ptr<FakeServices> m_services;
    FakeFileChooser m_fileChooser;
    std::unique_ptr<RingingRules> m_rules;

    void ring() {
        m_services->soundPlayer.play(AlarmGroup(), true, QStringLiteral("alarm"));
        m_services->scheduler.setActiveAlarm(FiringAlarm{AlarmGroup(), 0, m_services->clock.time});
    }
    bool isSilent() const {
        return m_services->audioPlayers.sounding.isEmpty() && !m_services->scheduler.activeAlarm();
    }

private Q_SLOTS:
    void init() {
        m_services = std::make_unique<FakeServices>();
        m_fileChooser = {};
        m_rules = std::make_unique<RingingRules>(m_services->scheduler, m_fileChooser);
    }

    void firedAlarmClosesFileDialog() {
        ring();
        QCOMPARE(m_fileChooser.cancellations, 0);
        QCoreApplication::processEvents();
        QCOMPARE(m_fileChooser.cancellations, 1);
        m_services->scheduler.endRinging();
        QCoreApplication::processEvents();
        QCOMPARE(m_fileChooser.cancellations, 1);
    }

    void closingWindowEndsRingingAlarmButNotPreview() {
        m_services->soundPlayer.togglePreview(AlarmGroup());
        m_rules->windowClosed();
        QVERIFY(!isSilent());
        ring();
        m_rules->windowClosed();
        QVERIFY(isSilent());
    }

    void quittingEndsRingingAlarm() {
        ring();
        QTimer::singleShot(0, QCoreApplication::instance(), &QCoreApplication::quit);
        QCoreApplication::exec();
        QVERIFY(isSilent());
    }
};

QTEST_GUILESS_MAIN(RingingRulesTest)
#include "RingingRulesTest.moc"
