#pragma once

#include <QString>
#include <chrono>
#include <functional>
#include <memory>

namespace kova {

/// Speaks text in the system's default voice and rate. Calls do not block. Destroying the synthesizer stops
/// its speech. Main thread.
class SpeechSynthesizer {
public:
    /// Called from the event loop when an utterance has ended; `finished` is false if it was interrupted.
    using DidFinishSpeaking = std::function<void(bool finished)>;

    virtual ~SpeechSynthesizer() = default;

    /// Sets the volume of subsequent utterances, from 0 to 1.
    virtual void setVolume(float volume) = 0;

    /// Stops subsequent utterances when this time has passed from now, even if the main thread is blocked
    /// then. Until then an utterance whose service fails is not ended, but spoken again when the service is
    /// available.
    virtual void setTimeLimit(std::chrono::milliseconds time) = 0;

    /// Replaces the current utterance.
    virtual void startSpeaking(const QString &text) = 0;

    virtual void stopSpeaking() = 0;
};

class SpeechSynthesizers {
public:
    virtual ~SpeechSynthesizers() = default;

    virtual std::unique_ptr<SpeechSynthesizer> make(SpeechSynthesizer::DidFinishSpeaking didFinish) = 0;
};

} // namespace kova
