#pragma once

#include "SpeechDispatcher.h"
#include "SpeechSynthesizer.h"

#include <QThread>
#include <chrono>
#include <memory>

namespace kova {

/// Synthesizers that use the speech service, with the voice and rate configured there. A new utterance
/// replaces the current one, of whichever synthesizer. The connection lives in a thread of its own, so that
/// speech starts even if the main thread is blocked by an unresponsive display.
class SpeechDispatcherSynthesizers : public SpeechSynthesizers {
public:
    SpeechDispatcherSynthesizers();
    ~SpeechDispatcherSynthesizers() override;

    std::unique_ptr<SpeechSynthesizer> make(const SpeechSettings &settings,
                                            DidFinishSpeaking didFinish) override;

    /// Stops speaking and ends the thread. Returns false if the thread has not ended within the timeout.
    bool close(std::chrono::milliseconds timeout);

private:
    class Synthesizer;

    void run(std::function<void()> action);
    void ended(quint64 utterance, bool finished);

    quint64 m_lastUtterance = 0;
    QHash<quint64, DidFinishSpeaking> m_listeners; ///< by current utterance
    QObject m_context;                             ///< lives in the main thread
    QThread m_thread;
    QObject m_service;                              ///< lives in the other thread
    std::unique_ptr<SpeechDispatcher> m_dispatcher; ///< used in the other thread only
};

} // namespace kova
