#pragma once

#include <algorithm>
#include <array>
#include <chrono>
#include <climits>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <string>
#include <string_view>

/// The messages between the application and a player process: one struct per packet of a socket pair. Both
/// programs are of one build. Each validates what it receives from the other.
namespace kova::protocol {

/// The player's descriptors: its end of the socket pair, the module with FFmpeg's decoder, and the sound if
/// it is a built-in one.
constexpr int socket = 3;
constexpr const char *ffmpegModule = "/proc/self/fd/4";
constexpr const char *builtInSound = "/proc/self/fd/5";

constexpr std::chrono::milliseconds heartbeatInterval{500};

/// A text in a fixed number of bytes, the unused ones zero. Longer texts are truncated.
template <size_t Size> struct Text {
    std::array<char, Size> bytes{};

    Text() = default;
    Text(std::string_view text) { text.copy(bytes.data(), Size - 1); }

    bool isTerminated() const { return std::ranges::find(bytes, '\0') != bytes.end(); }
    std::string toString() const { return {bytes.begin(), std::ranges::find(bytes, '\0')}; }
};

/// From the application, which ends the sound by closing its end of the pair.
struct Request {
    float volume = 1;             ///< 0 to 1
    std::int32_t loops = 0;       ///< repetitions after the first time; negative repeats endlessly
    std::int32_t maxDuration = 0; ///< milliseconds after which the player exits by itself
    Text<PATH_MAX> path;          ///< absolute

    bool isValid() const {
        return volume >= 0 && volume <= 1 && maxDuration > 0 && path.bytes[0] == '/' && path.isTerminated();
    }
};

/// From the player.
struct Event {
    enum class Kind : std::uint32_t {
        Playing,  ///< sent once, when the sound starts
        Alive,    ///< heartbeat
        Waiting,  ///< heartbeat while the sound server is missing or unresponsive
        Rejected, ///< last event: the file is missing or no sound
        Failed,   ///< last event: the file could not be read, which may be temporary
        Ended,    ///< last event: the sound is over, or its maximum duration
    };

    Kind kind = Kind::Alive;
    Text<300> reason; ///< of Waiting, Rejected and Failed

    bool isValid() const {
        const bool hasReason = kind >= Kind::Waiting && kind <= Kind::Failed;
        return kind <= Kind::Ended && reason.isTerminated() && hasReason == (reason.bytes[0] != '\0');
    }
};

/// Returns `nullopt` unless the packet is a valid message. Accepts arbitrary bytes.
template <typename Message> std::optional<Message> decode(std::span<const char> packet) {
    Message message;
    if (packet.size() != sizeof message) {
        return std::nullopt;
    }
    std::memcpy(&message, packet.data(), sizeof message);
    return message.isValid() ? std::optional(message) : std::nullopt;
}

} // namespace kova::protocol
