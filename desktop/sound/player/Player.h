#pragma once

#include "ProgramLink.h"
#include "Sound.h"
#include "SoundDevice.h"

#include <atomic>
#include <condition_variable>
#include <mutex>

namespace kova {

/// Plays one sound. Each of its long calls wants a thread of its own; the process ends without waiting for
/// them.
class Player {
public:
    Player(const ProgramLink &program, const message::Play &request);

    /// Plays to the end, through any absence of the sound server, and says so to the program.
    void play();

    /// Tells the program at each beat how the sound does. A decoder that is stuck stops the beat; a sound
    /// server that is stuck does not.
    void beat();

    void setVolume(float volume) { m_volume = volume; }

private:
    void openDevice();
    bool openSound();
    void waitWhileHeard();
    void fill(std::span<float> samples);
    void setTrouble(const std::string &reason);

    const ProgramLink &m_program;
    const message::Play m_request;
    std::atomic<float> m_volume;

    std::mutex m_decoding; ///< held whenever the file is read
    std::unique_ptr<Sound> m_sound;
    std::atomic<bool> m_isOpen = false; ///< or has been refused
    std::atomic<bool> m_hasEnded = false;
    std::atomic<unsigned int> m_pieces = 0; ///< that the sound server has asked for

    std::mutex m_troubling;
    std::string m_trouble; ///< why there is no sound device; empty when there is one

    std::unique_ptr<SoundDevice> m_device; ///< last, since its thread uses the others
};

} // namespace kova
