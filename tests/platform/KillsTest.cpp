#include "AlarmViewModel.h"
#include "FakeServices.h"
#include "FilePreferences.h"
#include "groups.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>
#include <csignal>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace kova;
using namespace std::chrono_literals;

namespace {

constexpr int groupCount = 20;

// The number of the change that made the list, or -1 for what is no such list.
qint64 changeOf(const QList<AlarmGroup> &groups) {
    return groups.size() == groupCount ? groups.first().label.toLongLong() : -1;
}

// A process that opens the list, tells which one it found, and changes it as fast as the disk takes it,
// telling of each change that has landed.
class Saver {
public:
    explicit Saver(const QString &folder) {
        int ends[2];
        if (pipe(ends) != 0) {
            qFatal("no pipe");
        }
        m_pid = fork();
        if (m_pid == 0) {
            m_pipe = ends[1];
            run(folder);
        }
        close(ends[1]);
        m_pipe = ends[0];
    }
    ~Saver() { close(m_pipe); }
    Q_DISABLE_COPY_MOVE(Saver)

    // Nothing once all is read and the process is gone.
    std::optional<qint64> next() const {
        qint64 number = 0;
        return read(m_pipe, &number, sizeof number) == sizeof number ? std::optional(number) : std::nullopt;
    }

    void end() const {
        kill(m_pid, SIGKILL);
        waitpid(m_pid, nullptr, 0);
    }

private:
    [[noreturn]] void run(const QString &folder) const {
        FakeServices services;
        FilePreferences preferences(folder);
        AlarmViewModel store(preferences, services.clock, services.scheduler, services.powerManager);
        qint64 number = changeOf(store.groups());
        while (write(m_pipe, &number, sizeof number) == sizeof number && number >= 0) {
            AlarmGroup group = store.groups().first();
            group.label = QString::number(++number);
            store.updateGroup(group);
            preferences.flush(10s);
        }
        _exit(1);
    }

    pid_t m_pid = 0;
    int m_pipe = -1;
};

} // namespace

class KillsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aKillWhileSavingLosesAtMostTheChangeInFlight() {
        const int kills = qEnvironmentVariable("KOVA_KILLS", QStringLiteral("100")).toInt();
        const QTemporaryDir home;
        const QString folder = home.filePath(QStringLiteral("config"));
        saveFirst(folder);
        qint64 landed = 0;
        int kept = 0;
        int inFlight = 0;
        for (int number = 0; number <= kills; ++number) {
            const Saver saver(folder);
            const qint64 found = saver.next().value_or(-1);
            QVERIFY2(found == landed || found == landed + 1, qPrintable(QString::number(found - landed)));
            if (number > 0) {
                ++(found == landed ? kept : inFlight);
            }
            landed = killWhileSaving(saver);
            QVERIFY(landed > found);
        }
        qInfo("%d kills in %lld saves: %d times the last save was there, %d times the one in flight", kills,
              landed, kept, inFlight);
    }

private:
    // At any moment of the next two saves or so. The last change that has landed.
    static qint64 killWhileSaving(const Saver &saver) {
        QElapsedTimer save;
        save.start();
        qint64 landed = saver.next().value_or(-1);
        std::this_thread::sleep_for(1ns * QRandomGenerator::global()->bounded(2 * save.nsecsElapsed()));
        saver.end();
        while (const auto change = saver.next()) {
            landed = *change;
        }
        return landed;
    }

    static void saveFirst(const QString &folder) {
        FakeServices services;
        FilePreferences preferences(folder);
        AlarmViewModel store(preferences, services.clock, services.scheduler, services.powerManager);
        AlarmGroup group = makeGroup(7, 0, 3, 5);
        group.label = QStringLiteral("0");
        store.saveEditedGroup(group);
        while (store.groups().size() < groupCount) {
            store.duplicateGroup(group);
        }
    }
};

QTEST_GUILESS_MAIN(KillsTest)
#include "KillsTest.moc"
