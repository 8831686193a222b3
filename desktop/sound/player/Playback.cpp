#include "Playback.h"

#include <cmath>
#include <sys/socket.h>
#include <thread>
#include <utility>

namespace kova {

namespace {

using Kind = protocol::Event::Kind;
using namespace std::chrono_literals;

constexpr auto retryInterval = 1s;
constexpr auto pollInterval = 100ms;
constexpr auto drainTime = 500ms; // longer than the sound server's buffer, so that the end is not cut off

} // namespace

void sendEvent(Kind kind, std::string_view reason) {
    const protocol::Event event{.kind = kind, .reason = reason};
    ::send(protocol::socket, &event, sizeof event, MSG_NOSIGNAL | MSG_DONTWAIT);
}

void Playback::play() {
    while (!m_hasEnded) {
        openDevice();
        if (!m_sound && !openSound()) {
            return;
        }
        waitForEndOrDeviceLoss();
        m_device.reset();
    }
    sendEvent(Kind::Ended);
}

void Playback::openDevice() {
    for (;;) {
        m_device.emplace(Sound::rate, Sound::channels, [this](std::span<float> samples) { fill(samples); });
        setDeviceError(m_device->error());
        if (m_device->error().empty()) {
            return;
        }
        std::this_thread::sleep_for(retryInterval);
    }
}

bool Playback::openSound() {
    DecoderError error;
    {
        const std::lock_guard lock(m_soundMutex);
        m_sound = Sound::open(m_request.path.toString(), m_request.loops, error);
    }
    m_isSoundOpened = true;
    m_isSoundOpened.notify_one();
    if (m_sound) {
        sendEvent(Kind::Playing);
    } else {
        sendEvent(error.isTemporary ? Kind::Failed : Kind::Rejected, error.reason);
    }
    return m_sound != nullptr;
}

void Playback::waitForEndOrDeviceLoss() {
    while (!m_hasEnded && !m_device->isLost()) {
        std::this_thread::sleep_for(pollInterval);
    }
    if (m_hasEnded) {
        std::this_thread::sleep_for(drainTime);
    }
}

void Playback::fill(std::span<float> samples) {
    m_isSoundOpened.wait(false); // so that the first buffer already holds the sound
    const std::lock_guard lock(m_soundMutex);
    m_buffersRequested += 1;
    if (m_sound) {
        m_sound->fill(samples);
    }
    for (float &sample : samples) {
        sample = std::isfinite(sample) ? sample * m_request.volume : 0;
    }
    m_hasEnded = !m_sound || m_sound->hasEnded();
}

void Playback::sendHeartbeats() {
    constexpr int maxIdleHeartbeats = 2;
    unsigned int last = 0;
    for (int idleHeartbeats = 0;;) {
        std::this_thread::sleep_for(protocol::heartbeatInterval);
        { const std::lock_guard waitForDecoder(m_soundMutex); }
        const unsigned int buffers = m_buffersRequested;
        idleHeartbeats = std::exchange(last, buffers) == buffers ? idleHeartbeats + 1 : 0;
        const std::lock_guard lock(m_deviceErrorMutex);
        if (!m_deviceError.empty()) {
            sendEvent(Kind::Waiting, m_deviceError);
        } else if (idleHeartbeats > maxIdleHeartbeats) {
            sendEvent(Kind::Waiting, "the sound server does not respond");
        } else {
            sendEvent(Kind::Alive);
        }
    }
}

void Playback::setDeviceError(const std::string &reason) {
    const std::lock_guard lock(m_deviceErrorMutex);
    m_deviceError = reason;
}

} // namespace kova
