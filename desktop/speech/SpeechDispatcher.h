#pragma once

#include "KanaReader.h"
#include "SpeechConnection.h"

#include <QDeadlineTimer>
#include <QHash>
#include <optional>

namespace kova {

/// Reads one text at a time by the speech service, which is started when it is not there. A text with kana or
/// kanji is read in the service's Japanese voice, and in kana where that voice knows no kanji.
class SpeechDispatcher : public QObject {
public:
    struct Reading {
        quint64 id; ///< another one for each reading
        QString text;
        int volume;                                  ///< -100 to 100
        QDeadlineTimer end{QDeadlineTimer::Forever}; ///< when it is stopped at the latest
    };

    /// A reading that was not stopped has ended; not finished when it was interrupted or could not be read.
    /// Runs from the event loop.
    using Ended = std::function<void(quint64 id, bool finished)>;

    explicit SpeechDispatcher(Ended ended);
    ~SpeechDispatcher() override;

    /// Replaces the present reading.
    void read(const Reading &reading);

    /// Nothing more of this reading is heard, even if the service is still being started for it.
    void stop(quint64 id);

private:
    using Lines = SpeechConnection::Lines;

    void connected();
    void lost(const QString &reason);
    void submit();
    void chooseForm(int code, const Lines &lines);
    void announce(const QString &text);
    void textSubmitted(int code, const Lines &lines);
    void end(bool finished);
    void receiveEvent(int code, const Lines &lines);

    /// How far the present reading has come.
    enum class Stage { Waiting, Announced, Sent, Read };

    const Ended m_ended;
    std::optional<Reading> m_reading;
    Stage m_stage = Stage::Waiting;
    bool m_isJapanese = false;           ///< the connection's voice
    QByteArray m_message;                ///< the service's name for the present reading
    QHash<QByteArray, bool> m_earlyEnds; ///< of messages whose names are not told yet
    KanaReader m_kana;
    SpeechConnection m_connection;
};

} // namespace kova
