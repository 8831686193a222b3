#include "ListFile.h"

#include <QFile>
#include <QtDebug>
#include <algorithm>
#include <pwd.h>
#include <unistd.h>

namespace kova {

namespace {

// Relative paths are invalid in XDG variables and ignored.
QString absolutePath(const char *variable) {
    const QString path = QFile::decodeName(qgetenv(variable));
    return path.startsWith(u'/') ? path : QString();
}

QString homeFolder() {
    if (QString home = absolutePath("HOME"); !home.isEmpty()) {
        return home;
    }
    const passwd *user = getpwuid(getuid());
    return user ? QFile::decodeName(user->pw_dir) : QString();
}

} // namespace

ListFile::ListFile(const QString &path, std::chrono::milliseconds firstRetry)
    : m_file(path),
      m_firstRetry(firstRetry) {}

ListFile::~ListFile() {
    {
        const std::lock_guard lock(m_mutex);
        m_isEnding = true;
        m_changed.notify_all();
    }
    if (m_thread.joinable()) {
        m_thread.join();
    }
}

QString ListFile::defaultFolder() {
    const QString configured = absolutePath("XDG_CONFIG_HOME");
    return (configured.isEmpty() ? homeFolder() + QStringLiteral("/.config") : configured) +
           QStringLiteral("/kova-alarm");
}

std::optional<QByteArray> ListFile::read() {
    constexpr std::chrono::seconds timeout{5};
    flush(timeout);
    Result<QByteArray> bytes = m_file.read();
    if (!bytes && m_file.exists()) {
        markUnreadable(bytes.error());
    }
    return bytes ? std::optional(std::move(bytes).value()) : std::nullopt;
}

void ListFile::write(Encoder encode) {
    const std::lock_guard lock(m_mutex);
    m_pending = std::move(encode);
    m_isWriteRequested = true;
    m_changed.notify_all();
    if (!m_thread.joinable()) {
        m_thread = std::thread([this] { run(); });
    }
}

void ListFile::markUnreadable(const QString &reason) {
    qWarning().noquote() << "kova-alarm: cannot read" << m_file.path() + u':' << reason;
    const std::lock_guard lock(m_mutex);
    m_isUnreadable = true;
}

std::optional<QString> ListFile::flush(std::chrono::milliseconds timeout) {
    std::unique_lock lock(m_mutex);
    m_isWriteRequested = m_pending || m_isWriting;
    m_isFlushing = true;
    m_changed.notify_all();
    const bool isDone =
        m_changed.wait_for(lock, timeout, [this] { return !m_isWriteRequested && !m_isWriting; });
    m_isFlushing = false;
    return isDone ? m_reason : m_file.path() + QStringLiteral(": the disk takes too long");
}

void ListFile::run() {
    std::unique_lock lock(m_mutex);
    const auto isRequested = [this] { return m_isWriteRequested || m_isEnding; };
    std::chrono::milliseconds retry = m_firstRetry;
    while (!m_isEnding || m_pending) {
        if (!m_pending) {
            m_changed.wait(lock, isRequested);
            retry = m_firstRetry;
        } else if (!m_changed.wait_for(lock, retry, isRequested)) {
            constexpr std::chrono::milliseconds maxRetry = std::chrono::minutes(1);
            retry = std::min(2 * retry, maxRetry);
        }
        // The main thread draws the change first, since a long list takes much longer to encode.
        constexpr std::chrono::milliseconds frameTime{30};
        m_changed.wait_for(lock, frameTime, [this] { return m_isFlushing || m_isEnding; });
        const bool isLast = m_isEnding;
        if (m_pending) {
            writePending(lock);
        }
        if (isLast) {
            return;
        }
    }
}

// Releases the lock during the write.
void ListFile::writePending(std::unique_lock<std::mutex> &lock) {
    Encoder encode = std::exchange(m_pending, nullptr);
    const bool isUnreadable = m_isUnreadable;
    m_isWriteRequested = false;
    m_isWriting = true;
    lock.unlock();
    std::optional<QString> reason = save(encode(), isUnreadable);
    if (reason && reason != m_reason) { // only this thread changes m_reason
        qWarning().noquote() << "kova-alarm: cannot save" << *reason;
    }
    if (!reason) {
        encode = nullptr; // releases the list, which may be large, in this thread
    }
    lock.lock();
    m_isWriting = false;
    m_isUnreadable = m_isUnreadable && reason;
    if (!m_pending) {
        m_pending = std::move(encode);
    }
    m_isWriteRequested = m_isWriteRequested && m_pending;
    m_reason = std::move(reason);
    m_changed.notify_all();
}

std::optional<QString> ListFile::save(const QByteArray &bytes, bool isUnreadable) const {
    std::optional<QString> reason = isUnreadable ? m_file.moveAside() : std::nullopt;
    if (!reason) {
        reason = m_file.replace(bytes);
    }
    return reason ? std::optional(m_file.path() + QStringLiteral(": ") + *reason) : std::nullopt;
}

} // namespace kova
