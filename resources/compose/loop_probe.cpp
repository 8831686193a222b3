// Plays a sound file several times in a row through SDL_mixer, faster than real time, and writes what
// the sound card would have received: 16-bit stereo at 44.1 kHz, from the file's first sample on.
//
//   loop_probe SOUND PASSES RECORDING      exit status 0 on success, one line on stderr otherwise
#include <SDL.h>
#include <SDL_mixer.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <vector>

namespace {

constexpr int kRate = 44100;
constexpr int kFramesPerBlock = 1024;

struct Recording {
    std::vector<char> bytes;

    // Blocks of exact silence before the first sound belong to the idle device, not to the file.
    void take(const Uint8 *block, int size) {
        if (bytes.empty() && std::all_of(block, block + size, [](Uint8 byte) { return byte == 0; }))
            return;
        bytes.insert(bytes.end(), block, block + size);
    }
};

int fail(const char *what, const char *why) {
    std::fprintf(stderr, "loop_probe: %s: %s\n", what, why);
    return 1;
}

int record(const char *sound, int passes, Recording &recording) {
    const std::unique_ptr<Mix_Music, decltype(&Mix_FreeMusic)> music(Mix_LoadMUS(sound), &Mix_FreeMusic);
    if (!music)
        return fail(sound, Mix_GetError());
    Mix_SetPostMix(
        [](void *target, Uint8 *block, int size) { static_cast<Recording *>(target)->take(block, size); },
        &recording);
    if (Mix_PlayMusic(music.get(), passes) != 0)
        return fail(sound, Mix_GetError());
    while (Mix_PlayingMusic())
        SDL_Delay(5);
    Mix_SetPostMix(nullptr, nullptr);
    return 0;
}

} // namespace

int main(int argc, char *argv[]) {
    const int passes = argc == 4 ? std::atoi(argv[2]) : 0;
    if (passes < 1)
        return fail("usage", "loop_probe SOUND PASSES RECORDING");

    SDL_setenv("SDL_AUDIODRIVER", "disk", 1);
    SDL_setenv("SDL_DISKAUDIOFILE", "/dev/null", 1);
    SDL_setenv("SDL_DISKAUDIODELAY", "0", 1);
    if (SDL_Init(SDL_INIT_AUDIO) != 0)
        return fail("SDL", SDL_GetError());
    Recording recording;
    int status = 0;
    if (Mix_OpenAudio(kRate, AUDIO_S16LSB, 2, kFramesPerBlock) != 0) {
        status = fail("SDL_mixer", Mix_GetError());
    } else {
        status = record(argv[1], passes, recording);
        Mix_CloseAudio();
    }
    SDL_Quit();
    if (status != 0)
        return status;

    std::ofstream file(argv[3], std::ios::binary);
    file.write(recording.bytes.data(), static_cast<std::streamsize>(recording.bytes.size()));
    file.close();
    return file ? 0 : fail(argv[3], "cannot write");
}
