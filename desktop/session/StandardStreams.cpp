#include "StandardStreams.h"

#include "shownText.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <poll.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace kova {

namespace {

void printMessage(QtMsgType type, const QMessageLogContext &context, const QString &text) {
    static LineWriter standardError(STDERR_FILENO);
    standardError.print(qFormatLogMessage(type, context, text));
}

bool isOpen(int descriptor) {
    return fcntl(descriptor, F_GETFD) != -1 || errno != EBADF;
}

// Reopens the pipe or terminal: the mode of the inherited open file is shared with other processes.
void makeNonBlocking(int descriptor) {
    struct stat status {};
    if (fstat(descriptor, &status) != 0 || (!S_ISFIFO(status.st_mode) && !isatty(descriptor))) {
        return;
    }
    const std::string path = "/proc/self/fd/" + std::to_string(descriptor);
    const int reopened = open(path.c_str(), O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (reopened >= 0) {
        dup2(reopened, descriptor);
        close(reopened);
    }
}

// A pipe that poll() reports as writable normally accepts PIPE_BUF bytes without blocking.
bool hasRoom(int descriptor) {
    pollfd output{.fd = descriptor, .events = POLLOUT, .revents = 0};
    return poll(&output, 1, 0) == 1 && (output.revents & POLLOUT) != 0;
}

// Returns the number of bytes written.
qsizetype writeNonBlocking(int descriptor, const QByteArray &bytes) {
    qsizetype written = 0;
    while (written < bytes.size() && hasRoom(descriptor)) {
        const auto size = static_cast<size_t>(std::min<qsizetype>(bytes.size() - written, PIPE_BUF));
        const ssize_t count = ::write(descriptor, bytes.constData() + written, size);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            break;
        }
        written += count;
    }
    return written;
}

} // namespace

void prepareStandardStreams() {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (!isOpen(descriptor)) {
            [[maybe_unused]] const int lowest = open("/dev/null", O_RDWR); // becomes the descriptor
        }
    }
    makeNonBlocking(STDOUT_FILENO);
    makeNonBlocking(STDERR_FILENO);
    qInstallMessageHandler(&printMessage);
}

void LineWriter::print(const QString &line) {
    QByteArray bytes = plainLine(line).toUtf8() + '\n';
    const std::lock_guard lock(m_mutex);
    if (m_lastLineIncomplete) {
        bytes.prepend('\n');
    }
    const qsizetype written = writeNonBlocking(m_descriptor, bytes);
    if (written > 0) {
        m_lastLineIncomplete = written < bytes.size();
    }
}

} // namespace kova
