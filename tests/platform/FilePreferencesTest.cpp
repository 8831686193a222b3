#include "FilePreferences.h"
#include "ValueFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
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

namespace {

const QString key = QStringLiteral("list");

struct stat statusOf(const QString &path) {
    struct stat status {};
    lstat(QFile::encodeName(path).constData(), &status);
    return status;
}

// Runs the action in a process of its own that is killed at its n-th entry into or return from the kernel.
// False when it came to its end before that.
template <typename Action> bool isKilledAt(int n, const Action &action) {
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
    for (int step = 0; step <= n; ++step) {
        waitpid(child, &status, 0);
        if (!WIFSTOPPED(status)) {
            return false;
        }
        if (step < n) {
            ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
        }
    }
    kill(child, SIGKILL);
    waitpid(child, &status, 0);
    return true;
}

} // namespace

class FilePreferencesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        m_home.emplace();
        m_folder = m_home->filePath(QStringLiteral("config/kova-alarm"));
        constexpr auto soon = 10ms;
        m_preferences.emplace(m_folder, soon);
    }

    void cleanup() { m_preferences.reset(); }

    void aValueIsReadAsItWasSet() {
        QCOMPARE(m_preferences->data(key), std::nullopt);
        m_preferences->setData(key, "first");
        QCOMPARE(m_preferences->data(key), "first");
        QCOMPARE(content(path()), "first");
        QVERIFY(!QFile::exists(kept()));
        QCOMPARE(statusOf(m_folder).st_mode & 07777, 0700U);
        QVERIFY(QFile::setPermissions(path(), QFile::Permissions::fromInt(0x6644)));
        m_preferences->setData(key, "second");
        QCOMPARE(m_preferences->data(key), "second");
        m_preferences->setData(key, "second"); // keeps what was replaced
        m_preferences->setData(QStringLiteral("other"), "third");
        m_preferences.reset();
        QCOMPARE(content(path()), "second");
        QCOMPARE(statusOf(path()).st_mode & 07777, 0600U);
        QCOMPARE(content(kept()), "first");
        QCOMPARE(QDir(m_folder).entryList(QDir::Files),
                 (QStringList{QStringLiteral("list.json"), QStringLiteral("list.json~"),
                              QStringLiteral("other.json")}));
    }

    void aLinkStaysALink() {
        const QString target = m_home->filePath(QStringLiteral("dotfiles"));
        write(target, "old");
        QVERIFY(QDir().mkpath(m_folder));
        QVERIFY(QFile::link(target, path()));
        m_preferences->setData(key, "new");
        QCOMPARE(m_preferences->data(key), "new");
        QVERIFY(QFileInfo(path()).isSymLink());
        QCOMPARE(content(target), "new");
        QCOMPARE(content(kept()), "old");
        QVERIFY(!QFileInfo(kept()).isSymLink());
    }

    void whatCannotBeReadIsKeptForGood() {
        const QByteArray file = QFile::encodeName(path());
        const QList<std::function<bool()>> puts{
            [&] { return mkfifo(file.constData(), 0600) == 0; },
            [&] { return mkdir(file.constData(), 0700) == 0; },
            [&] { return symlink("gone", file.constData()) == 0; },
            [&] {
                return QFile(path()).open(QIODevice::WriteOnly) && QFile::resize(path(), mostValueBytes + 1);
            },
            [&] {
                write(path(), "a value that its owner can't read");
                return true;
            },
        };
        QVERIFY(QDir().mkpath(m_folder));
        QString aside = path() + QStringLiteral(".unreadable");
        for (int number = 1; number <= puts.size(); ++number) {
            QVERIFY(puts[number - 1]());
            const auto inode = statusOf(path()).st_ino;
            if (m_preferences->data(key)) {
                m_preferences->keepUnreadable(key);
            }
            QCOMPARE(statusOf(path()).st_ino, inode);
            QTest::ignoreMessage(
                QtWarningMsg,
                qPrintable(
                    QStringLiteral("kova-alarm: can't read %1 and keeps it as %2").arg(path(), aside)));
            for (const char *bytes : {"new", "newer"}) {
                m_preferences->setData(key, bytes);
                QCOMPARE(m_preferences->data(key), bytes);
            }
            QCOMPARE(statusOf(aside).st_ino, inode);
            aside = path() + QStringLiteral(".unreadable.%1").arg(number + 1);
            QVERIFY(QFile::remove(path()));
        }
    }

    void aFailedWriteLeavesEverythingAsItWasUntilItLands_data() {
        QTest::addColumn<QString>("obstacle");
        QTest::newRow("full disk") << QStringLiteral("full");
        QTest::newRow("a folder in the file's place") << QStringLiteral("folder");
        QTest::newRow("a file in the folder's place") << QStringLiteral("file");
    }

    void aFailedWriteLeavesEverythingAsItWasUntilItLands() {
        QFETCH(QString, obstacle);
        const bool isFull = obstacle == u"full";
        if (obstacle == u"file") {
            write(m_folder, "here");
        } else {
            write(kept(), "older");
        }
        if (isFull) {
            write(path(), "old");
        } else if (obstacle == u"folder") {
            QVERIFY(QDir(m_folder).mkdir(QStringLiteral("list.json")));
        }
        rlimit unlimited{};
        getrlimit(RLIMIT_FSIZE, &unlimited);
        if (isFull) {
            signal(SIGXFSZ, SIG_IGN);
            const rlimit full{.rlim_cur = 1000, .rlim_max = unlimited.rlim_max};
            setrlimit(RLIMIT_FSIZE, &full);
        }
        QTest::ignoreMessage(QtWarningMsg,
                             QRegularExpression(QStringLiteral("^kova-alarm: can't save .*list.json: .")));
        QTest::failOnWarning(QRegularExpression(QStringLiteral("."))); // one line, however often it is tried
        const QByteArray bytes(100'000, 'x');
        m_preferences->setData(key, bytes);
        std::optional<QString> reason;
        for (int tries = 0; tries < 3; ++tries) {
            reason = m_preferences->flush(10s);
        }
        const QByteArray beside = content(kept());
        const bool isAlone = QDir(m_folder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size() <= 2;
        const QByteArray present = content(path());
        setrlimit(RLIMIT_FSIZE, &unlimited);
        QVERIFY(reason && reason->startsWith(path()));
        QCOMPARE(present, isFull ? "old" : "(none)");
        QVERIFY(isAlone && beside == (obstacle == u"file" ? "(none)" : "older"));
        QVERIFY(isFull || QFile::remove(m_folder) || QDir(m_folder).rmdir(QStringLiteral("list.json")));
        QTRY_COMPARE(content(path()), bytes);
        QCOMPARE(m_preferences->flush(10s), std::nullopt);
    }

    void theFolderFollowsTheBaseDirectoryRules() {
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
            const QString found = FilePreferences::defaultFolder();
            qputenv("HOME", before);
            QCOMPARE(found, QFile::decodeName(folder) + QStringLiteral("/kova-alarm"));
        }
    }

    void aKillAtAnyMomentLosesNothing() {
        if (!isKilledAt(0, [] {})) {
            QSKIP("An emulator lets no process be traced");
        }
        int n = 1;
        const auto replace = [this] { replaceValueFile(path(), "new"); };
        while (true) {
            write(path(), "old");
            write(kept(), "older");
            write(path() + QStringLiteral(".backup"), "the user's");
            const bool isKilled = isKilledAt(n, replace);
            const QByteArray present = content(path());
            const QByteArray beside = content(kept());
            QVERIFY2(present == "old" || present == "new", present);
            QVERIFY2(present == "new" ? beside == "old" : beside == "old" || beside == "older", beside);
            if (n % 4 == 1) {
                removeLeftovers(path());
                QCOMPARE(QDir(m_folder).entryList(QDir::Files),
                         (QStringList{QStringLiteral("list.json"), QStringLiteral("list.json.backup"),
                                      QStringLiteral("list.json~")}));
            }
            // The next write finds its way past whatever was left behind.
            QCOMPARE(replaceValueFile(path(), "next"), std::nullopt);
            QCOMPARE(content(path()), "next");
            QCOMPARE(content(kept()), present);
            if (!isKilled) {
                QCOMPARE(present, "new");
                break;
            }
            n += 2; // the return from one call and the entry into the next are the same to the files
        }
        constexpr int atLeast = 20; // or nothing was traced
        QVERIFY(n > atLeast);
    }

private:
    QString path() const { return m_folder + QStringLiteral("/list.json"); }
    QString kept() const { return path() + u'~'; }

    static QByteArray content(const QString &path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
    }

    static void write(const QString &path, const QByteArray &bytes) {
        QDir().mkpath(QFileInfo(path).path());
        QFile::remove(path);
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    std::optional<QTemporaryDir> m_home;
    QString m_folder;
    std::optional<FilePreferences> m_preferences;
};

QTEST_GUILESS_MAIN(FilePreferencesTest)
#include "FilePreferencesTest.moc"
