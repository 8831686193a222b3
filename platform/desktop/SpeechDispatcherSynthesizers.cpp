#include "SpeechDispatcherSynthesizers.h"

#include <algorithm>
#include <cmath>

namespace kova {

class SpeechDispatcherSynthesizers::Synthesizer : public SpeechSynthesizer {
public:
    Synthesizer(SpeechDispatcherSynthesizers &synthesizers, DidFinishSpeaking didFinish)
        : m_synthesizers(synthesizers),
          m_didFinish(std::move(didFinish)) {}

    ~Synthesizer() override { Synthesizer::stopSpeaking(); }

    // The service's scale goes from -100 to 100.
    void setVolume(float volume) override {
        m_volume = static_cast<int>(std::lround(std::clamp(volume, 0.0F, 1.0F) * 200.0F)) - 100;
    }

    void startSpeaking(const QString &text) override {
        stopSpeaking();
        m_reading = ++m_synthesizers.m_lastReading;
        m_synthesizers.m_listeners.insert(m_reading, m_didFinish);
        m_synthesizers.m_dispatcher.read({.id = m_reading, .text = text, .volume = m_volume});
    }

    void stopSpeaking() override {
        m_synthesizers.m_listeners.remove(m_reading);
        m_synthesizers.m_dispatcher.stop(m_reading);
    }

private:
    SpeechDispatcherSynthesizers &m_synthesizers;
    const DidFinishSpeaking m_didFinish;
    int m_volume = 100;
    quint64 m_reading = 0; ///< none yet
};

SpeechDispatcherSynthesizers::SpeechDispatcherSynthesizers()
    : m_dispatcher([this](quint64 reading, bool finished) { ended(reading, finished); }) {}

std::unique_ptr<SpeechSynthesizer>
SpeechDispatcherSynthesizers::make(SpeechSynthesizer::DidFinishSpeaking didFinish) {
    return std::make_unique<Synthesizer>(*this, std::move(didFinish));
}

// The synthesizer may be gone, or end in the call.
void SpeechDispatcherSynthesizers::ended(quint64 reading, bool finished) {
    if (const SpeechSynthesizer::DidFinishSpeaking didFinish = m_listeners.take(reading)) {
        didFinish(finished);
    }
}

} // namespace kova
