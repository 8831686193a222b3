#include "LineWriter.h"

#include "plainLine.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <poll.h>
#include <unistd.h>

namespace kova {

namespace {

// Room for a page, as far as poll can promise it: a pipe that is writable takes that much without waiting.
bool hasRoom(int descriptor) {
    pollfd output{.fd = descriptor, .events = POLLOUT, .revents = 0};
    return poll(&output, 1, 0) == 1 && (output.revents & POLLOUT) != 0;
}

} // namespace

void LineWriter::write(const QString &line) {
    QByteArray bytes = plainLine(line).toUtf8() + '\n';
    const std::lock_guard lock(m_mutex);
    if (m_isCut) {
        bytes.prepend('\n');
    }
    const qsizetype written = writeWithoutWaiting(bytes);
    if (written > 0) {
        m_isCut = written < bytes.size();
    }
}

// How much of the bytes went out.
qsizetype LineWriter::writeWithoutWaiting(const QByteArray &bytes) const {
    qsizetype written = 0;
    while (written < bytes.size() && hasRoom(m_descriptor)) {
        const auto piece = static_cast<size_t>(std::min<qsizetype>(bytes.size() - written, PIPE_BUF));
        const ssize_t count = ::write(m_descriptor, bytes.constData() + written, piece);
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
