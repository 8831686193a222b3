#include "ChildProcess.h"

#include <QCoreApplication>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace kova {

namespace {

// What the child is given: some descriptors of ours, and nowhere to read or write.
class FileActions {
public:
    explicit FileActions(std::span<const int> descriptors) {
        posix_spawn_file_actions_init(&m_actions);
        int number = STDERR_FILENO;
        for (const int descriptor : descriptors) {
            number += 1;
            if (descriptor >= 0) {
                posix_spawn_file_actions_adddup2(&m_actions, descriptor, number);
            } else {
                posix_spawn_file_actions_addclose(&m_actions, number);
            }
        }
        for (int standard = STDIN_FILENO; standard <= STDERR_FILENO; ++standard) {
            posix_spawn_file_actions_addopen(&m_actions, standard, "/dev/null", O_RDWR, 0);
        }
        posix_spawn_file_actions_addclosefrom_np(&m_actions, number + 1);
    }
    ~FileActions() { posix_spawn_file_actions_destroy(&m_actions); }
    Q_DISABLE_COPY_MOVE(FileActions)

    const posix_spawn_file_actions_t *get() const { return &m_actions; }

private:
    posix_spawn_file_actions_t m_actions{};
};

// A terminal's interrupt is for us alone.
class Attributes {
public:
    Attributes() {
        posix_spawnattr_init(&m_attributes);
        posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETPGROUP);
    }
    ~Attributes() { posix_spawnattr_destroy(&m_attributes); }
    Q_DISABLE_COPY_MOVE(Attributes)

    const posix_spawnattr_t *get() const { return &m_attributes; }

private:
    posix_spawnattr_t m_attributes{};
};

} // namespace

Result<std::unique_ptr<ChildProcess>> ChildProcess::start(const QByteArray &program,
                                                          std::span<const int> descriptors, Ended ended) {
    QByteArray name = program;
    const std::array<char *, 2> arguments{name.data(), nullptr};
    pid_t id = 0;
    const int error = posix_spawn(&id, program.constData(), FileActions(descriptors).get(),
                                  Attributes().get(), arguments.data(), environ);
    if (error != 0) {
        return Failure{QString::fromLocal8Bit(std::strerror(error))};
    }
    const auto handle = static_cast<int>(syscall(SYS_pidfd_open, id, 0));
    if (handle < 0) {
        const QString reason = QString::fromLocal8Bit(std::strerror(errno));
        ::kill(id, SIGKILL);
        waitpid(id, nullptr, 0);
        return Failure{reason};
    }
    return std::unique_ptr<ChildProcess>(new ChildProcess(id, handle, std::move(ended)));
}

ChildProcess::ChildProcess(pid_t id, int handle, Ended ended)
    : m_id(id),
      m_handle(handle),
      m_ended(std::move(ended)),
      m_notifier(handle, QSocketNotifier::Read) {
    connect(&m_notifier, &QSocketNotifier::activated, this, &ChildProcess::reap);
}

ChildProcess::~ChildProcess() {
    kill();
    close(m_handle);
}

void ChildProcess::kill() {
    if (m_isRunning) {
        ::kill(m_id, SIGKILL);
    }
}

void ChildProcess::reap() {
    int status = 0;
    if (waitpid(m_id, &status, WNOHANG) == 0) {
        return;
    }
    m_isRunning = false;
    m_notifier.setEnabled(false);
    if (const Ended ended = std::exchange(m_ended, {})) {
        ended(WIFSIGNALED(status) ? WTERMSIG(status) : 0);
    }
}

void ChildProcess::endSoon(std::unique_ptr<ChildProcess> child, std::chrono::milliseconds patience) {
    ChildProcess *const leaving = child.release();
    if (!leaving->m_isRunning) {
        leaving->deleteLater(); // this may be the call that tells its end
        return;
    }
    leaving->setParent(QCoreApplication::instance()); // at the latest it ends with the program
    leaving->m_ended = [leaving](int) { leaving->deleteLater(); };
    QTimer::singleShot(patience, leaving, [leaving] { leaving->kill(); });
}

} // namespace kova
