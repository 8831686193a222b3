#pragma once

#include "AtomicFile.h"
#include "ListStorage.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace kova {

/// The file of the saved list, written by a thread of its own that the first write starts. A write that fails
/// changes nothing, is reported on standard error, and is retried until it or a newer one succeeds.
class ListFile : public ListStorage {
public:
    /// The folder of the path is created at the first write, for the user only. The first retry follows after
    /// the given delay, later ones after twice the previous delay, at most a minute.
    explicit ListFile(const QString &path, std::chrono::milliseconds firstRetry = std::chrono::seconds(5));

    /// Blocks until a pending list is saved or a last attempt fails.
    ~ListFile() override;

    /// $XDG_CONFIG_HOME/kova-alarm
    static QString defaultFolder();

    std::optional<QByteArray> read() override;
    void write(Encoder encode) override;
    void markUnreadable(const QString &reason) override;

    /// Attempts to save a pending list now, once more if an attempt under way fails. Returns the reason if it
    /// is not saved.
    std::optional<QString> flush(std::chrono::milliseconds timeout);

private:
    void run();
    void writePending(std::unique_lock<std::mutex> &lock);
    std::optional<QString> save(const QByteArray &bytes, bool isUnreadable) const;

    const AtomicFile m_file;
    const std::chrono::milliseconds m_firstRetry;

    std::mutex m_mutex;
    std::condition_variable m_changed;
    Encoder m_pending;               ///< of the newest list until it is saved
    std::optional<QString> m_reason; ///< why the last attempt failed
    bool m_isUnreadable = false;     ///< the next write moves the file aside
    bool m_isWriteRequested = false; ///< now, not at the next retry
    bool m_isWriting = false;
    bool m_isFlushing = false;
    bool m_isEnding = false;
    std::thread m_thread;
};

} // namespace kova
