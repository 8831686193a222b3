#include "Player.h"

#include <cmath>
#include <thread>
#include <utility>

namespace kova {

namespace {

using Kind = message::Answer::Kind;
using namespace std::chrono_literals;

constexpr auto pauseBetweenTries = 1s;
constexpr auto pauseBetweenLooks = 100ms;

// Longer than what the sound server holds in store, so that the end is not cut off.
constexpr auto lingering = 500ms;

} // namespace

Player::Player(const ProgramLink &program, const message::Play &request)
    : m_program(program),
      m_request(request),
      m_volume(request.volume) {}

void Player::play() {
    while (!m_hasEnded) {
        openDevice();
        if (!m_sound && !openSound()) {
            return;
        }
        waitWhileHeard();
        m_device.reset();
    }
    m_program.tell(Kind::Ended);
}

void Player::openDevice() {
    std::string reason;
    while (
        !(m_device = SoundDevice::open(
              Sound::rate, Sound::channels, [this](std::span<float> samples) { fill(samples); }, reason))) {
        setTrouble(reason);
        std::this_thread::sleep_for(pauseBetweenTries);
    }
    setTrouble({});
}

bool Player::openSound() {
    std::string reason;
    {
        const std::lock_guard lock(m_decoding);
        m_sound = Sound::open(m_request.path, m_request.loops, reason);
    }
    m_isOpen = true;
    m_isOpen.notify_one();
    m_sound ? m_program.tell(Kind::Playing) : m_program.tell(Kind::Refused, reason);
    return m_sound != nullptr;
}

void Player::waitWhileHeard() {
    while (!m_hasEnded && !m_device->isLost()) {
        std::this_thread::sleep_for(pauseBetweenLooks);
    }
    if (m_hasEnded) {
        std::this_thread::sleep_for(lingering);
    }
}

void Player::fill(std::span<float> samples) {
    m_isOpen.wait(false); // so that the first piece already holds the sound
    const std::lock_guard lock(m_decoding);
    m_pieces += 1;
    if (m_sound) {
        m_sound->fill(samples);
    }
    for (float &sample : samples) {
        sample = std::isfinite(sample) ? sample * m_volume : 0;
    }
    m_hasEnded = !m_sound || m_sound->hasEnded();
}

void Player::beat() {
    constexpr int longestLull = 2; // beats
    unsigned int last = 0;
    for (int lull = 0;;) {
        std::this_thread::sleep_for(message::beat);
        { const std::lock_guard isNotStuck(m_decoding); }
        const unsigned int pieces = m_pieces;
        lull = std::exchange(last, pieces) == pieces ? lull + 1 : 0;
        const std::lock_guard lock(m_troubling);
        if (!m_trouble.empty()) {
            m_program.tell(Kind::Waiting, m_trouble);
        } else if (lull > longestLull) {
            m_program.tell(Kind::Waiting, "the sound server does not answer");
        } else {
            m_program.tell(Kind::Alive);
        }
    }
}

void Player::setTrouble(const std::string &reason) {
    const std::lock_guard lock(m_troubling);
    m_trouble = reason;
}

} // namespace kova
