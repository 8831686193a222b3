#include "FilePreferences.h"

#include "ValueFile.h"

#include <QFile>
#include <QtDebug>
#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <pwd.h>
#include <thread>
#include <unistd.h>

namespace kova {

namespace {

// The base directory rules ask that a relative path is ignored.
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

// Lands the newest value of one file, from a thread that the first value starts.
class FilePreferences::Writer {
public:
    Writer(QString path, std::chrono::milliseconds firstRetry)
        : m_path(std::move(path)),
          m_firstRetry(firstRetry) {}

    ~Writer() {
        {
            const std::lock_guard lock(m_mutex);
            m_isEnding = true;
            m_changed.notify_all();
        }
        if (m_thread.joinable()) {
            m_thread.join();
        }
    }

    Writer(const Writer &) = delete;
    Writer &operator=(const Writer &) = delete;

    void write(const QByteArray &bytes) {
        const std::lock_guard lock(m_mutex);
        m_pending = bytes;
        m_isWanted = true;
        m_changed.notify_all();
        if (!m_thread.joinable()) {
            m_thread = std::thread([this] { run(); });
        }
    }

    void keepUnreadable() {
        const std::lock_guard lock(m_mutex);
        m_isUnreadable = true;
    }

    std::optional<QString> flush(std::chrono::milliseconds timeout) {
        std::unique_lock lock(m_mutex);
        m_isWanted = m_pending.has_value();
        m_changed.notify_all();
        if (!m_changed.wait_for(lock, timeout, [this] { return !m_isWanted && !m_isWriting; })) {
            return m_path + QStringLiteral(": the disk takes too long");
        }
        return m_reason;
    }

private:
    void run() {
        std::unique_lock lock(m_mutex);
        const auto isWanted = [this] { return m_isWanted || m_isEnding; };
        std::chrono::milliseconds retry = m_firstRetry;
        while (!m_isEnding || m_pending) {
            if (!m_pending) {
                m_changed.wait(lock, isWanted);
                retry = m_firstRetry;
            } else if (!m_changed.wait_for(lock, retry, isWanted)) {
                constexpr std::chrono::milliseconds longest = std::chrono::minutes(1);
                retry = std::min(2 * retry, longest);
            }
            const bool isLast = m_isEnding;
            if (m_pending) {
                land(lock);
            }
            if (isLast) {
                return;
            }
        }
    }

    // The lock is let go of meanwhile.
    void land(std::unique_lock<std::mutex> &lock) {
        const QByteArray bytes = *std::exchange(m_pending, std::nullopt);
        const bool isUnreadable = m_isUnreadable;
        m_isWanted = false;
        m_isWriting = true;
        lock.unlock();
        std::optional<QString> reason = isUnreadable ? setAsideValueFile(m_path) : std::nullopt;
        if (!reason) {
            reason = replaceValueFile(m_path, bytes);
        }
        if (reason) {
            reason = m_path + QStringLiteral(": ") + *reason;
            if (reason != m_reason) { // which no other thread sets
                qWarning().noquote() << "kova-alarm: can't save" << *reason;
            }
        }
        lock.lock();
        m_isWriting = false;
        m_isUnreadable = m_isUnreadable && reason;
        if (reason && !m_pending) {
            m_pending = bytes;
        }
        m_reason = std::move(reason);
        m_changed.notify_all();
    }

    const QString m_path;
    const std::chrono::milliseconds m_firstRetry;

    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::optional<QByteArray> m_pending; ///< the newest value until it has landed
    std::optional<QString> m_reason;     ///< why the last try failed
    bool m_isUnreadable = false;         ///< what lies in the file, which is kept for good
    bool m_isWanted = false;             ///< now, not at the next retry
    bool m_isWriting = false;
    bool m_isEnding = false;
    std::thread m_thread;
};

FilePreferences::FilePreferences(const QString &folder, std::chrono::milliseconds firstRetry)
    : m_folder(folder),
      m_firstRetry(firstRetry) {}

FilePreferences::~FilePreferences() = default;

QString FilePreferences::defaultFolder() {
    const QString configured = absolutePath("XDG_CONFIG_HOME");
    return (configured.isEmpty() ? homeFolder() + QStringLiteral("/.config") : configured) +
           QStringLiteral("/kova-alarm");
}

QString FilePreferences::path(const QString &key) const {
    return m_folder + u'/' + key + QStringLiteral(".json");
}

FilePreferences::Writer &FilePreferences::writer(const QString &key) {
    std::unique_ptr<Writer> &writer = m_writers[key];
    if (!writer) {
        writer = std::make_unique<Writer>(path(key), m_firstRetry);
    }
    return *writer;
}

std::optional<QByteArray> FilePreferences::data(const QString &key) {
    constexpr std::chrono::seconds longest{5};
    flush(longest);
    removeLeftovers(path(key));
    std::optional<QByteArray> bytes = readValueFile(path(key));
    if (!bytes && !isAbsent(path(key))) {
        keepUnreadable(key);
    }
    return bytes;
}

void FilePreferences::setData(const QString &key, const QByteArray &bytes) {
    writer(key).write(bytes);
}

void FilePreferences::keepUnreadable(const QString &key) {
    writer(key).keepUnreadable();
}

std::optional<QString> FilePreferences::flush(std::chrono::milliseconds timeout) {
    std::optional<QString> reason;
    for (const auto &[key, writer] : m_writers) {
        const std::optional<QString> own = writer->flush(timeout);
        reason = reason ? reason : own;
    }
    return reason;
}

} // namespace kova
