#pragma once

#include "SpeechSynthesizer.h"

#include <QStringList>
#include <optional>

namespace kova {

/// Records what is spoken, without speaking.
class FakeSpeechSynthesizers : public SpeechSynthesizers {
public:
    QString reading;                                    ///< the text being read now, null when silent
    float volume = -1;                                  ///< of the last reading
    QStringList readings;                               ///< all texts begun, in order
    std::optional<std::chrono::milliseconds> timeLimit; ///< of the last synthesizer, if set

    std::unique_ptr<SpeechSynthesizer> make(SpeechSynthesizer::DidFinishSpeaking didFinish) override {
        m_didFinish = std::move(didFinish);
        timeLimit.reset();
        return std::make_unique<Synthesizer>(*this);
    }

    /// Ends the utterance, or interrupts it.
    void finish(bool finished = true) {
        reading = QString();
        const auto didFinish = m_didFinish;
        if (didFinish) {
            didFinish(finished);
        }
    }

private:
    class Synthesizer : public SpeechSynthesizer {
    public:
        explicit Synthesizer(FakeSpeechSynthesizers &synthesizers) : m_all(synthesizers) {}
        ~Synthesizer() override {
            stopSpeaking();
            m_all.m_didFinish = nullptr;
        }
        void setVolume(float value) override { m_all.volume = value; }
        void setTimeLimit(std::chrono::milliseconds time) override { m_all.timeLimit = time; }
        void startSpeaking(const QString &text) override {
            m_all.reading = text;
            m_all.readings.append(text);
        }
        void stopSpeaking() override { m_all.reading = QString(); }

    private:
        FakeSpeechSynthesizers &m_all;
    };

    SpeechSynthesizer::DidFinishSpeaking m_didFinish;
};

} // namespace kova
