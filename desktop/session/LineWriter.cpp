#include "LineWriter.h"

#include "plainLine.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <poll.h>
#include <unistd.h>

namespace kova {

namespace {

// A pipe that poll() reports as writable normally accepts PIPE_BUF bytes without blocking.
bool hasRoom(int descriptor) {
    pollfd output{.fd = descriptor, .events = POLLOUT, .revents = 0};
    return poll(&output, 1, 0) == 1 && (output.revents & POLLOUT) != 0;
}

} // namespace

void LineWriter::print(const QString &line) {
    QByteArray bytes = plainLine(line).toUtf8() + '\n';
    const std::lock_guard lock(m_mutex);
    if (m_lastLineIncomplete) {
        bytes.prepend('\n');
    }
    const qsizetype written = writeNonBlocking(bytes);
    if (written > 0) {
        m_lastLineIncomplete = written < bytes.size();
    }
}

// Returns the number of bytes written.
qsizetype LineWriter::writeNonBlocking(const QByteArray &bytes) const {
    qsizetype written = 0;
    while (written < bytes.size() && hasRoom(m_descriptor)) {
        const auto size = static_cast<size_t>(std::min<qsizetype>(bytes.size() - written, PIPE_BUF));
        const ssize_t count = ::write(m_descriptor, bytes.constData() + written, size);
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

} // namespace kova
