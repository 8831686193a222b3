#pragma once

#include <span>
#include <string_view>

namespace kova {

enum class SoundReader { Sndfile, Ffmpeg };

/// A kind of sound file that is played, known by the end of its name.
struct SoundForm {
    std::string_view suffix; ///< in lower case, without the point
    SoundReader reader;
};

/// All that is played. What is not among them is not even opened.
std::span<const SoundForm> soundForms();

/// The form of a file with this name or path, in upper or lower case; none when it is not played.
const SoundForm *soundFormOf(std::string_view path);

} // namespace kova
