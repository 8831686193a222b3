// Kills a process that saves the list repeatedly, 1,000 times at a random moment, and checks which list the
// next process reads.

#include "AlarmGroupJson.h"
#include "ListFile.h"
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

bool save(ListFile &file, QList<AlarmGroup> groups, qint64 number) {
    groups.first().label = QString::number(number);
    file.write([groups] { return encodeGroups(groups); });
    return !file.flush(10s);
}

// Returns the number of the save that wrote the list, or -1 if there is no valid list.
qint64 savedNumber(ListFile &file) {
    const auto groups = decodeGroups(file.read().value_or(QByteArray()));
    return groups && groups.value().size() == groupCount ? groups.value().first().label.toLongLong() : -1;
}

// A child process that reads the list, then saves it repeatedly without a pause. Reports the number of the
// list that it read and of each completed save through a pipe.
class Saver {
public:
    explicit Saver(const QString &path) {
        int ends[2];
        if (pipe(ends) != 0) {
            std::abort();
        }
        m_pid = fork();
        if (m_pid == 0) {
            m_pipe = ends[1];
            run(path);
        }
        close(ends[1]);
        m_pipe = ends[0];
    }
    ~Saver() { close(m_pipe); }
    Q_DISABLE_COPY_MOVE(Saver)

    // Returns the next reported number, or -1 at the end of the pipe.
    qint64 next() const {
        qint64 number = 0;
        return read(m_pipe, &number, sizeof number) == sizeof number ? number : -1;
    }

    // Kills the process at a random moment within twice the duration of a save. Returns the number of the
    // last completed save.
    qint64 kill() const {
        QElapsedTimer time;
        time.start();
        qint64 saved = next();
        std::this_thread::sleep_for(1ns * QRandomGenerator::global()->bounded(2 * time.nsecsElapsed()));
        ::kill(m_pid, SIGKILL);
        waitpid(m_pid, nullptr, 0);
        for (qint64 number = saved; number >= 0; number = next()) {
            saved = number;
        }
        return saved;
    }

private:
    [[noreturn]] void run(const QString &path) const {
        ListFile file(path);
        const QList<AlarmGroup> groups = manyGroups(groupCount);
        qint64 number = savedNumber(file);
        while (number >= 0 && ::write(m_pipe, &number, sizeof number) == sizeof number) {
            save(file, groups, ++number);
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
    const QString path = home.filePath(QStringLiteral("config/list.json"));
    {
        ListFile file(path);
        save(file, manyGroups(groupCount), 0);
    }
    qint64 saved = 0;
    int unchanged = 0;
    for (int number = 0; number <= kills; ++number) {
        const Saver saver(path);
        const qint64 found = saver.next();
        if (found != saved && found != saved + 1) {
            std::fprintf(stderr, "expected save %lld, found %lld\n", saved, found);
            return 1;
        }
        unchanged += found == saved && number > 0 ? 1 : 0;
        saved = saver.kill();
        if (saved <= found) {
            std::fprintf(stderr, "the list was not saved\n");
            return 1;
        }
    }
    std::printf("%d kills in %lld saves: %d times the last save was found, %d times the one in progress\n",
                kills, saved, unchanged, kills - unchanged);
    return 0;
}
