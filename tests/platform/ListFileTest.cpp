#include "ListFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSemaphore>
#include <QTemporaryDir>
#include <QTest>
#include <atomic>
#include <csignal>
#include <functional>
#include <pwd.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace kova;
using namespace std::chrono_literals;

class ListFileTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        m_home.emplace();
        m_folder = m_home->filePath(QStringLiteral("config/kova-alarm"));
        constexpr auto firstRetry = 10ms;
        m_file.emplace(path(), firstRetry);
    }

    void cleanup() { m_file.reset(); }

    void listIsReadAsItWasWritten() {
        QCOMPARE(m_file->read(), std::nullopt);
        write("first");
        QCOMPARE(m_file->read(), "first");
        QCOMPARE(content(path()), "first");
        QVERIFY(!QFile::exists(backup()));
        QCOMPARE(statusOf(m_folder).st_mode & 07777, 0700U);
        QVERIFY(QFile::setPermissions(path(), QFile::Permissions::fromInt(0x6644)));
        write("second");
        QCOMPARE(m_file->read(), "second");
        write("second"); // does not replace the backup
        QCOMPARE(m_file->read(), "second");
        QCOMPARE(content(backup()), "first");
        write("third");
        m_file.reset();
        QCOMPARE(content(path()), "third");
        QCOMPARE(content(backup()), "second");
        for (const QString &file : {path(), backup()}) {
            QCOMPARE(statusOf(file).st_mode & 07777, 0600U);
        }
        QCOMPARE(QDir(m_folder).entryList(QDir::Files).size(), 2);
    }

    void linkStaysALink() {
        const QString target = m_home->filePath(QStringLiteral("dotfiles"));
        put(target, "old");
        QVERIFY(QDir().mkpath(m_folder));
        QVERIFY(QFile::link(target, path()));
        write("new");
        QCOMPARE(m_file->read(), "new");
        QVERIFY(QFileInfo(path()).isSymLink());
        QCOMPARE(content(target), "new");
        QCOMPARE(content(backup()), "old");
        QVERIFY(!QFileInfo(backup()).isSymLink());
    }

    // While one list is being written, only the newest of those that follow is encoded.
    void supersededListsAreNotEncoded() {
        QSemaphore first;
        std::atomic<int> encoded = 0;
        m_file->write([&first] {
            first.acquire();
            return QByteArray("0");
        });
        for (const char *bytes : {"1", "2", "3"}) {
            m_file->write([&encoded, bytes] {
                encoded += 1;
                return QByteArray(bytes);
            });
        }
        first.release();
        QCOMPARE(m_file->flush(10s), std::nullopt);
        QCOMPARE(content(path()), "3");
        QCOMPARE(encoded, 1);
    }

    // The first attempt fails; the write is under way when flush() is called.
    void flushRetriesAWriteThatFails() {
        m_file.emplace(path(), 1h);
        QVERIFY(QDir().mkpath(path()));
        std::atomic<int> attempts = 0;
        std::atomic<bool> isFlushing = false;
        m_file->write([&] {
            if (++attempts == 2) {
                QDir().rmdir(path());
            }
            isFlushing.wait(false);
            return QByteArray("new");
        });
        QTRY_COMPARE(attempts, 1);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("cannot save")));
        isFlushing = true;
        isFlushing.notify_all();
        QCOMPARE(m_file->flush(10s), std::nullopt);
        QCOMPARE(attempts, 2);
    }

    void unreadableFileIsReportedAndMovedAside() {
        const QByteArray file = QFile::encodeName(path());
        const std::pair<std::function<void()>, QString> rows[] = {
            {[&] { mkfifo(file.constData(), 0600); }, QStringLiteral("not a regular file")},
            {[&] { mkdir(file.constData(), 0700); }, QStringLiteral("not a regular file")},
            {[&] { (void)!symlink("gone", file.constData()); }, QStringLiteral("not a regular file")},
            {[&] { (void)!symlink("/dev/zero", file.constData()); }, QStringLiteral("not a regular file")},
            {[&] {
                 put(path(), {});
                 QFile::resize(path(), AtomicFile::maxSize + 1);
             },
             QStringLiteral("larger than 64 MB")},
            {[&] { put(path(), "not JSON"); }, QStringLiteral("invalid JSON")},
        };
        QVERIFY(QDir().mkpath(m_folder));
        QString aside = path() + QStringLiteral(".unreadable");
        int number = 1;
        for (const auto &[make, reason] : rows) {
            make();
            const auto inode = statusOf(path()).st_ino;
            const QString warning = QStringLiteral("kova-alarm: cannot read ") + path();
            QTest::ignoreMessage(QtWarningMsg, qPrintable(warning + QStringLiteral(": ") + reason));
            if (m_file->read()) {
                m_file->markUnreadable(reason);
            }
            QCOMPARE(statusOf(path()).st_ino, inode);
            QTest::ignoreMessage(QtWarningMsg, qPrintable(warning + QStringLiteral(", moved to ") + aside));
            for (const char *bytes : {"new", "newer"}) {
                write(bytes);
                QCOMPARE(m_file->read(), bytes);
            }
            QCOMPARE(statusOf(aside).st_ino, inode);
            aside = path() + QStringLiteral(".unreadable.%1").arg(++number);
            QVERIFY(QFile::remove(path()));
        }
    }

    void failedWriteChangesNothingUntilARetrySucceeds() {
        for (const bool isFull : {true, false}) { // the disk, or the folder's name is that of a file
            init();
            rlimit unlimited{};
            getrlimit(RLIMIT_FSIZE, &unlimited);
            if (isFull) {
                put(path(), "old");
                put(backup(), "older");
                signal(SIGXFSZ, SIG_IGN);
                const rlimit full{.rlim_cur = 1000, .rlim_max = unlimited.rlim_max};
                setrlimit(RLIMIT_FSIZE, &full);
            } else {
                put(m_folder, "here");
            }
            QTest::ignoreMessage(
                QtWarningMsg, QRegularExpression(QStringLiteral("^kova-alarm: cannot save .*list.json: .")));
            QTest::failOnWarning(QRegularExpression(QStringLiteral("."))); // a single line for all attempts
            const QByteArray bytes(100'000, 'x');
            write(bytes);
            std::optional<QString> reason;
            for (int attempts = 0; attempts < 3; ++attempts) {
                reason = m_file->flush(10s);
            }
            const QByteArray present = content(path());
            const QByteArray beside = content(backup());
            const QStringList files = QDir(m_folder).entryList(QDir::Files | QDir::Hidden);
            setrlimit(RLIMIT_FSIZE, &unlimited);
            QVERIFY(reason && reason->startsWith(path()));
            QCOMPARE(present, isFull ? "old" : "(none)");
            QCOMPARE(beside, isFull ? "older" : "(none)");
            QCOMPARE(files.size(), isFull ? 2 : 0); // nothing is left behind
            QVERIFY(isFull || QFile::remove(m_folder));
            QTRY_COMPARE(content(path()), bytes);
            QCOMPARE(m_file->flush(10s), std::nullopt);
        }
    }

    void folderFollowsTheXdgVariables() {
        const QByteArray entry = getpwuid(getuid())->pw_dir;
        const struct {
            const char *config;
            const char *home;
            QByteArray folder;
        } rows[] = {{"/c", "/h", "/c"},
                    {"", "/h", "/h/.config"},
                    {"c", "/h", "/h/.config"},
                    {"", nullptr, entry + "/.config"},
                    {"c", "h", entry + "/.config"}};
        const QByteArray before = qgetenv("HOME");
        for (const auto &[config, home, folder] : rows) {
            qputenv("XDG_CONFIG_HOME", config);
            home ? qputenv("HOME", home) : qunsetenv("HOME");
            const QString found = ListFile::defaultFolder();
            qputenv("HOME", before);
            QCOMPARE(found, QFile::decodeName(folder) + QStringLiteral("/kova-alarm"));
        }
    }

    void killAtAnyMomentLosesNothing() {
        if (!isKilledAt(0, [] {})) {
            QSKIP("An emulator does not support ptrace");
        }
        const AtomicFile file(path());
        int n = 1;
        // Steps of two: the return from one call and the entry into the next are the same to the files.
        for (bool isKilled = true; isKilled; n += 2) {
            put(path(), "old");
            put(backup(), "older");
            isKilled = isKilledAt(n, [&file] { (void)file.replace("new"); });
            const QByteArray present = content(path());
            const QByteArray beside = content(backup());
            QVERIFY2(present == "new" || (present == "old" && isKilled), present);
            QVERIFY2(present == "new" ? beside == "old" : beside == "old" || beside == "older", beside);
            // Whatever was left behind does not prevent the next write.
            QCOMPARE(file.replace("next"), std::nullopt);
            QCOMPARE(content(path()), "next");
            QCOMPARE(content(backup()), present);
        }
        QVERIFY(n > 22); // fewer means that nothing was traced
    }

private:
    QString path() const { return m_folder + QStringLiteral("/list.json"); }
    QString backup() const { return path() + u'~'; }
    void write(const QByteArray &bytes) {
        m_file->write([bytes] { return bytes; });
    }

    static QByteArray content(const QString &path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
    }

    static void put(const QString &path, const QByteArray &bytes) {
        QDir().mkpath(QFileInfo(path).path());
        QFile::remove(path);
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    static struct stat statusOf(const QString &path) {
        struct stat status {};
        lstat(QFile::encodeName(path).constData(), &status);
        return status;
    }

    // Runs the action in a child process that is killed at its n-th system call entry or return. Returns
    // false if the action completed before that.
    template <typename Action> static bool isKilledAt(int n, const Action &action) {
        const pid_t child = fork();
        if (child == 0) {
            if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) {
                _exit(1);
            }
            raise(SIGSTOP);
            action();
            _exit(0);
        }
        int status = 0;
        waitpid(child, &status, 0);
        for (int step = 0; step < n && WIFSTOPPED(status); ++step) {
            ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
            waitpid(child, &status, 0);
        }
        if (!WIFSTOPPED(status)) {
            return false;
        }
        kill(child, SIGKILL);
        waitpid(child, &status, 0);
        return true;
    }

    std::optional<QTemporaryDir> m_home;
    QString m_folder;
    std::optional<ListFile> m_file;
};

QTEST_GUILESS_MAIN(ListFileTest)
#include "ListFileTest.moc"
