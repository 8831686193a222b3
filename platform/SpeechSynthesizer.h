#pragma once

#include <QString>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace kova {

struct SpeechSettings {
    float volume = 1; ///< 0 to 1
    /// Counted from the creation of the synthesizer. It then stops, even if the main thread is blocked; until
    /// then an utterance whose service fails is not ended, but spoken again when the service is available.
    std::optional<std::chrono::milliseconds> timeLimit;
};

/// Speaks text in the system's default voice and rate, without blocking, until it is destroyed. Main thread.
class SpeechSynthesizer {
public:
    virtual ~SpeechSynthesizer() = default;

    /// Replaces the current utterance.
    virtual void startSpeaking(const QString &text) = 0;
};

class SpeechSynthesizers {
public:
    /// Called from the event loop when an utterance has ended; `finished` is false if it was interrupted.
    using DidFinishSpeaking = std::function<void(bool finished)>;

    virtual ~SpeechSynthesizers() = default;

    virtual std::unique_ptr<SpeechSynthesizer> make(const SpeechSettings &settings,
                                                    DidFinishSpeaking didFinish) = 0;
};

} // namespace kova
