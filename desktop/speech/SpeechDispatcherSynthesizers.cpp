#include "SpeechDispatcherSynthesizers.h"

#include <algorithm>
#include <cmath>

namespace kova {

class SpeechDispatcherSynthesizers::Synthesizer : public SpeechSynthesizer {
public:
    Synthesizer(SpeechDispatcherSynthesizers &synthesizers, const SpeechSettings &settings,
                DidFinishSpeaking didFinish)
        : m_synthesizers(synthesizers),
          m_didFinish(std::move(didFinish)),
          m_volume(static_cast<int>(std::lround(std::clamp(settings.volume, 0.0F, 1.0F) * 200.0F)) - 100) {
        if (settings.timeLimit) {
            m_end.setRemainingTime(*settings.timeLimit);
        }
    }
    ~Synthesizer() override { stop(); }

    void startSpeaking(const QString &text) override {
        stop();
        m_utterance = ++m_synthesizers.m_lastUtterance;
        m_synthesizers.m_listeners.insert(m_utterance, m_didFinish);
        m_synthesizers.run([&dispatcher = m_synthesizers.m_dispatcher,
                            utterance = SpeechDispatcher::Utterance{m_utterance, text, m_volume, m_end}] {
            dispatcher->speak(utterance);
        });
    }

private:
    void stop() {
        if (m_synthesizers.m_listeners.remove(m_utterance)) {
            m_synthesizers.run(
                [&dispatcher = m_synthesizers.m_dispatcher, id = m_utterance] { dispatcher->stop(id); });
        }
    }

    SpeechDispatcherSynthesizers &m_synthesizers;
    const DidFinishSpeaking m_didFinish;
    const int m_volume; ///< -100 to 100, as the service counts it
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

std::unique_ptr<SpeechSynthesizer> SpeechDispatcherSynthesizers::make(const SpeechSettings &settings,
                                                                      DidFinishSpeaking didFinish) {
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
    return std::make_unique<Synthesizer>(*this, settings, std::move(didFinish));
}

void SpeechDispatcherSynthesizers::run(std::function<void()> action) {
    QMetaObject::invokeMethod(&m_service, std::move(action), Qt::QueuedConnection);
}

// The callback may destroy the synthesizer.
void SpeechDispatcherSynthesizers::ended(quint64 utterance, bool finished) {
    if (const DidFinishSpeaking didFinish = m_listeners.take(utterance)) {
        didFinish(finished);
    }
}

} // namespace kova
