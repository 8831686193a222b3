#include "SingleInstance.h"

#include <QDir>
#include <QFile>
#include <QLocalSocket>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>
#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

using namespace kova;

class SingleInstanceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        m_home.emplace();
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(m_home->path()));
    }

    void secondStartActivatesTheFirst() {
        const QString lock = folder() + QStringLiteral("/instance");
        for (const auto &[isLockDeleted, isSocketDeleted] :
             {std::pair(false, false), {false, true}, {true, false}, {true, true}}) {
            SingleInstance first(folder());
            QVERIFY(first.acquire());
            first.listen();
            const QString socket = socketPath();
            QVERIFY(!isLockDeleted || QFile::remove(lock));
            QVERIFY(!isSocketDeleted || QFile::remove(socket));
            QVERIFY((isLockDeleted && isSocketDeleted) || !SingleInstance(folder()).acquire());
            QTRY_VERIFY(QFile::exists(lock) && QFile::exists(socket));
            QSignalSpy activated(&first, &SingleInstance::activated);
            bool isAcknowledged = false;
            const std::unique_ptr<QThread> second(QThread::create([this, &isAcknowledged] {
                SingleInstance instance(folder());
                isAcknowledged = !instance.acquire() && instance.activateOwner("a token\n");
            }));
            // It is acknowledged before the first one is activated, which may take long.
            connect(&first, &SingleInstance::activated, second.get(), [&second] { second->wait(); });
            second->start();
            QTRY_COMPARE(activated.size(), 1);
            QVERIFY(isAcknowledged);
            QCOMPARE(activated.at(0).at(0).toByteArray(), QByteArray("a token"));
        }
        QCOMPARE(QFile::permissions(folder()) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
    }

    void filesOfAKilledOwnerAreReplaced() {
        const pid_t owner = ::fork();
        if (owner == 0) {
            SingleInstance instance(folder());
            instance.acquire();
            instance.listen();
            ::raise(SIGKILL);
        }
        ::waitpid(owner, nullptr, 0);
        QVERIFY(QFile::exists(folder() + QStringLiteral("/instance")) && QFile::exists(socketPath()));
        SingleInstance after(folder());
        QVERIFY(after.acquire());
        after.listen();
        QLocalSocket second;
        second.connectToServer(socketPath());
        QCOMPARE(second.state(), QLocalSocket::ConnectedState);
    }

    void unresponsiveOwnerTimesOut() {
        SingleInstance first(folder());
        QVERIFY(first.acquire());
        first.listen();
        std::vector<std::unique_ptr<QLocalSocket>> waiting;
        do {
            waiting.push_back(std::make_unique<QLocalSocket>());
            waiting.back()->connectToServer(socketPath());
        } while (waiting.back()->state() == QLocalSocket::ConnectedState);
        QCOMPARE(waiting.back()->state(), QLocalSocket::ConnectingState); // the queue is full
        SingleInstance second(folder());
        QVERIFY(!second.acquire());
        QVERIFY(!second.activateOwner({}));
    }

private:
    QString folder() const { return m_home->filePath(QStringLiteral("config/kova-alarm")); }
    QString socketPath() const {
        const QDir runtime(m_home->path());
        const QStringList names = runtime.entryList({QStringLiteral("kova-alarm-*")}, QDir::System);
        return runtime.filePath(names.value(0));
    }

    std::optional<QTemporaryDir> m_home;
};

QTEST_GUILESS_MAIN(SingleInstanceTest)
#include "SingleInstanceTest.moc"
