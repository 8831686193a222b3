#pragma once

#include "SpeechDispatcher.h"
#include "SpeechSynthesizer.h"

#include <QThread>
#include <chrono>
#include <memory>

namespace kova {

/// Synthesizers on the speech service, in the voice and rate that the user set there. One text is read at a
/// time: the one started last. The service is served by a thread, so that a reading that was asked for is
/// heard even where the main thread is held up next, by a display that hangs.
class SpeechDispatcherSynthesizers : public SpeechSynthesizers {
public:
    SpeechDispatcherSynthesizers();
    ~SpeechDispatcherSynthesizers() override;

    std::unique_ptr<SpeechSynthesizer> make(SpeechSynthesizer::DidFinishSpeaking didFinish) override;

    /// Ends the reading and the thread; false when the service holds it up.
    bool close(std::chrono::milliseconds timeout);

private:
    class Synthesizer;

    void run(std::function<void()> action);
    void ended(quint64 reading, bool finished);

    quint64 m_lastReading = 0;
    QHash<quint64, SpeechSynthesizer::DidFinishSpeaking> m_listeners; ///< to the readings that go on
    QObject m_home;                                                   ///< lives on the main thread
    QThread m_thread;
    QObject m_service;                              ///< lives on the other thread
    std::unique_ptr<SpeechDispatcher> m_dispatcher; ///< used there only
};

} // namespace kova
