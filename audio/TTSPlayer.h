#pragma once

#include "SpeechSynthesizer.h"

#include <QObject>
#include <chrono>

namespace kova {

class Log;
class RunLoop;

/// Reads one message at a time, once or again and again with a pause after each reading. Main thread.
class TTSPlayer : public QObject {
    Q_OBJECT

public:
    static constexpr std::chrono::milliseconds pauseBetweenRepeats{1500};

    TTSPlayer(SpeechSynthesizers &synthesizers, RunLoop &runLoop, Log &log);

    /// The one player of the process, on the installed ports.
    static TTSPlayer &shared();

    /// Ends any reading and reads the text; an empty text only ends. The volume goes from 0 to 1.
    void speak(const QString &text, float volume, bool loop);

    /// Ends the reading and all its repeats.
    void stop();

private:
    void didFinishSpeaking(bool finished);
    void repeat(quint64 reading);

    SpeechSynthesizers &m_synthesizers;
    RunLoop &m_runLoop;
    Log &m_log;

    std::unique_ptr<SpeechSynthesizer> m_synth;
    QString m_message;
    bool m_shouldLoop = false;
    quint64 m_reading =
        0; // counts what `speak` began, so that a late repeat knows that it is no longer wanted
};

} // namespace kova
