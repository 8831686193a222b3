#pragma once

#include "SpeechSynthesizer.h"

#include <QStringList>
#include <optional>

namespace kova {

/// Reads nothing and remembers what is being read.
class FakeSpeechSynthesizers : public SpeechSynthesizers {
public:
    QString reading;                                      ///< the text being read now, null when silent
    float volume = -1;                                    ///< of the last reading
    QStringList readings;                                 ///< all texts begun, in order
    std::optional<std::chrono::milliseconds> longestTime; ///< of the last reading, where one was asked for

    std::unique_ptr<SpeechSynthesizer> make(SpeechSynthesizer::DidFinishSpeaking didFinish) override {
        m_didFinish = std::move(didFinish);
        longestTime.reset();
        return std::make_unique<Synthesizer>(*this);
    }

    /// The reading comes to its end, or is interrupted from outside.
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
        void setVolume(float volume) override { m_all.volume = volume; }
        void setLongestTime(std::chrono::milliseconds time) override { m_all.longestTime = time; }
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
