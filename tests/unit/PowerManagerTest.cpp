#include "FakeServices.h"

#include <QSignalSpy>
#include <QTest>

using namespace kova;

class PowerManagerTest : public QObject {
    Q_OBJECT

    FakePowerAssertions m_assertions;
    FakeLog m_log;
    std::optional<PowerManager> m_manager;

private Q_SLOTS:
    void init() {
        m_assertions = {};
        m_log.take();
        m_manager.emplace(m_assertions, m_log);
    }

    void holdsOneAssertionAtATime() {
        const QSignalSpy changes(&*m_manager, &PowerManager::isPreventingSleepChanged);
        m_manager->allowSleep();
        m_manager->preventSleep();
        m_manager->preventSleep();
        QCOMPARE(m_assertions.held.values(),
                 QStringList{QStringLiteral("KOVA Alarm active — preventing sleep")});
        m_manager->allowSleep();
        m_manager->allowSleep();
        QVERIFY(m_assertions.held.isEmpty());
        m_manager->preventSleep();
        QCOMPARE(changes.count(), 3);
        m_manager.reset();
        QVERIFY(m_assertions.held.isEmpty());
        QCOMPARE(m_log.lines, (QStringList{QStringLiteral("[PowerManager] Sleep prevention ON (id: 12345)"),
                                           QStringLiteral("[PowerManager] Sleep prevention OFF"),
                                           QStringLiteral("[PowerManager] Sleep prevention ON (id: 12346)"),
                                           QStringLiteral("[PowerManager] Sleep prevention OFF")}));
    }

    void failureIsLoggedAndRetried() {
        m_assertions.failure = -536870212;
        m_manager->preventSleep();
        QVERIFY(!m_manager->isPreventingSleep());
        QCOMPARE(m_log.take(),
                 QStringList{QStringLiteral("[PowerManager] Failed to create assertion: -536870212")});
        m_manager->allowSleep();
        QVERIFY(m_log.lines.isEmpty());
        m_assertions.failure = 0;
        m_manager->preventSleep();
        QVERIFY(m_manager->isPreventingSleep());
    }
};

QTEST_GUILESS_MAIN(PowerManagerTest)
#include "PowerManagerTest.moc"
