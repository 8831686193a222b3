#include "StandardOutputLog.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <poll.h>
#include <unistd.h>

namespace kova {

namespace {

bool isLineBreak(QChar character) {
    switch (character.unicode()) {
    case u'\n':
    case u'\v':
    case u'\f':
    case u'\r':
    case u'\u0085':
    case u'\u2028':
    case u'\u2029':
        return true;
    default:
        return false;
    }
}

QByteArray oneLine(QString text) {
    std::replace_if(text.begin(), text.end(), isLineBreak, QChar(u' '));
    return text.toUtf8() + '\n';
}

// Room for a page, as far as poll can promise it: a pipe that is writable takes that much without waiting.
bool hasRoom() {
    pollfd output{.fd = STDOUT_FILENO, .events = POLLOUT, .revents = 0};
    return poll(&output, 1, 0) == 1 && (output.revents & POLLOUT) != 0;
}

// How much of the bytes went out.
qsizetype writeWithoutWaiting(const QByteArray &bytes) {
    qsizetype written = 0;
    while (written < bytes.size() && hasRoom()) {
        const auto piece = static_cast<size_t>(std::min<qsizetype>(bytes.size() - written, PIPE_BUF));
        const ssize_t count = write(STDOUT_FILENO, bytes.constData() + written, piece);
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

void StandardOutputLog::print(const QString &line) {
    QByteArray bytes = oneLine(line);
    const std::lock_guard lock(m_mutex);
    if (m_isCut) {
        bytes.prepend('\n');
    }
    const qsizetype written = writeWithoutWaiting(bytes);
    if (written > 0) {
        m_isCut = written < bytes.size();
    }
}

} // namespace kova
