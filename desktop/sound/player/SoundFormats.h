#pragma once

#include <algorithm>
#include <array>
#include <string_view>

namespace kova {

enum class DecoderLibrary { Sndfile, Ffmpeg };

/// A supported sound format, known by the suffix of its files.
struct SoundFormat {
    std::string_view suffix; ///< lower case, without the point
    DecoderLibrary library;
};

/// All supported formats. Files of other formats are never opened.
inline constexpr std::array soundFormats{
    SoundFormat{"mp3", DecoderLibrary::Sndfile},  SoundFormat{"wav", DecoderLibrary::Sndfile},
    SoundFormat{"aif", DecoderLibrary::Sndfile},  SoundFormat{"aiff", DecoderLibrary::Sndfile},
    SoundFormat{"flac", DecoderLibrary::Sndfile}, SoundFormat{"ogg", DecoderLibrary::Sndfile},
    SoundFormat{"oga", DecoderLibrary::Sndfile},  SoundFormat{"opus", DecoderLibrary::Sndfile},
    SoundFormat{"m4a", DecoderLibrary::Ffmpeg},   SoundFormat{"mp4", DecoderLibrary::Ffmpeg},
    SoundFormat{"aac", DecoderLibrary::Ffmpeg},   SoundFormat{"wma", DecoderLibrary::Ffmpeg},
};

/// Returns the format of a file name or path, whatever its case; null if it is not supported.
inline const SoundFormat *soundFormatOf(std::string_view path) {
    const std::string_view name = path.substr(path.rfind('/') + 1);
    const size_t point = name.rfind('.');
    const std::string_view suffix = point < name.size() ? name.substr(point + 1) : std::string_view();
    const auto lower = [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    };
    const auto *const format = std::ranges::find_if(soundFormats, [&](const SoundFormat &known) {
        return std::ranges::equal(known.suffix, suffix, {}, {}, lower);
    });
    return format != soundFormats.end() ? format : nullptr;
}

} // namespace kova
