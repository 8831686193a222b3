#include "MixerLibrary.h"

#include <QLibrary>
#include <optional>

namespace kova {

namespace {

// Finds functions by their names; remembers what was missing first.
class Functions {
public:
    Functions() : m_library(QStringLiteral("SDL2_mixer-2.0"), 0) {
        m_library.setLoadHints(QLibrary::PreventUnloadHint | QLibrary::ResolveAllSymbolsHint);
        if (!m_library.load()) {
            m_error = m_library.errorString();
        }
    }

    template <typename Function> void find(Function &function, const char *name) {
        function = m_error ? nullptr : reinterpret_cast<Function>(m_library.resolve(name));
        if (function == nullptr && !m_error) {
            m_error = QStringLiteral("SDL_mixer has no %1").arg(QLatin1String(name));
        }
    }

    template <typename Function> Function findOptional(const char *name) {
        return m_error ? nullptr : reinterpret_cast<Function>(m_library.resolve(name));
    }

    const std::optional<QString> &error() const { return m_error; }

private:
    QLibrary m_library;
    std::optional<QString> m_error;
};

void sayNothing(const char *, int, const char *, int, const char *, ...) {}

// ALSA, which SDL tries when there is no sound server, explains each failure in ten lines on standard error.
void silenceAlsa(Functions &functions) {
    using SetHandler = int (*)(decltype(&sayNothing));
    if (const auto setHandler = functions.findOptional<SetHandler>("snd_lib_error_set_handler")) {
        setHandler(&sayNothing);
    }
}

std::optional<QString> findAll(MixerLibrary &library) {
    Functions functions;
    functions.find(library.SDL_SetMainReady, "SDL_SetMainReady");
    functions.find(library.SDL_SetHint, "SDL_SetHint");
    functions.find(library.SDL_GetError, "SDL_GetError");
    functions.find(library.SDL_InitSubSystem, "SDL_InitSubSystem");
    functions.find(library.SDL_QuitSubSystem, "SDL_QuitSubSystem");
    functions.find(library.SDL_AddEventWatch, "SDL_AddEventWatch");
    functions.find(library.SDL_DelEventWatch, "SDL_DelEventWatch");
    functions.find(library.Mix_OpenAudioDevice, "Mix_OpenAudioDevice");
    functions.find(library.Mix_CloseAudio, "Mix_CloseAudio");
    functions.find(library.Mix_Quit, "Mix_Quit");
    functions.find(library.Mix_SetPostMix, "Mix_SetPostMix");
    functions.find(library.Mix_LoadMUS, "Mix_LoadMUS");
    functions.find(library.Mix_FreeMusic, "Mix_FreeMusic");
    functions.find(library.Mix_PlayMusic, "Mix_PlayMusic");
    functions.find(library.Mix_PlayingMusic, "Mix_PlayingMusic");
    functions.find(library.Mix_HaltMusic, "Mix_HaltMusic");
    silenceAlsa(functions);
    return functions.error();
}

} // namespace

Result<const MixerLibrary *> MixerLibrary::load() {
    static MixerLibrary library{};
    static const std::optional<QString> error = findAll(library);
    if (error) {
        return Failure{*error};
    }
    return &library;
}

} // namespace kova
