#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace kova {

/// What the program and its player tell each other: one short text in each packet. Both sides read what comes
/// in with equal care.
namespace message {

/// The descriptor at which the player finds its end of the socket pair.
constexpr int playersSocket = 3;

/// The next descriptors, as the player opens them: the module that holds FFmpeg, and a sound that comes with
/// the program. What a package brings may be gone from its folder.
constexpr const char *ffmpegModule = "/proc/self/fd/4";
constexpr const char *ownSound = "/proc/self/fd/5";

/// Longer packets are none of ours. Bytes.
constexpr size_t longest = 4500;

/// How often the player tells that it is alive.
constexpr std::chrono::milliseconds beat{500};

struct Play {
    std::string path;                    ///< absolute
    int loops = 0;                       ///< after the first time; negative: until stopped
    float volume = 1;                    ///< 0 to 1
    std::chrono::milliseconds longest{}; ///< then the player ends by itself; more than 0

    friend bool operator==(const Play &, const Play &) = default;
};

struct Volume {
    float volume = 1; ///< 0 to 1

    friend bool operator==(const Volume &, const Volume &) = default;
};

struct Stop {
    friend bool operator==(Stop, Stop) = default;
};

using Request = std::variant<Play, Volume, Stop>;

struct Answer {
    enum class Kind {
        Playing, ///< once, when the sound begins
        Alive,   ///< at each beat while all is well
        Waiting, ///< at each beat, and why, while the sound server is missing or does not answer
        Refused, ///< the last one: the file can't be played, and why
        Ended,   ///< the last one
    };
    Kind kind = Kind::Alive;
    std::string reason; ///< one line, for those that have one

    friend bool operator==(const Answer &, const Answer &) = default;
};

/// The nearest volume from 0 to 1; what is no number is loud, since silence wakes nobody.
float clampedVolume(float volume);

std::string encode(const Request &request);
std::string encode(const Answer &answer);

/// Nothing for what is no such message.
std::optional<Request> decodeRequest(std::string_view packet);
std::optional<Answer> decodeAnswer(std::string_view packet);

} // namespace message

} // namespace kova
