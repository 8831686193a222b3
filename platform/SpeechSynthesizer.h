#pragma once

#include <QString>
#include <chrono>
#include <functional>
#include <memory>

namespace kova {

/// Reads text aloud in the system's default voice and rate. No call waits for the speech service. Destroying
/// the synthesizer ends its reading. Main thread.
class SpeechSynthesizer {
public:
    /// A reading has ended; not finished when it was interrupted. Runs from the event loop.
    using DidFinishSpeaking = std::function<void(bool finished)>;

    virtual ~SpeechSynthesizer() = default;

    /// 0 to 1, for the readings that start from now on.
    virtual void setVolume(float volume) = 0;

    /// How long from now anything may be heard, even if this thread is held up meanwhile: for good where
    /// nothing is said. For the readings that start from now on.
    virtual void setLongestTime(std::chrono::milliseconds time) = 0;

    /// Replaces a reading in progress.
    virtual void startSpeaking(const QString &text) = 0;

    virtual void stopSpeaking() = 0;
};

class SpeechSynthesizers {
public:
    virtual ~SpeechSynthesizers() = default;

    virtual std::unique_ptr<SpeechSynthesizer> make(SpeechSynthesizer::DidFinishSpeaking didFinish) = 0;
};

} // namespace kova
