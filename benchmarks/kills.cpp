// Kills processes that save a list again and again, each at a random moment, and looks at what the next one
// finds.

#include "AlarmGroupJson.h"
#include "FilePreferences.h"
#include "groups.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace kova;
using namespace std::chrono_literals;

namespace {

constexpr qint64 groupCount = 20;
const QString key = QStringLiteral("list");

bool save(FilePreferences &preferences, QList<AlarmGroup> groups, qint64 number) {
    groups.first().label = QString::number(number);
    preferences.setData(key, encodeGroups(groups).value());
    return !preferences.flush(10s);
}

// The number of the save that made the list, or -1 for what is no such list.
qint64 savedNumber(FilePreferences &preferences) {
    const auto groups = decodeGroups(preferences.data(key).value_or(QByteArray()));
    return groups && groups.value().size() == groupCount ? groups.value().first().label.toLongLong() : -1;
}

// A process that tells which list it found, and saves the next ones as fast as the disk takes them, telling
// of each that has landed.
class Saver {
public:
    explicit Saver(const QString &folder) {
        int ends[2];
        if (pipe(ends) != 0) {
            std::abort();
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

    // -1 once all is read and the process is gone.
    qint64 next() const {
        qint64 number = 0;
        return read(m_pipe, &number, sizeof number) == sizeof number ? number : -1;
    }

    // At any moment of the next two saves or so. The last one that has landed.
    qint64 kill() const {
        QElapsedTimer time;
        time.start();
        qint64 landed = next();
        std::this_thread::sleep_for(1ns * QRandomGenerator::global()->bounded(2 * time.nsecsElapsed()));
        ::kill(m_pid, SIGKILL);
        waitpid(m_pid, nullptr, 0);
        for (qint64 number = landed; number >= 0; number = next()) {
            landed = number;
        }
        return landed;
    }

private:
    [[noreturn]] void run(const QString &folder) const {
        FilePreferences preferences(folder);
        const QList<AlarmGroup> groups = manyGroups(groupCount);
        qint64 number = savedNumber(preferences);
        while (number >= 0 && write(m_pipe, &number, sizeof number) == sizeof number) {
            save(preferences, groups, ++number);
        }
        _exit(1);
    }

    pid_t m_pid = 0;
    int m_pipe = -1;
};

} // namespace

int main() {
    constexpr int kills = 1000;
    const QTemporaryDir home;
    const QString folder = home.filePath(QStringLiteral("config"));
    {
        FilePreferences preferences(folder);
        save(preferences, manyGroups(groupCount), 0);
    }
    qint64 landed = 0;
    int kept = 0;
    for (int number = 0; number <= kills; ++number) {
        const Saver saver(folder);
        const qint64 found = saver.next();
        if (found != landed && found != landed + 1) {
            std::fprintf(stderr, "save %lld was lost: %lld is there\n", landed, found);
            return 1;
        }
        kept += found == landed && number > 0 ? 1 : 0;
        landed = saver.kill();
        if (landed <= found) {
            std::fprintf(stderr, "nothing can be saved any more\n");
            return 1;
        }
    }
    std::printf("%d kills in %lld saves: %d times the last save was there, %d times the one in flight\n",
                kills, landed, kept, kills - kept);
    return 0;
}
