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

    void setLongestTime(std::chrono::milliseconds time) override { m_end.setRemainingTime(time); }

    void startSpeaking(const QString &text) override {
        stopSpeaking();
        m_reading = ++m_synthesizers.m_lastReading;
        m_synthesizers.m_listeners.insert(m_reading, m_didFinish);
        m_synthesizers.run([&dispatcher = m_synthesizers.m_dispatcher,
                            reading = SpeechDispatcher::Reading{m_reading, text, m_volume, m_end}] {
            dispatcher->read(reading);
        });
    }

    void stopSpeaking() override {
        if (m_synthesizers.m_listeners.remove(m_reading)) {
            m_synthesizers.run(
                [&dispatcher = m_synthesizers.m_dispatcher, id = m_reading] { dispatcher->stop(id); });
        }
    }

private:
    SpeechDispatcherSynthesizers &m_synthesizers;
    const DidFinishSpeaking m_didFinish;
    int m_volume = 100;
    QDeadlineTimer m_end{QDeadlineTimer::Forever};
    quint64 m_reading = 0; ///< none yet
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

// The thread begins with the first reading.
std::unique_ptr<SpeechSynthesizer>
SpeechDispatcherSynthesizers::make(SpeechSynthesizer::DidFinishSpeaking didFinish) {
    if (!m_thread.isRunning()) {
        m_thread.start();
        run([this] {
            m_dispatcher = std::make_unique<SpeechDispatcher>([this](quint64 reading, bool finished) {
                QMetaObject::invokeMethod(&m_home, [this, reading, finished] { ended(reading, finished); });
            });
        });
    }
    return std::make_unique<Synthesizer>(*this, std::move(didFinish));
}

void SpeechDispatcherSynthesizers::run(std::function<void()> action) {
    QMetaObject::invokeMethod(&m_service, std::move(action), Qt::QueuedConnection);
}

// The synthesizer may be gone, or end in the call.
void SpeechDispatcherSynthesizers::ended(quint64 reading, bool finished) {
    if (const SpeechSynthesizer::DidFinishSpeaking didFinish = m_listeners.take(reading)) {
        didFinish(finished);
    }
}

} // namespace kova
