#include "SpeechDispatcher.h"

#include "KanaText.h"

#include <QRegularExpression>
#include <QtDebug>

namespace kova {

namespace {

constexpr qsizetype mostEarlyEnds = 2000;

namespace answer {
constexpr int messageQueued = 225;
constexpr int receivingData = 230;
constexpr int value = 251;
constexpr int end = 702;
constexpr int cancel = 703;
} // namespace answer

// A line of the text that starts with a dot must not end it.
QByteArray asData(QString text) {
    static const QRegularExpression lineBreak(QStringLiteral("\r\n|[\r\n]"));
    text.replace(QChar(u'\0'), QChar(u' ')).replace(lineBreak, QStringLiteral("\r\n"));
    QByteArray data = text.toUtf8().replace("\r\n.", "\r\n..");
    return (data.startsWith('.') ? '.' + data : data) + "\r\n.\r\n";
}

} // namespace

SpeechDispatcher::SpeechDispatcher(Ended ended)
    : m_ended(std::move(ended)),
      m_connection({.ready = [this] { connected(); },
                    .lost = [this](const QString &reason) { lost(reason); },
                    .event = [this](int code, const Lines &lines) { receiveEvent(code, lines); }}) {}

SpeechDispatcher::~SpeechDispatcher() {
    if (m_reading) {
        stop(m_reading->id);
    }
}

void SpeechDispatcher::read(const Reading &reading) {
    if (m_reading) {
        stop(m_reading->id);
    }
    m_reading = reading;
    m_stage = Stage::Waiting;
    if (!reading.end.isForever()) {
        QTimer::singleShot(std::chrono::milliseconds(reading.end.remainingTime()), this,
                           [this, id = reading.id] { stop(id); });
    }
    // The voice that the user chose comes back with a new connection only.
    if (m_isJapanese && !isJapanese(reading.text)) {
        m_connection.drop();
    }
    if (m_connection.want()) {
        submit();
    }
}

void SpeechDispatcher::stop(quint64 id) {
    if (!m_reading || m_reading->id != id) {
        return;
    }
    m_reading.reset();
    switch (m_stage) {
    case Stage::Waiting:
        break;
    case Stage::Announced:
        m_connection.drop(); // instead of a text
        break;
    case Stage::Sent:
    case Stage::Read:
        m_connection.command("CANCEL SELF");
        break;
    }
    m_connection.rest();
}

void SpeechDispatcher::connected() {
    m_isJapanese = false;
    if (m_reading) {
        submit();
    } else {
        m_connection.rest();
    }
}

void SpeechDispatcher::lost(const QString &reason) {
    m_isJapanese = false;
    if (!m_reading || (m_stage == Stage::Waiting && m_connection.startService())) {
        return;
    }
    qWarning().noquote() << "kova-alarm: no speech:" << reason;
    end(false);
}

void SpeechDispatcher::submit() {
    if (!isJapanese(m_reading->text)) {
        announce(m_reading->text);
        return;
    }
    m_isJapanese = true;
    m_connection.command("SET SELF LANGUAGE ja");
    m_connection.command("GET OUTPUT_MODULE", [this, id = m_reading->id](int code, const Lines &lines) {
        if (m_reading && m_reading->id == id) {
            chooseForm(code, lines);
        }
    });
}

// Of the voices that a service has for Japanese, those of espeak read kana alone.
void SpeechDispatcher::chooseForm(int code, const Lines &lines) {
    if (code != answer::value || !lines.value(0).startsWith("espeak")) {
        announce(m_reading->text);
        return;
    }
    m_kana.read(m_reading->text, [this, id = m_reading->id](const QString &kana) {
        const bool isWaiting = m_reading && m_reading->id == id && m_stage == Stage::Waiting;
        if (isWaiting && m_connection.isReady()) {
            announce(kana);
        }
    });
}

void SpeechDispatcher::announce(const QString &text) {
    m_connection.command("SET SELF VOLUME " + QByteArray::number(m_reading->volume));
    m_stage = Stage::Announced;
    m_message.clear();
    m_earlyEnds.clear();
    m_connection.command("SPEAK", [this, id = m_reading->id, text](int code, const Lines &) {
        if (code != answer::receivingData) {
            end(false);
            return;
        }
        m_stage = Stage::Sent;
        m_connection.send(asData(text), [this, id](int result, const Lines &lines) {
            if (m_reading && m_reading->id == id) {
                textSubmitted(result, lines);
            }
        });
    });
}

void SpeechDispatcher::textSubmitted(int code, const Lines &lines) {
    if (code != answer::messageQueued || lines.isEmpty()) {
        end(false);
        return;
    }
    m_stage = Stage::Read;
    m_message = lines.first();
    if (const auto early = m_earlyEnds.constFind(m_message); early != m_earlyEnds.cend()) {
        end(*early);
    }
}

void SpeechDispatcher::end(bool finished) {
    const quint64 id = m_reading->id;
    m_reading.reset();
    m_connection.rest();
    QMetaObject::invokeMethod(
        this, [this, id, finished] { m_ended(id, finished); }, Qt::QueuedConnection);
}

void SpeechDispatcher::receiveEvent(int code, const Lines &lines) {
    const bool isEnd = code == answer::end || code == answer::cancel;
    if (!isEnd || lines.isEmpty() || !m_reading) {
        return;
    }
    const bool finished = code == answer::end;
    if (m_stage == Stage::Sent) {
        m_earlyEnds.insert(lines.first(), finished);
        if (m_earlyEnds.size() > mostEarlyEnds) {
            m_connection.distrust();
        }
    } else if (m_stage == Stage::Read && lines.first() == m_message) {
        end(finished);
    }
}

} // namespace kova
