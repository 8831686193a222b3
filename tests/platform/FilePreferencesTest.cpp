#include "FilePreferences.h"
#include "ValueFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <csignal>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace kova;
using namespace std::chrono_literals;

namespace {

const QString key = QStringLiteral("list");

Preferences::Encoder value(const QByteArray &bytes) {
    return [bytes] { return std::optional(bytes); };
}

// Runs the action in a process of its own that is killed at its n-th entry into or return from the kernel.
// False when it came to its end before that.
template <typename Action> bool isKilledAt(int n, const Action &action) {
    const pid_t child = fork();
    if (child == 0) {
        ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
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
        m_preferences.emplace(m_folder);
    }

    void cleanup() { m_preferences.reset(); }

    void aValueIsReadAsItWasSet() {
        QCOMPARE(m_preferences->data(key), std::nullopt);
        m_preferences->setData(key, value("first"));
        QCOMPARE(m_preferences->data(key), "first");
        QCOMPARE(content(path()), "first");
        QVERIFY(!QFile::exists(kept()));
        QCOMPARE(QFileInfo(m_folder).permissions() & QFile::Permissions::fromInt(0x0077),
                 QFile::Permissions());
        m_preferences->setData(key, value("second"));
        m_preferences->setData(QStringLiteral("other"), value("third"));
        m_preferences.reset();
        QCOMPARE(content(path()), "second");
        QCOMPARE(content(kept()), "first");
        QCOMPARE(QDir(m_folder).entryList(QDir::Files),
                 (QStringList{QStringLiteral("list.json"), QStringLiteral("list.json~"),
                              QStringLiteral("other.json")}));
    }

    void theNewestValueThatThereIsLands() {
        for (int number = 0; number < 1000; ++number) {
            m_preferences->setData(key, value(QByteArray::number(number)));
        }
        m_preferences->setData(key, [] { return std::optional<QByteArray>(); });
        QVERIFY(m_preferences->flush(10s));
        QCOMPARE(content(path()), "999");
    }

    void equalBytesKeepWhatWasReplaced() {
        for (const char *bytes : {"first", "second", "second"}) {
            m_preferences->setData(key, value(bytes));
            QVERIFY(m_preferences->flush(10s));
        }
        QCOMPARE(content(kept()), "first");
    }

    void whatIsReplacedIsKeptWhateverItIs() {
        write(path(), QByteArray("\0\xFFjunk", 6));
        write(kept(), "older");
        m_preferences->setData(key, value("new"));
        QCOMPARE(m_preferences->data(key), "new");
        QCOMPARE(content(kept()), QByteArray("\0\xFFjunk", 6));
    }

    void aLinkStaysALink() {
        const QString target = m_home->filePath(QStringLiteral("dotfiles"));
        write(target, "old");
        QVERIFY(QDir().mkpath(m_folder));
        QVERIFY(QFile::link(target, path()));
        m_preferences->setData(key, value("new"));
        QCOMPARE(m_preferences->data(key), "new");
        QVERIFY(QFileInfo(path()).isSymLink());
        QCOMPARE(content(target), "new");
        QCOMPARE(content(kept()), "old");
        QVERIFY(!QFileInfo(kept()).isSymLink());
    }

    void whatIsNoSaneFileIsNotRead() {
        QVERIFY(QDir().mkpath(m_folder));
        QCOMPARE(mkfifo(QFile::encodeName(path()).constData(), 0600), 0);
        QCOMPARE(m_preferences->data(key), std::nullopt);
        QVERIFY(QFile::remove(path()));
        QVERIFY(QDir(m_folder).mkdir(QStringLiteral("list.json")));
        QCOMPARE(m_preferences->data(key), std::nullopt);
        QVERIFY(QDir(m_folder).rmdir(QStringLiteral("list.json")));
        QVERIFY(QFile(path()).open(QIODevice::WriteOnly) && QFile::resize(path(), mostValueBytes + 1));
        QCOMPARE(m_preferences->data(key), std::nullopt);
    }

    void aFailedWriteLeavesEverythingAsItWas_data() {
        QTest::addColumn<QString>("obstacle");
        QTest::newRow("full disk") << QStringLiteral("full");
        QTest::newRow("a folder in the file's place") << QStringLiteral("folder");
        QTest::newRow("a file in the folder's place") << QStringLiteral("file");
    }

    void aFailedWriteLeavesEverythingAsItWas() {
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
        m_preferences->setData(key, value(QByteArray(100'000, 'x')));
        const bool isIdle = m_preferences->flush(10s);
        setrlimit(RLIMIT_FSIZE, &unlimited);
        QVERIFY(isIdle);
        QCOMPARE(m_preferences->data(key), isFull ? std::optional<QByteArray>("old") : std::nullopt);
        if (obstacle == u"file") {
            QCOMPARE(content(m_folder), "here");
        } else {
            QCOMPARE(content(kept()), "older");
            QCOMPARE(QDir(m_folder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size(), 2);
        }
    }

    void aKillAtAnyMomentLosesNothing() {
        int n = 1;
        const auto replace = [this] { replaceValueFile(path(), "new"); };
        while (true) {
            write(path(), "old");
            write(kept(), "older");
            const bool isKilled = isKilledAt(n, replace);
            const QByteArray present = content(path());
            const QByteArray beside = content(kept());
            QVERIFY2(present == "old" || present == "new", present);
            QVERIFY2(present == "new" ? beside == "old" : beside == "old" || beside == "older", beside);
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
