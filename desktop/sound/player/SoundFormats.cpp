#include "SoundFormats.h"

#include <algorithm>
#include <array>

namespace kova {

namespace {

constexpr std::array formats{
    SoundFormat{"mp3", DecoderLibrary::Sndfile},  SoundFormat{"wav", DecoderLibrary::Sndfile},
    SoundFormat{"aif", DecoderLibrary::Sndfile},  SoundFormat{"aiff", DecoderLibrary::Sndfile},
    SoundFormat{"flac", DecoderLibrary::Sndfile}, SoundFormat{"ogg", DecoderLibrary::Sndfile},
    SoundFormat{"oga", DecoderLibrary::Sndfile},  SoundFormat{"opus", DecoderLibrary::Sndfile},
    SoundFormat{"m4a", DecoderLibrary::Ffmpeg},   SoundFormat{"mp4", DecoderLibrary::Ffmpeg},
    SoundFormat{"aac", DecoderLibrary::Ffmpeg},   SoundFormat{"wma", DecoderLibrary::Ffmpeg},
};

char lower(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

} // namespace

std::span<const SoundFormat> soundFormats() {
    return formats;
}

const SoundFormat *soundFormatOf(std::string_view path) {
    const std::string_view name = path.substr(path.rfind('/') + 1);
    const size_t point = name.rfind('.');
    if (point == std::string_view::npos) {
        return nullptr;
    }
    const auto format =
        std::ranges::find_if(formats, [suffix = name.substr(point + 1)](const SoundFormat &known) {
            return std::ranges::equal(known.suffix, suffix, {}, {}, lower);
        });
    return format == formats.end() ? nullptr : &*format;
}

} // namespace kova
