#include "Confinement.h"

#include <QTemporaryDir>
#include <QTest>
#include <fcntl.h>
#include <linux/landlock.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace kova;

class ConfinementTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void playerCanOnlyReadAndPlay() {
        if (syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION) < 1) {
            QSKIP("this kernel does not support Landlock");
        }
        const QTemporaryDir folder;
        const QByteArray file = QFile::encodeName(folder.filePath(QStringLiteral("file")));
        QVERIFY(close(open(file.constData(), O_CREAT | O_WRONLY, 0600)) == 0);
        QVERIFY(canOpen(file, O_RDONLY));
        QVERIFY(canOpen("/dev/null", O_RDWR)); // of ALSA's type null
        QVERIFY(!canOpen(file, O_WRONLY));
        QVERIFY(!canOpen(file + "2", O_CREAT | O_RDONLY));
        QVERIFY(!canStill([&] { return unlink(file.constData()) == 0; }));
        QVERIFY(!canStill([&] { return mkdir((file + "3").constData(), 0700) == 0; }));
        QVERIFY(!canStill([&] { return mknod((file + "4").constData(), S_IFSOCK | 0600, 0) == 0; }));
        QVERIFY(!canStill([] { return execl("/bin/true", "true", nullptr) == 0; }));
        QVERIFY(canStill([] { // memory shared with the sound server
            const int shared = memfd_create("shared", MFD_CLOEXEC);
            return ftruncate(shared, 64 << 20) == 0;
        }));
    }

private:
    // Returns whether the operation succeeds in a confined process.
    template <typename Operation> static bool canStill(Operation operation) {
        const pid_t child = fork();
        if (child == 0) {
            confine();
            _exit(operation() ? 0 : 1);
        }
        int status = 0;
        waitpid(child, &status, 0);
        return WIFEXITED(status) && WEXITSTATUS(status) == 0;
    }

    static bool canOpen(const QByteArray &path, int flags) {
        return canStill([&] { return open(path.constData(), flags, 0600) >= 0; });
    }
};

QTEST_GUILESS_MAIN(ConfinementTest)
#include "ConfinementTest.moc"
