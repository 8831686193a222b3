#include "SingleInstance.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace kova;

class SingleInstanceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        m_home.emplace();
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(m_home->path()));
    }

    void aSecondStartIsHeard() {
        SingleInstance first(folder());
        QVERIFY(first.acquire() && first.listen());
        QSignalSpy activated(&first, &SingleInstance::activated);
        bool heard = false;
        std::thread second([this, &heard] {
            SingleInstance instance(folder());
            heard = !instance.acquire() && instance.activateOwner("a token\n");
        });
        QTRY_COMPARE(activated.size(), 1);
        second.join();
        QVERIFY(heard);
        QCOMPARE(activated.at(0).at(0).toByteArray(), QByteArray("a token"));
        QCOMPARE(QFile::permissions(folder()) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
    }

    void anotherConfigurationIsAnotherClock() {
        SingleInstance first(folder());
        SingleInstance second(folder() + QStringLiteral("-other"));
        QVERIFY(first.acquire() && first.listen());
        QVERIFY(second.acquire() && second.listen());
    }

    void aKilledOwnerLeavesNothingBehind() {
        int ready[2];
        QCOMPARE(::pipe(ready), 0);
        const pid_t owner = ::fork();
        if (owner == 0) {
            SingleInstance instance(folder());
            const char answer = instance.acquire() && instance.listen() ? 'y' : 'n';
            (void)!::write(ready[1], &answer, 1);
            for (;;) {
                ::pause();
            }
        }
        char answer = 0;
        QVERIFY(::read(ready[0], &answer, 1) == 1 && answer == 'y');
        SingleInstance next(folder());
        QVERIFY(!next.acquire());
        ::kill(owner, SIGKILL);
        ::waitpid(owner, nullptr, 0);
        SingleInstance after(folder());
        QVERIFY(after.acquire() && after.listen());
    }

    void anOwnerThatDoesNotListenIsNotWaitedForLong() {
        SingleInstance first(folder());
        QVERIFY(first.acquire());
        QFile file(folder() + QStringLiteral("/instance"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(QByteArray(5000, 'x') + "\n/nowhere\n");
        file.close();
        SingleInstance second(folder());
        QVERIFY(!second.acquire());
        QVERIFY(!second.activateOwner({}));
        QVERIFY(first.listen());
    }

private:
    QString folder() const { return m_home->filePath(QStringLiteral("config/kova-alarm")); }

    std::optional<QTemporaryDir> m_home;
};

QTEST_GUILESS_MAIN(SingleInstanceTest)
#include "SingleInstanceTest.moc"
