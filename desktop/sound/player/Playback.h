#pragma once

#include "PlayerProtocol.h"
#include "Sound.h"
#include "SoundDevice.h"

#include <atomic>
#include <mutex>

namespace kova {

/// Sends an event to the application. Never blocks; one that does not fit into the socket's buffer is
/// dropped.
void sendEvent(protocol::Event::Kind kind, std::string_view reason = {});

/// Plays one sound. play() and sendHeartbeats() each need a thread of their own, since either may block
/// indefinitely; the process exits without joining them.
class Playback {
public:
    explicit Playback(const protocol::Request &request) : m_request(request) {}

    /// Plays to the end and reports the result. Reopens a lost sound device.
    void play();

    /// Sends a heartbeat with the playback state. A hung decoder stops the heartbeat; a hung sound server
    /// does not.
    void sendHeartbeats();

private:
    void openDevice();
    bool openSound();
    void waitForEndOrDeviceLoss();
    void fill(std::span<float> samples);
    void setDeviceError(const std::string &reason);

    const protocol::Request m_request;

    std::mutex m_soundMutex; ///< held while the file is read
    std::unique_ptr<Sound> m_sound;
    std::atomic<bool> m_isSoundOpened = false; ///< or failed to open
    std::atomic<bool> m_hasEnded = false;
    std::atomic<unsigned int> m_buffersRequested = 0; ///< by the sound server

    std::mutex m_deviceErrorMutex;
    std::string m_deviceError; ///< empty if the sound device is open

    std::optional<SoundDevice> m_device; ///< last, since its thread uses the other members
};

} // namespace kova
