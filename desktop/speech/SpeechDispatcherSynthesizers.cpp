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

    void setTimeLimit(std::chrono::milliseconds time) override { m_end.setRemainingTime(time); }

    void startSpeaking(const QString &text) override {
        stopSpeaking();
        m_utterance = ++m_synthesizers.m_lastUtterance;
        m_synthesizers.m_listeners.insert(m_utterance, m_didFinish);
        m_synthesizers.run([&dispatcher = m_synthesizers.m_dispatcher,
                            utterance = SpeechDispatcher::Utterance{m_utterance, text, m_volume, m_end}] {
            dispatcher->speak(utterance);
        });
    }

    void stopSpeaking() override {
        if (m_synthesizers.m_listeners.remove(m_utterance)) {
            m_synthesizers.run(
                [&dispatcher = m_synthesizers.m_dispatcher, id = m_utterance] { dispatcher->stop(id); });
        }
    }

private:
    SpeechDispatcherSynthesizers &m_synthesizers;
    const DidFinishSpeaking m_didFinish;
    int m_volume = 100;
    QDeadlineTimer m_end{QDeadlineTimer::Forever};
    quint64 m_utterance = 0; ///< 0 before the first
};

SpeechDispatcherSynthesizers::SpeechDispatcherSynthesizers() {
    m_thread.setObjectName(QStringLiteral("speech"));
    m_service.moveToThread(&m_thread);
}

SpeechDispatcherSynthesizers::~SpeechDispatcherSynthesizers() {
    close(std::chrono::milliseconds::max());
}

bool SpeechDispatcherSynthesizers::close(std::chrono::milliseconds timeout) {
    run([this] {
        m_dispatcher.reset();
        m_thread.quit();
    });
    return m_thread.wait(QDeadlineTimer(timeout));
}

// Starts the thread with the first synthesizer.
std::unique_ptr<SpeechSynthesizer>
SpeechDispatcherSynthesizers::make(SpeechSynthesizer::DidFinishSpeaking didFinish) {
    if (!m_thread.isRunning()) {
        m_thread.start();
        run([this] {
            m_dispatcher = std::make_unique<SpeechDispatcher>(
                [this](quint64 utterance, bool finished) {
                    QMetaObject::invokeMethod(&m_context,
                                              [this, utterance, finished] { ended(utterance, finished); });
                },
                SpeechDispatcher::Timing{});
        });
    }
    return std::make_unique<Synthesizer>(*this, std::move(didFinish));
}

void SpeechDispatcherSynthesizers::run(std::function<void()> action) {
    QMetaObject::invokeMethod(&m_service, std::move(action), Qt::QueuedConnection);
}

// The callback may destroy the synthesizer.
void SpeechDispatcherSynthesizers::ended(quint64 utterance, bool finished) {
    if (const SpeechSynthesizer::DidFinishSpeaking didFinish = m_listeners.take(utterance)) {
        didFinish(finished);
    }
}

} // namespace kova
