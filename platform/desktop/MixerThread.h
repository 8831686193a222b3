#pragma once

#include <QByteArray>
#include <QString>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

namespace kova {

class MixerDevice;

/// The thread that alone touches the mixer. It holds the sound device open only while something is to be
/// heard, and tries again once a second while the sound server is missing, so that the sound comes back with
/// it. Asleep otherwise. Everybody else only says what is to be heard, and waits for nothing. Any thread.
class MixerThread {
public:
    struct Sound {
        quint64 id; ///< another one for each start
        QByteArray path;
        int loops; ///< negative: until stopped
    };

    /// The content of a sound's file can't be played. Runs on this thread.
    using Refused = std::function<void(quint64 id, const QString &reason)>;

    explicit MixerThread(Refused refused);
    /// Waits for the thread, as long as the sound server holds it up.
    ~MixerThread();
    MixerThread(const MixerThread &) = delete;
    MixerThread &operator=(const MixerThread &) = delete;

    /// Lets the thread get ready, so that the first sound comes as fast as the next ones.
    void prepare();

    /// Replaces what is heard. The volume goes from 0 to 1.
    void play(const Sound &sound, float volume);
    void setVolume(quint64 id, float volume);
    void stop(quint64 id);

    /// Goes silent and ends the thread; false when the sound server holds it up.
    bool close(std::chrono::milliseconds timeout);

private:
    using Lock = std::unique_lock<std::mutex>;

    bool isWanted(quint64 id) const { return m_wanted && m_wanted->id == id; }
    void wake();
    void startThread();
    void run();
    void step(Lock &lock);
    void start(Lock &lock);
    void refuse(Lock &lock, quint64 id, const QString &reason);
    bool openDevice();
    void closeDevice(Lock &lock);
    bool sleep(Lock &lock, std::optional<std::chrono::milliseconds> longest);

    const Refused m_refused;

    std::mutex m_mutex; ///< never held while the mixer is called
    std::condition_variable m_changed;
    bool m_hasChanged = false;
    bool m_isClosing = false;
    bool m_isRunning = false;
    std::optional<Sound> m_wanted;
    std::atomic<float> m_volume = 1.0F;

    // On the thread only.
    std::unique_ptr<MixerDevice> m_device;
    std::optional<quint64> m_heard;
    bool m_isOutage = false;

    std::thread m_thread; ///< once it is prepared or a sound is wanted
};

} // namespace kova
