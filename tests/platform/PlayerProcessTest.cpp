#include "PlayerProcess.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>
#include <csignal>
#include <sys/wait.h>

using namespace kova;
using namespace std::chrono_literals;

namespace {

qsizetype openDescriptors() {
    return QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::Files | QDir::System).size();
}

QList<pid_t> childIds() {
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

} // namespace

class PlayerProcessTest : public QObject {
    Q_OBJECT

    const QByteArray m_player =
        QFile::encodeName(QCoreApplication::applicationDirPath()) + "/../kova-alarm-player";
    QTemporaryDir m_folder;
    QStringList m_reasons;

    std::unique_ptr<PlayerProcess> start(const QByteArray &program, std::chrono::milliseconds longest = 10s) {
        auto process =
            std::make_unique<PlayerProcess>(program, KOVA_SOUNDS "/wakeup_pulse.mp3",
                                            [this](const QString &reason) { m_reasons.append(reason); });
        process->setNumberOfLoops(-1);
        process->setLongestTime(longest);
        process->play();
        return process;
    }

private Q_SLOTS:
    void initTestCase() { qputenv("SDL_AUDIODRIVER", "dummy"); }
    void init() { m_reasons.clear(); }

    void aPlayerThatMisbehavesIsToldOnceAndCleared_data() {
        QTest::addColumn<QByteArray>("script");
        QTest::addColumn<QString>("reason");
        const auto row = [](const char *script, const char *reason) {
            QTest::newRow(script) << QByteArray(script) << QString::fromLatin1(reason);
        };
        row("while :; do printf alive >&3; done", "The player talks without end");
        row("printf hello >&3; exec sleep 60", "The player talks nonsense");
        row("head -c 5000 /dev/zero >&3; exec sleep 60", "The player talks nonsense");
        row("exec 3>&-; exec sleep 60", "The player does not answer");
        row("kill -STOP $$", "The player does not answer");
        row("kill -SEGV $$", "The player crashed: Segmentation fault");
        row("printf alive >&3", "The player ended too soon");
        row("printf 'refused it\\t is\\n mute' >&3; printf 'refused twice' >&3", "it  is  mute");
        row("printf ended >&3", "");
    }
    void aPlayerThatMisbehavesIsToldOnceAndCleared() {
        QFETCH(QByteArray, script);
        QFETCH(QString, reason);
        QFile program(m_folder.filePath(QStringLiteral("player")));
        QVERIFY(program.open(QFile::WriteOnly));
        program.write("#!/bin/sh\n" + script + "\n");
        program.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
        program.close();

        const qsizetype before = openDescriptors();
        auto process = start(QFile::encodeName(program.fileName()));
        QTRY_COMPARE(m_reasons.join(u'|'), reason);
        QTRY_VERIFY(childIds().isEmpty());
        process.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(openDescriptors(), before);
        QCOMPARE(m_reasons.size(), reason.isEmpty() ? 0 : 1);
        program.remove();
    }

    // The real player, without a sound server.
    void aPlayerMayBeKilledAtAnyMoment() {
        constexpr int kills = 200;
        const qsizetype before = openDescriptors();
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
        QTRY_VERIFY(childIds().isEmpty());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(openDescriptors(), before);
        auto last = start(m_player);
        QTest::qWait(700); // it lives on, and beats
        QCOMPARE(m_reasons.size(), kills);
        QCOMPARE(childIds().size(), 1);
        last.reset();
        QTRY_VERIFY(childIds().isEmpty());
        QCOMPARE(m_reasons.size(), kills);
    }

    void aPlayerEndsByItselfInTime() {
        const auto process = start(m_player, 300ms);
        QTRY_COMPARE(childIds().size(), 1);
        QTRY_VERIFY(childIds().isEmpty());
        QVERIFY(m_reasons.isEmpty());
    }
};

QTEST_GUILESS_MAIN(PlayerProcessTest)
#include "PlayerProcessTest.moc"
