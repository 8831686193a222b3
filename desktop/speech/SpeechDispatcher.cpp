#include "SpeechDispatcher.h"

#include "KanaText.h"

#include <QRegularExpression>
#include <QtDebug>
#include <algorithm>

namespace kova {

namespace {

constexpr qsizetype maxEarlyEnds = 2000;

namespace reply {
constexpr int messageQueued = 225;
constexpr int receivingData = 230;
constexpr int end = 702;
constexpr int cancel = 703;
} // namespace reply

// The message body, with a dot inserted before a line that begins with one: a line of one dot ends the body.
QByteArray dotStuffed(QString text) {
    static const QRegularExpression lineBreak(QStringLiteral("\r\n|[\r\n]"));
    text.replace(QChar(u'\0'), QChar(u' ')).replace(lineBreak, QStringLiteral("\r\n"));
    QByteArray data = text.toUtf8().replace("\r\n.", "\r\n..");
    return (data.startsWith('.') ? '.' + data : data) + "\r\n.\r\n";
}

// Shorter than any voice takes for this text.
std::chrono::milliseconds minDuration(const QString &text) {
    const auto letters =
        std::count_if(text.begin(), text.end(), [](QChar character) { return character.isLetter(); });
    return std::chrono::milliseconds(40) * letters;
}

} // namespace

SpeechDispatcher::SpeechDispatcher(EndedCallback ended, const Timing &timing)
    : m_ended(std::move(ended)),
      m_timing(timing),
      m_connection({.ready = [this] { connected(); },
                    .lost = [this](const QString &reason) { lost(reason); },
                    .event = [this](int code, const Lines &lines) { receiveEvent(code, lines); }},
                   timing.reply) {
    m_overdue.setSingleShot(true);
    connect(&m_overdue, &QTimer::timeout, this, &SpeechDispatcher::onOverdue);
    m_retry.setSingleShot(true);
    m_retry.setInterval(timing.retry);
    connect(&m_retry, &QTimer::timeout, this, &SpeechDispatcher::start);
}

SpeechDispatcher::~SpeechDispatcher() {
    if (m_utterance) {
        stop(m_utterance->id);
    }
}

void SpeechDispatcher::speak(const Utterance &utterance) {
    if (m_utterance) {
        stop(m_utterance->id);
    }
    m_utterance = utterance;
    m_hasWarned = false;
    if (!utterance.end.isForever()) {
        QTimer::singleShot(std::chrono::milliseconds(utterance.end.remainingTime()), this,
                           [this, id = utterance.id] { stop(id); });
    }
    start();
}

void SpeechDispatcher::start() {
    m_stage = Stage::Nothing;
    // Only a new connection has the voice that the user chose for other languages.
    if (m_japanese.isSelected() && !isJapanese(m_utterance->text)) {
        m_connection.abort();
    }
    if (m_connection.ensureConnected()) {
        submit();
    }
}

void SpeechDispatcher::stop(quint64 id) {
    if (!m_utterance || m_utterance->id != id) {
        return;
    }
    clear();
    if (m_stage == Stage::SpeakCommand) {
        m_connection.abort(); // instead of sending a text
    } else if (m_stage != Stage::Nothing) {
        m_connection.command("CANCEL SELF");
    }
    m_connection.setIdle();
}

void SpeechDispatcher::clear() {
    m_utterance.reset();
    m_overdue.stop();
    m_retry.stop();
}

void SpeechDispatcher::end(bool finished) {
    const quint64 id = m_utterance->id;
    clear();
    m_connection.setIdle();
    QMetaObject::invokeMethod(
        this, [this, id, finished] { m_ended(id, finished); }, Qt::QueuedConnection);
}

void SpeechDispatcher::connected() {
    m_japanese.reset();
    if (m_utterance) {
        submit();
    } else {
        m_connection.setIdle();
    }
}

void SpeechDispatcher::lost(const QString &reason) {
    m_japanese.connectionLost();
    m_overdue.stop();
    if (!m_utterance || (m_stage == Stage::Nothing && m_connection.startService())) {
        return;
    }
    if (!std::exchange(m_hasWarned, true)) {
        qWarning().noquote() << "kova-alarm: no speech:" << reason;
    }
    if (m_utterance->end.isForever()) {
        end(false);
    } else {
        m_stage = Stage::Nothing;
        m_retry.start();
    }
}

void SpeechDispatcher::submit() {
    if (!isJapanese(m_utterance->text)) {
        sendSpeakCommand(m_utterance->text);
        return;
    }
    m_japanese.select([this, id = m_utterance->id](bool readsKanaOnly) {
        if (isWaiting(id)) {
            chooseTextForm(readsKanaOnly);
        }
    });
}

void SpeechDispatcher::chooseTextForm(bool readsKanaOnly) {
    if (!readsKanaOnly) {
        sendSpeakCommand(m_utterance->text);
        return;
    }
    m_kana.read(m_utterance->text, [this, id = m_utterance->id](const QString &kana) {
        if (isWaiting(id) && m_connection.isReady()) {
            sendSpeakCommand(kana);
        }
    });
}

bool SpeechDispatcher::isWaiting(quint64 id) const {
    return m_utterance && m_utterance->id == id && m_stage == Stage::Nothing;
}

void SpeechDispatcher::sendSpeakCommand(const QString &text) {
    m_connection.command("SET SELF VOLUME " + QByteArray::number(m_utterance->volume));
    m_stage = Stage::SpeakCommand;
    m_message.clear();
    m_earlyEnds.clear();
    m_connection.command("SPEAK", [this, text](int code, const Lines &) {
        if (code == reply::receivingData) {
            sendText(text);
        } else {
            voiceFailed();
        }
    });
}

void SpeechDispatcher::sendText(const QString &text) {
    m_stage = Stage::Text;
    m_sinceText.start();
    m_overdue.start(m_timing.speech + m_timing.speech / 10 * std::min<qsizetype>(text.size(), 1000));
    m_connection.send(dotStuffed(text), [this, id = m_utterance->id](int code, const Lines &lines) {
        if (m_utterance && m_utterance->id == id) {
            textSubmitted(code, lines);
        }
    });
}

void SpeechDispatcher::textSubmitted(int code, const Lines &lines) {
    if (code != reply::messageQueued || lines.isEmpty()) {
        voiceFailed();
        return;
    }
    m_stage = Stage::Accepted;
    m_message = lines.first();
    if (const auto early = m_earlyEnds.constFind(m_message); early != m_earlyEnds.cend()) {
        spoken(*early);
    }
}

void SpeechDispatcher::receiveEvent(int code, const Lines &lines) {
    const bool isEnd = code == reply::end || code == reply::cancel;
    if (!isEnd || lines.isEmpty() || !m_utterance) {
        return;
    }
    const bool finished = code == reply::end;
    if (m_stage == Stage::Text) {
        m_earlyEnds.insert(lines.first(), finished);
        if (m_earlyEnds.size() > maxEarlyEnds) {
            m_connection.fail(QStringLiteral("invalid events from the speech service"));
        }
    } else if (m_stage == Stage::Accepted && lines.first() == m_message) {
        spoken(finished);
    }
}

// A generic module reports success even if its command fails.
void SpeechDispatcher::spoken(bool finished) {
    const bool isTooShort = std::chrono::milliseconds(m_sinceText.elapsed()) < minDuration(m_utterance->text);
    if (!finished || !isTooShort || !useDefaultVoice()) {
        end(finished);
    }
}

void SpeechDispatcher::voiceFailed() {
    if (!useDefaultVoice()) {
        end(false);
    }
}

// The process of a module has died or hangs.
void SpeechDispatcher::onOverdue() {
    m_connection.command("CANCEL SELF");
    if (!useDefaultVoice()) {
        m_connection.fail(QStringLiteral("the speech service does not finish a text"));
    }
}

bool SpeechDispatcher::useDefaultVoice() {
    if (!isJapanese(m_utterance->text) || !m_japanese.reject()) {
        return false;
    }
    m_overdue.stop();
    m_stage = Stage::Nothing;
    submit();
    return true;
}

} // namespace kova
