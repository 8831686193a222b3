#include "TTSPlayer.h"

#include "AlarmGroup.h"
#include "Log.h"
#include "Platform.h"
#include "RunLoop.h"

#include <array>
#include <charconv>
#include <string_view>

namespace kova {

namespace {

// Returns the shortest decimal that converts back to the same float, always with a fraction or an exponent.
QString volumeText(float volume) {
    std::array<char, 32> digits{};
    const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), volume);
    const std::string_view text(digits.data(), static_cast<size_t>(written.ptr - digits.data()));
    const bool isWhole = text.find_first_not_of("-0123456789") == std::string_view::npos;
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size())) +
           (isWhole ? QStringLiteral(".0") : QString());
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
    m_message = text;
    m_shouldLoop = loop;
    m_reading += 1;
    m_synth = m_synthesizers.make([this](bool finished) { didFinishSpeaking(finished); });
    m_synth->setVolume(volume);
    if (loop) { // an alarm
        m_synth->setTimeLimit(longestRinging);
    }
    m_synth->startSpeaking(text);
    m_log.print(QStringLiteral("[TTSPlayer] speaking: \"%1\" vol=%2 loop=%3")
                    .arg(text, volumeText(volume), loop ? QStringLiteral("true") : QStringLiteral("false")));
}

void TTSPlayer::stop() {
    m_shouldLoop = false;
    if (m_synth) {
        m_synth->stopSpeaking();
        m_synth.reset();
    }
    m_message.clear();
}

void TTSPlayer::didFinishSpeaking(bool finished) {
    if (!finished || !m_shouldLoop) {
        return;
    }
    m_runLoop.after(pauseBetweenRepeats, this, [this, reading = m_reading] { repeat(reading); });
}

void TTSPlayer::repeat(quint64 reading) {
    if (m_shouldLoop && m_synth && reading == m_reading) {
        m_synth->startSpeaking(m_message);
    }
}

} // namespace kova
