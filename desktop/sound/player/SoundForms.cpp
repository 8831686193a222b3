#include "SoundForms.h"

#include <algorithm>
#include <array>

namespace kova {

namespace {

constexpr std::array forms{
    SoundForm{"mp3", SoundReader::Sndfile},  SoundForm{"wav", SoundReader::Sndfile},
    SoundForm{"aif", SoundReader::Sndfile},  SoundForm{"aiff", SoundReader::Sndfile},
    SoundForm{"flac", SoundReader::Sndfile}, SoundForm{"ogg", SoundReader::Sndfile},
    SoundForm{"oga", SoundReader::Sndfile},  SoundForm{"opus", SoundReader::Sndfile},
    SoundForm{"m4a", SoundReader::Ffmpeg},   SoundForm{"mp4", SoundReader::Ffmpeg},
    SoundForm{"aac", SoundReader::Ffmpeg},   SoundForm{"wma", SoundReader::Ffmpeg},
};

char lower(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

} // namespace

std::span<const SoundForm> soundForms() {
    return forms;
}

const SoundForm *soundFormOf(std::string_view path) {
    const std::string_view name = path.substr(path.rfind('/') + 1);
    const size_t point = name.rfind('.');
    if (point == std::string_view::npos) {
        return nullptr;
    }
    const auto form = std::ranges::find_if(forms, [suffix = name.substr(point + 1)](const SoundForm &known) {
        return std::ranges::equal(known.suffix, suffix, {}, {}, lower);
    });
    return form == forms.end() ? nullptr : &*form;
}

} // namespace kova
