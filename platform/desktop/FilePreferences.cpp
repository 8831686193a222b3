#include "FilePreferences.h"

#include "ValueFile.h"

#include <QStandardPaths>
#include <QtDebug>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <vector>

namespace kova {

namespace {

struct Write {
    QString path;
    std::vector<Preferences::Encoder> encoders; ///< of the same path, the newest last
};

// The newest value that there is.
std::optional<QByteArray> encode(const Write &write) {
    for (auto encoder = write.encoders.rbegin(); encoder != write.encoders.rend(); ++encoder) {
        if (std::optional<QByteArray> bytes = (*encoder)()) {
            return bytes;
        }
    }
    return std::nullopt;
}

void land(const Write &write) {
    const std::optional<QByteArray> bytes = encode(write);
    if (!bytes) {
        return;
    }
    if (const std::optional<QString> reason = replaceValueFile(write.path, *bytes)) {
        qWarning().noquote() << "kova-alarm: can't save" << write.path + u':' << *reason;
    }
}

} // namespace

// The queue and the thread that empties it.
class FilePreferences::Writer {
public:
    Writer() : m_thread([this] { run(); }) {}

    ~Writer() {
        {
            const std::lock_guard lock(m_mutex);
            m_isEnding = true;
            m_changed.notify_all();
        }
        m_thread.join();
    }

    Writer(const Writer &) = delete;
    Writer &operator=(const Writer &) = delete;

    void add(const QString &path, Encoder encoder) {
        const std::lock_guard lock(m_mutex);
        if (!m_waiting.empty() && m_waiting.back().path == path) {
            m_waiting.back().encoders.push_back(std::move(encoder));
        } else {
            m_waiting.push_back({path, {std::move(encoder)}});
        }
        m_changed.notify_all();
    }

    bool waitUntilIdle(std::chrono::milliseconds timeout) {
        std::unique_lock lock(m_mutex);
        return m_changed.wait_for(lock, timeout, [this] { return m_waiting.empty() && !m_isWriting; });
    }

private:
    void run() {
        std::unique_lock lock(m_mutex);
        while (true) {
            m_changed.wait(lock, [this] { return m_isEnding || !m_waiting.empty(); });
            if (m_waiting.empty()) {
                return;
            }
            const Write write = std::move(m_waiting.front());
            m_waiting.pop_front();
            m_isWriting = true;
            lock.unlock();
            land(write);
            lock.lock();
            m_isWriting = false;
            m_changed.notify_all();
        }
    }

    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<Write> m_waiting;
    bool m_isWriting = false;
    bool m_isEnding = false;
    std::thread m_thread; // last, since it uses all of the others
};

FilePreferences::FilePreferences(const QString &folder) : m_folder(folder) {}

FilePreferences::~FilePreferences() = default;

QString FilePreferences::defaultFolder() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/kova-alarm");
}

QString FilePreferences::path(const QString &key) const {
    return m_folder + u'/' + key + QStringLiteral(".json");
}

std::optional<QByteArray> FilePreferences::data(const QString &key) const {
    constexpr std::chrono::seconds longest{5};
    flush(longest);
    return readValueFile(path(key));
}

void FilePreferences::setData(const QString &key, Encoder encode) {
    if (!m_writer) {
        m_writer = std::make_unique<Writer>();
    }
    m_writer->add(path(key), std::move(encode));
}

bool FilePreferences::flush(std::chrono::milliseconds timeout) const {
    return !m_writer || m_writer->waitUntilIdle(timeout);
}

} // namespace kova
