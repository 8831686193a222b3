#include "TTSPlayer.h"

#include "AlarmGroup.h"
#include "Log.h"
#include "Platform.h"
#include "RunLoop.h"

#include <charconv>

namespace kova {

namespace {

// Returns the shortest decimal that converts back to the same float, always with a fraction or an exponent.
QString volumeText(float volume) {
    char text[32];
    const auto [end, error] = std::to_chars(std::begin(text), std::end(text), volume);
    const QByteArray digits(text, end - text);
    bool isWhole = false;
    digits.toLongLong(&isWhole);
    return QString::fromLatin1(isWhole ? digits + ".0" : digits);
}

} // namespace

TTSPlayer::TTSPlayer(SpeechSynthesizers &synthesizers, RunLoop &runLoop, Log &log)
    : m_synthesizers(synthesizers),
      m_runLoop(runLoop),
      m_log(log) {}

TTSPlayer &TTSPlayer::shared() {
    static const Platform &platform = Platform::installed();
    static auto *const player = new TTSPlayer(platform.speechSynthesizers, platform.runLoop, platform.log);
    return *player;
}

void TTSPlayer::speak(const QString &text, float volume, bool loop) {
    stop();
    if (text.isEmpty()) {
        return;
    }
    m_context = std::make_unique<QObject>();
    SpeechSettings settings{.volume = volume, .timeLimit = {}};
    if (loop) { // an alarm
        settings.timeLimit = longestRinging;
    }
    m_synth = m_synthesizers.make(settings, [=, this](bool finished) {
        if (finished && loop) {
            m_runLoop.after(pauseBetweenRepeats, m_context.get(),
                            [=, this] { m_synth->startSpeaking(text); });
        }
    });
    m_synth->startSpeaking(text);
    m_log.print(QStringLiteral("[TTSPlayer] speaking: \"%1\" vol=%2 loop=%3")
                    .arg(text, volumeText(volume), loop ? QStringLiteral("true") : QStringLiteral("false")));
}

void TTSPlayer::stop() {
    m_context.reset();
    m_synth.reset();
}

} // namespace kova
