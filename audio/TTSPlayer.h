#pragma once

#include "SpeechSynthesizer.h"

#include <QObject>

namespace kova {

class Log;
class RunLoop;

/// Speaks one message at a time, once or repeatedly with a pause between repeats. Main thread.
class TTSPlayer {
public:
    static constexpr std::chrono::milliseconds pauseBetweenRepeats{1500};

    TTSPlayer(SpeechSynthesizers &synthesizers, RunLoop &runLoop, Log &log);

    /// Returns the shared instance, which uses the installed ports.
    static TTSPlayer &shared();

    /// Stops the current message and speaks the text, unless it is empty. The volume ranges from 0 to 1.
    void speak(const QString &text, float volume, bool loop);

    void stop();

private:
    SpeechSynthesizers &m_synthesizers;
    RunLoop &m_runLoop;
    Log &m_log;

    std::unique_ptr<SpeechSynthesizer> m_synth;
    std::unique_ptr<QObject> m_context; ///< of a repeat of the current message
};

} // namespace kova
