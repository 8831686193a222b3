#include "PowerManager.h"

#include "FakeLog.h"
#include "FakePowerAssertions.h"

#include <QSignalSpy>
#include <QTest>

using namespace kova;

class PowerManagerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void holdsOneAssertionAtATime() {
        FakePowerAssertions assertions;
        FakeLog log;
        PowerManager manager(assertions, log);
        const QSignalSpy changes(&manager, &PowerManager::isPreventingSleepChanged);
        manager.allowSleep();
        manager.preventSleep();
        manager.preventSleep();
        QCOMPARE(assertions.held.values(),
                 QStringList{QStringLiteral("KOVA Alarm active — preventing sleep")});
        manager.allowSleep();
        manager.allowSleep();
        QVERIFY(assertions.held.isEmpty());
        manager.preventSleep();
        QCOMPARE(log.lines, (QStringList{QStringLiteral("[PowerManager] Sleep prevention ON (id: 12345)"),
                                         QStringLiteral("[PowerManager] Sleep prevention OFF"),
                                         QStringLiteral("[PowerManager] Sleep prevention ON (id: 12346)")}));
        QCOMPARE(changes.count(), 3);
    }

    void failureIsLoggedAndRetried() {
        FakePowerAssertions assertions;
        FakeLog log;
        PowerManager manager(assertions, log);
        assertions.failure = -536870212;
        manager.preventSleep();
        QVERIFY(!manager.isPreventingSleep());
        QCOMPARE(log.take(),
                 QStringList{QStringLiteral("[PowerManager] Failed to create assertion: -536870212")});
        manager.allowSleep();
        QVERIFY(log.lines.isEmpty());
        assertions.failure = 0;
        manager.preventSleep();
        QVERIFY(manager.isPreventingSleep());
    }

    void destructorReleasesTheAssertion() {
        FakePowerAssertions assertions;
        FakeLog log;
        { PowerManager(assertions, log).preventSleep(); }
        QVERIFY(assertions.held.isEmpty());
        QCOMPARE(log.lines.last(), QStringLiteral("[PowerManager] Sleep prevention OFF"));
    }
};

QTEST_GUILESS_MAIN(PowerManagerTest)
#include "PowerManagerTest.moc"
