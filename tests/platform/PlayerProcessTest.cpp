#include "PlayerProcess.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>
#include <csignal>
#include <sys/resource.h>
#include <unistd.h>

using namespace kova;
using namespace std::chrono_literals;

class PlayerProcessTest : public QObject {
    Q_OBJECT

    const QString m_player = QCoreApplication::applicationDirPath() + QStringLiteral("/../kova-alarm-player");
    QTemporaryDir m_folder;
    QStringList m_reasons;
    qsizetype m_descriptors = 0; ///< open before the test

    std::unique_ptr<PlayerProcess> start(const QString &path, std::chrono::milliseconds duration = 10s,
                                         int loops = -1) {
        QProcessEnvironment environment;
        environment.insert(QStringLiteral("PATH"), QStringLiteral("/usr/bin:/bin"));
        environment.insert(QStringLiteral("SDL_AUDIODRIVER"), QStringLiteral("dummy"));
        const PlayerProcess::Program program{.path = path, .environment = environment, .descriptors = {}};
        const protocol::Request request{.loops = loops,
                                        .maxDuration = static_cast<std::int32_t>(duration.count()),
                                        .path = {KOVA_SOUNDS "/wakeup_pulse.mp3"}};
        return std::make_unique<PlayerProcess>(program, request, [this](const PlaybackError &error) {
            m_reasons.append(error.reason + (error.isFinal ? QStringLiteral(" (final)") : QString()));
        });
    }

    // Returns the path of a player that runs the script.
    QString program(const QByteArray &script) const {
        QFile file(m_folder.filePath(QStringLiteral("player")));
        if (file.open(QFile::WriteOnly)) {
            file.write("#!/bin/sh\ncd " + QFile::encodeName(m_folder.path()) + "\n" + script + "\n");
            file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        }
        return file.fileName();
    }

    void writeEvent(const QString &name, const protocol::Event &event) {
        QFile file(m_folder.filePath(name));
        QVERIFY(file.open(QFile::WriteOnly));
        file.write(reinterpret_cast<const char *>(&event), sizeof event);
    }

    static qsizetype openDescriptors() {
        return QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::Files | QDir::System).size();
    }

    static QList<pid_t> childIds() {
        QFile file(QStringLiteral("/proc/self/task/%1/children").arg(getpid()));
        QList<pid_t> found;
        if (file.open(QFile::ReadOnly)) {
            for (const QByteArray &id : file.readAll().simplified().split(' ')) {
                found.append(id.toInt());
            }
        }
        found.removeAll(0);
        return found;
    }

private Q_SLOTS:
    void initTestCase() {
        using Kind = protocol::Event::Kind;
        writeEvent(QStringLiteral("alive"), {.kind = Kind::Alive, .reason = {}});
        writeEvent(QStringLiteral("ended"), {.kind = Kind::Ended, .reason = {}});
        writeEvent(QStringLiteral("failed"), {.kind = Kind::Failed, .reason = {"no memory"}});
        writeEvent(QStringLiteral("rejected"), {.kind = Kind::Rejected, .reason = {"it\t is\n mute"}});
        writeEvent(QStringLiteral("unexplained"), {.kind = Kind::Rejected, .reason = {}});
    }
    void init() {
        m_reasons.clear();
        m_descriptors = openDescriptors();
    }
    // The object of a released process holds a descriptor until it is deleted.
    void cleanup() {
        QTRY_VERIFY(childIds().isEmpty());
        QTRY_COMPARE_LE(openDescriptors(), m_descriptors);
    }

    void misbehavingPlayerIsReportedOnceAndCleanedUp() {
        const struct {
            const char *script;
            const char *reason;
            int loops = -1;
        } rows[] = {
            {"while :; do cat alive >&3; done", "The player sends too many messages"},
            {"printf hello >&3; exec sleep 60", "The player sent an invalid message"},
            {"head -c 5000 /dev/zero >&3; exec sleep 60", "The player sent an invalid message"},
            {"cat unexplained >&3; exec sleep 60", "The player sent an invalid message"},
            {"exec 3>&-; exec sleep 60", "The player does not respond"},
            {"kill -STOP $$", "The player does not respond"},
            {"kill -SEGV $$", "The player crashed: Segmentation fault"},
            {"cat alive >&3", "The player exited unexpectedly"},
            {"cat rejected >&3; cat rejected >&3", "it  is  mute (final)"},
            {"cat failed >&3", "no memory"},
            {"cat ended >&3", "The repeated sound has ended"},
            {"cat ended >&3", "", 0},
        };
        for (const auto &[script, reason, loops] : rows) {
            m_reasons.clear();
            auto process = start(program(script), 10s, loops);
            QTRY_COMPARE(m_reasons.join(u'|'), QString::fromLatin1(reason));
            QTRY_VERIFY(childIds().isEmpty());
            process.reset();
            cleanup();
            QCOMPARE(m_reasons.join(u'|'), QString::fromLatin1(reason));
        }
    }

    // The real player, without a sound server.
    void playerCanBeKilledAtAnyMoment() {
        const int kills = qEnvironmentVariableIsSet("KOVA_THOROUGH") ? 200 : 40;
        for (int number = 1; number <= kills; ++number) {
            const auto process = start(m_player);
            QTest::qWait(QRandomGenerator::global()->bounded(60));
            QCOMPARE(m_reasons.size(), number - 1);
            for (const pid_t child : childIds()) {
                kill(child, SIGKILL);
            }
            QTRY_COMPARE(m_reasons.size(), number);
            QCOMPARE(m_reasons.constLast(), QStringLiteral("The player crashed: Killed"));
        }
    }

    void startFailsCleanlyWithoutProgramOrDescriptors() {
        // First, since without descriptors the sanitizer cannot check a type that is new to it.
        const auto missing = start(QStringLiteral("/nowhere"));
        m_descriptors += 1; // Qt 6.4 loses one
        QTRY_COMPARE(m_reasons.size(), 1);
        rlimit limit{};
        getrlimit(RLIMIT_NOFILE, &limit);
        const rlimit none{static_cast<rlim_t>(openDescriptors()), limit.rlim_max};
        setrlimit(RLIMIT_NOFILE, &none);
        const auto process = start(m_player);
        setrlimit(RLIMIT_NOFILE, &limit);
        QTRY_COMPARE(m_reasons.size(), 2);
        for (const QString &reason : std::as_const(m_reasons)) {
            QVERIFY(reason.startsWith(QStringLiteral("The player cannot be started: ")));
        }
        QVERIFY(childIds().isEmpty());
    }

    void playerExitsAtItsMaximumDuration() {
        const auto process = start(m_player, 300ms);
        QTRY_COMPARE(childIds().size(), 1);
        QTRY_VERIFY(childIds().isEmpty());
        QVERIFY(m_reasons.isEmpty());
    }
};

QTEST_GUILESS_MAIN(PlayerProcessTest)
#include "PlayerProcessTest.moc"
