#pragma once

#include "Result.h"

#include <SDL2/SDL.h>
#include <SDL2/SDL_mixer.h>

namespace kova {

/// The functions of SDL and SDL_mixer that play a sound. The libraries bring along half a desktop, so they
/// are loaded by the thread that plays instead of with the program: it starts in half the time, and it keeps
/// time without them.
struct MixerLibrary {
    /// The functions, loaded once and kept for good.
    static Result<const MixerLibrary *> load();

    decltype(&::SDL_SetMainReady) SDL_SetMainReady;
    decltype(&::SDL_SetHint) SDL_SetHint;
    decltype(&::SDL_GetError) SDL_GetError;
    decltype(&::SDL_InitSubSystem) SDL_InitSubSystem;
    decltype(&::SDL_QuitSubSystem) SDL_QuitSubSystem;
    decltype(&::SDL_AddEventWatch) SDL_AddEventWatch;
    decltype(&::SDL_DelEventWatch) SDL_DelEventWatch;
    decltype(&::Mix_OpenAudioDevice) Mix_OpenAudioDevice;
    decltype(&::Mix_CloseAudio) Mix_CloseAudio;
    decltype(&::Mix_Quit) Mix_Quit;
    decltype(&::Mix_SetPostMix) Mix_SetPostMix;
    decltype(&::Mix_LoadMUS) Mix_LoadMUS;
    decltype(&::Mix_FreeMusic) Mix_FreeMusic;
    decltype(&::Mix_PlayMusic) Mix_PlayMusic;
    decltype(&::Mix_PlayingMusic) Mix_PlayingMusic;
    decltype(&::Mix_HaltMusic) Mix_HaltMusic;
};

} // namespace kova
