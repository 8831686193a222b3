#pragma once

#include "KanaReader.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QHash>
#include <QLocalSocket>
#include <QObject>
#include <QProcess>
#include <QTimer>
#include <deque>
#include <functional>
#include <optional>

namespace kova {

/// A client of the speech service over its line protocol, SSIP, on a local socket. It lives in the event loop
/// alone: the service is started when it is not there, and may be slow, hung or gone without holding anybody
/// up. It reads one text at a time. The connection is made for a reading and closed when no more come, since
/// the service ends itself when it has no clients. A text with kana or kanji is read in the service's
/// Japanese voice, and in kana where that voice knows no kanji.
class SpeechDispatcher : public QObject {
public:
    struct Reading {
        quint64 id; ///< another one for each reading
        QString text;
        int volume; ///< -100 to 100
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
    using Lines = QList<QByteArray>;
    using Reply = std::function<void(int code, const Lines &lines)>;

    void open();
    void startService();
    void serviceStarted();
    void introduce();
    void lost(const QString &reason);
    void drop();
    bool isStuck() const;

    void submit();
    void chooseForm(int code, const Lines &lines);
    void announce(const QString &text);
    void textSubmitted(int code, const Lines &lines);
    void end(bool finished);
    void rest();

    void send(const QByteArray &bytes, Reply reply);
    void command(const QByteArray &line, Reply reply = {});
    void receive();
    void receiveLine(const QByteArray &line);
    void receiveEvent(int code, const Lines &lines);

    /// How far the present reading has come.
    enum class Stage { Waiting, Announced, Sent, Read };

    const Ended m_ended;
    QLocalSocket m_socket;
    QProcess m_starter;
    QTimer m_idle;
    QElapsedTimer m_sinceProgress;
    bool m_hasStartedService = false;

    std::deque<Reply> m_replies; ///< one for each command that is not answered yet
    Lines m_lines;               ///< of the answer that is coming in

    std::optional<Reading> m_reading;
    Stage m_stage = Stage::Waiting;
    KanaReader m_kana;
    bool m_isJapanese = false;           ///< the connection's voice
    QByteArray m_message;                ///< the service's name for the present reading
    QHash<QByteArray, bool> m_earlyEnds; ///< of messages whose names are not told yet
};

} // namespace kova
