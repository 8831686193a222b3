#pragma once

#include <span>
#include <string_view>

namespace kova {

enum class DecoderLibrary { Sndfile, Ffmpeg };

/// A supported sound format, known by the suffix of its files.
struct SoundFormat {
    std::string_view suffix; ///< lower case, without the point
    DecoderLibrary library;
};

/// All supported formats. Files of other formats are never opened.
std::span<const SoundFormat> soundFormats();

/// Returns the format of a file name or path, whatever its case; null if it is not supported.
const SoundFormat *soundFormatOf(std::string_view path);

} // namespace kova
