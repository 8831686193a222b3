#include "MixerThread.h"

#include "MixerDevice.h"

#include <QtDebug>

namespace kova {

namespace {

// Longer than the server's buffer, so that closing cuts nothing off; and a sound that replaces another one
// finds the device open.
constexpr std::chrono::milliseconds lingering{250};
constexpr std::chrono::seconds pauseBetweenTries{1};

} // namespace

MixerThread::MixerThread(Refused refused) : m_refused(std::move(refused)) {}

MixerThread::~MixerThread() {
    {
        const Lock lock(m_mutex);
        m_isClosing = true;
        wake();
    }
    if (m_thread.joinable()) {
        m_thread.join();
    }
}

void MixerThread::prepare() {
    const Lock lock(m_mutex);
    startThread();
}

void MixerThread::play(const Sound &sound, float volume) {
    const Lock lock(m_mutex);
    m_wanted = sound;
    m_volume = volume;
    startThread();
    wake();
}

void MixerThread::setVolume(quint64 id, float volume) {
    const Lock lock(m_mutex);
    if (isWanted(id)) {
        m_volume = volume;
    }
}

void MixerThread::stop(quint64 id) {
    const Lock lock(m_mutex);
    if (isWanted(id)) {
        m_wanted.reset();
        wake();
    }
}

bool MixerThread::close(std::chrono::milliseconds timeout) {
    Lock lock(m_mutex);
    m_isClosing = true;
    wake();
    return m_changed.wait_for(lock, timeout, [this] { return !m_isRunning; });
}

void MixerThread::wake() {
    m_hasChanged = true;
    m_changed.notify_all();
}

void MixerThread::startThread() {
    if (!m_thread.joinable() && !m_isClosing) {
        m_isRunning = true;
        m_thread = std::thread([this] { run(); });
    }
}

void MixerThread::run() {
    MixerLibrary::load(); // a failure is told when a sound is wanted
    Lock lock(m_mutex);
    while (!m_isClosing) {
        step(lock);
    }
    closeDevice(lock);
    m_isRunning = false;
    m_changed.notify_all();
}

// One move towards what is wanted; sleeps when there is none to make.
void MixerThread::step(Lock &lock) {
    if (m_device && m_device->isLost()) {
        closeDevice(lock);
    } else if (m_heard && m_device->hasEnded()) {
        if (isWanted(*m_heard)) {
            m_wanted.reset();
        }
        m_heard.reset();
    } else if (m_wanted && m_wanted->id != m_heard) {
        start(lock);
    } else if (m_heard && !m_wanted) {
        m_heard.reset();
        lock.unlock();
        m_device->stop();
        lock.lock();
    } else if (m_device && !m_wanted) {
        if (!sleep(lock, lingering)) {
            closeDevice(lock);
        }
    } else {
        sleep(lock, std::nullopt);
    }
}

void MixerThread::start(Lock &lock) {
    const Sound sound = *m_wanted;
    lock.unlock();
    if (!openDevice()) {
        lock.lock();
        sleep(lock, pauseBetweenTries);
        return;
    }
    const std::optional<QString> reason = m_device->play(sound.path, sound.loops);
    lock.lock();
    if (reason) {
        m_heard.reset();
        refuse(lock, sound.id, *reason);
    } else {
        m_heard = sound.id;
    }
}

void MixerThread::refuse(Lock &lock, quint64 id, const QString &reason) {
    if (!isWanted(id)) {
        return;
    }
    m_wanted.reset();
    lock.unlock();
    m_refused(id, reason);
    lock.lock();
}

bool MixerThread::openDevice() {
    if (m_device) {
        return true;
    }
    auto device = MixerDevice::open(m_volume, [this] {
        const Lock lock(m_mutex);
        wake();
    });
    if (!device) {
        if (!std::exchange(m_isOutage, true)) {
            qWarning().noquote() << "kova-alarm: no sound:" << device.error();
        }
        return false;
    }
    m_isOutage = false;
    m_device = std::move(device).value();
    return true;
}

void MixerThread::closeDevice(Lock &lock) {
    m_heard.reset();
    lock.unlock();
    m_device.reset();
    lock.lock();
}

// Whether something changed before the time was over.
bool MixerThread::sleep(Lock &lock, std::optional<std::chrono::milliseconds> longest) {
    const auto changed = [this] { return m_hasChanged || m_isClosing; };
    if (longest) {
        m_changed.wait_for(lock, *longest, changed);
    } else {
        m_changed.wait(lock, changed);
    }
    return std::exchange(m_hasChanged, false) || m_isClosing;
}

} // namespace kova
