#pragma once

#include "SpeechDispatcher.h"
#include "SpeechSynthesizer.h"

namespace kova {

/// Synthesizers on the speech service, in the voice and rate that the user set there. One text is read at a
/// time: the one started last.
class SpeechDispatcherSynthesizers : public SpeechSynthesizers {
public:
    SpeechDispatcherSynthesizers();

    std::unique_ptr<SpeechSynthesizer> make(SpeechSynthesizer::DidFinishSpeaking didFinish) override;

private:
    class Synthesizer;

    void ended(quint64 reading, bool finished);

    quint64 m_lastReading = 0;
    QHash<quint64, SpeechSynthesizer::DidFinishSpeaking> m_listeners; ///< to the readings that go on
    SpeechDispatcher m_dispatcher;
};

} // namespace kova
