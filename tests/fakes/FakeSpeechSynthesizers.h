#pragma once

#include "SpeechSynthesizer.h"

#include <QStringList>

namespace kova {

/// Records what is spoken, without speaking.
class FakeSpeechSynthesizers : public SpeechSynthesizers {
public:
    QString reading;                                    ///< the text being read now, null when silent
    float volume = -1;                                  ///< of the last reading
    QStringList readings;                               ///< all texts begun, in order
    std::optional<std::chrono::milliseconds> timeLimit; ///< of the last synthesizer, if set

    std::unique_ptr<SpeechSynthesizer> make(const SpeechSettings &settings,
                                            DidFinishSpeaking didFinish) override {
        m_didFinish = std::move(didFinish);
        volume = settings.volume;
        timeLimit = settings.timeLimit;
        return std::make_unique<Synthesizer>(*this);
    }

    /// Ends the utterance, or interrupts it.
    void finish(bool finished = true) {
        reading = QString();
        if (const auto didFinish = m_didFinish) {
            didFinish(finished);
        }
    }

private:
    struct Synthesizer : SpeechSynthesizer {
        explicit Synthesizer(FakeSpeechSynthesizers &synthesizers) : all(synthesizers) {}
        ~Synthesizer() override {
            all.reading = QString();
            all.m_didFinish = nullptr;
        }
        void startSpeaking(const QString &text) override {
            all.reading = text;
            all.readings.append(text);
        }
        FakeSpeechSynthesizers &all;
    };

    DidFinishSpeaking m_didFinish;
};

} // namespace kova
