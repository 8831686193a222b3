#pragma once

#include "JapaneseVoice.h"
#include "KanaReader.h"
#include "SpeechConnection.h"

#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QHash>
#include <optional>

namespace kova {

/// Speaks one text at a time through the speech service, which is started if it is not running. Text with
/// kana or kanji is spoken by a Japanese voice, and sent in kana if that voice cannot read kanji.
class SpeechDispatcher : public QObject {
public:
    struct Utterance {
        quint64 id; ///< unique
        QString text;
        int volume;                                  ///< -100 to 100
        QDeadlineTimer end{QDeadlineTimer::Forever}; ///< when it is stopped at the latest
    };

    /// Called from the event loop when an utterance has ended, unless it was stopped. `finished` is false if
    /// it was cancelled or could not be spoken.
    using EndedCallback = std::function<void(quint64 id, bool finished)>;

    struct Timing {
        std::chrono::milliseconds reply = std::chrono::seconds(3); ///< timeout
        std::chrono::milliseconds retry = std::chrono::seconds(1); ///< interval
        std::chrono::milliseconds speech =
            std::chrono::seconds(10); ///< timeout, more by a tenth per character
    };

    SpeechDispatcher(EndedCallback ended, const Timing &timing);
    ~SpeechDispatcher() override;

    /// Replaces the current utterance. If the service fails, an utterance with a deadline is spoken again as
    /// soon as the service is available; one without has ended.
    void speak(const Utterance &utterance);

    /// Stops the utterance if it is the current one.
    void stop(quint64 id);

private:
    using Lines = SpeechConnection::Lines;

    void start();
    void clear();
    void end(bool finished);
    void connected();
    void lost(const QString &reason);
    void submit();
    void chooseTextForm(bool readsKanaOnly);
    bool isWaiting(quint64 id) const;
    void sendSpeakCommand(const QString &text);
    void sendText(const QString &text);
    void textSubmitted(int code, const Lines &lines);
    void receiveEvent(int code, const Lines &lines);
    void spoken(bool finished);
    void voiceFailed();
    void onOverdue();
    bool useDefaultVoice();

    /// What has been sent of the current utterance.
    enum class Stage { Nothing, SpeakCommand, Text, Accepted };

    const EndedCallback m_ended;
    const Timing m_timing;
    std::optional<Utterance> m_utterance;
    Stage m_stage = Stage::Nothing;
    bool m_hasWarned = false;  ///< of a failure during the current utterance
    QElapsedTimer m_sinceText; ///< since the text was sent
    QTimer m_overdue;          ///< expires when the text should have been spoken
    QTimer m_retry;
    QByteArray m_message;                ///< the service's identifier of the current utterance
    QHash<QByteArray, bool> m_earlyEnds; ///< of messages that ended before their identifiers were known
    KanaReader m_kana;
    SpeechConnection m_connection;
    JapaneseVoice m_japanese{m_connection};
};

} // namespace kova
