// Decodes a sound file several times in a row as the player does, faster than real time, and writes the
// samples for the sound server as 16-bit stereo at 44.1 kHz.
//
//   loop_probe SOUND PASSES RECORDING      exit status 0 on success, one line on stderr otherwise
#include "Sound.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>

namespace {

int fail(const char *what, const char *why) {
    std::fprintf(stderr, "loop_probe: %s: %s\n", what, why);
    return 1;
}

void record(kova::Sound &sound, std::ofstream &file) {
    std::array<float, 2048> block{};
    while (!sound.hasEnded()) {
        sound.fill(block);
        for (const float sample : block) {
            const auto rounded =
                static_cast<std::int16_t>(std::clamp(std::lround(sample * 32768), -32768L, 32767L));
            file.write(reinterpret_cast<const char *>(&rounded), sizeof rounded);
        }
    }
}

} // namespace

int main(int argc, char *argv[]) {
    const int passes = argc == 4 ? std::atoi(argv[2]) : 0;
    if (passes < 1) {
        return fail("usage", "loop_probe SOUND PASSES RECORDING");
    }
    kova::DecoderError error;
    const auto sound = kova::Sound::open(argv[1], passes - 1, error);
    if (!sound) {
        return fail(argv[1], error.reason.c_str());
    }
    std::ofstream file(argv[3], std::ios::binary);
    record(*sound, file);
    file.close();
    return file ? 0 : fail(argv[3], "cannot write");
}
