#include "SpeechDispatcher.h"

#include "KanaText.h"

#include <QRegularExpression>
#include <QStandardPaths>
#include <QtDebug>
#include <pwd.h>
#include <unistd.h>

namespace kova {

namespace {

constexpr std::chrono::seconds idleTime{10};
constexpr std::chrono::seconds longestSilence{3};
constexpr std::chrono::seconds longestStart{20};
constexpr qint64 longestLine = 4096;
constexpr qsizetype longestAnswer = 2000; // lines, or ends that nobody asked for

namespace answer {
constexpr int messageQueued = 225;
constexpr int receivingData = 230;
constexpr int value = 251;
constexpr int firstEvent = 700;
constexpr int end = 702;
constexpr int cancel = 703;
} // namespace answer

QString defaultSocketPath() {
    const QString runtimeFolder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    const QString folder = runtimeFolder.isEmpty()
                               ? QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation)
                               : runtimeFolder;
    return folder + QStringLiteral("/speech-dispatcher/speechd.sock");
}

// "unix_socket" or "unix_socket:PATH", as the service's own clients read it.
QString socketPath() {
    const QString address = qEnvironmentVariable("SPEECHD_ADDRESS");
    const QString prefix = QStringLiteral("unix_socket:");
    return address.startsWith(prefix) ? address.mid(prefix.size()) : defaultSocketPath();
}

QByteArray userName() {
    const passwd *const user = getpwuid(getuid());
    return user != nullptr ? QByteArray(user->pw_name) : QByteArray("user");
}

QString noSpeechService() {
    return QStringLiteral("what answers is no speech service");
}

// A line of the text that starts with a dot must not end it.
QByteArray asData(QString text) {
    static const QRegularExpression lineBreak(QStringLiteral("\r\n|[\r\n]"));
    text.replace(QChar(u'\0'), QChar(u' ')).replace(lineBreak, QStringLiteral("\r\n"));
    QByteArray data = text.toUtf8().replace("\r\n.", "\r\n..");
    return (data.startsWith('.') ? '.' + data : data) + "\r\n.\r\n";
}

} // namespace

SpeechDispatcher::SpeechDispatcher(Ended ended) : m_ended(std::move(ended)) {
    m_socket.setReadBufferSize(2 * longestLine); // a flood waits on the service's side
    connect(&m_socket, &QLocalSocket::connected, this, &SpeechDispatcher::introduce);
    connect(&m_socket, &QLocalSocket::readyRead, this, &SpeechDispatcher::receive);
    // Queued, so that a connection that fails at once is told like one that is lost later.
    connect(
        &m_socket, &QLocalSocket::stateChanged, this,
        [this](QLocalSocket::LocalSocketState state) {
            if (state == QLocalSocket::UnconnectedState && m_socket.state() == state) {
                lost(m_socket.errorString());
            }
        },
        Qt::QueuedConnection);

    m_starter.setStandardInputFile(QProcess::nullDevice());
    m_starter.setStandardOutputFile(QProcess::nullDevice());
    m_starter.setStandardErrorFile(QProcess::nullDevice());
    connect(&m_starter, &QProcess::finished, this, &SpeechDispatcher::serviceStarted);
    connect(&m_starter, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            serviceStarted();
        }
    });

    m_idle.setSingleShot(true);
    m_idle.setInterval(idleTime);
    connect(&m_idle, &QTimer::timeout, this, &SpeechDispatcher::drop);
}

SpeechDispatcher::~SpeechDispatcher() {
    if (m_reading) {
        stop(m_reading->id);
    }
    drop();
    constexpr int untilKilled = 500; // ms
    m_starter.waitForFinished(untilKilled);
}

void SpeechDispatcher::read(const Reading &reading) {
    if (m_reading) {
        stop(m_reading->id);
    }
    m_idle.stop();
    m_reading = reading;
    m_stage = Stage::Waiting;
    // The voice that the user chose comes back with a new connection only.
    if (isStuck() || (m_isJapanese && !isJapanese(reading.text))) {
        drop();
    }
    if (m_socket.state() == QLocalSocket::ConnectedState) {
        submit();
    } else if (m_socket.state() == QLocalSocket::UnconnectedState &&
               m_starter.state() == QProcess::NotRunning) {
        m_hasStartedService = false;
        open();
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
        drop(); // instead of a text
        break;
    case Stage::Sent:
    case Stage::Read:
        command("CANCEL SELF");
        break;
    }
    rest();
}

// The connection, and the service if need be.

void SpeechDispatcher::open() {
    m_sinceProgress.start();
    m_socket.connectToServer(socketPath());
}

void SpeechDispatcher::startService() {
    m_hasStartedService = true;
    m_starter.start(QStringLiteral("speech-dispatcher"),
                    {QStringLiteral("--spawn"), QStringLiteral("--communication-method"),
                     QStringLiteral("unix_socket"), QStringLiteral("--socket-path"), socketPath()});
}

void SpeechDispatcher::serviceStarted() {
    if (m_reading) {
        open();
    }
}

void SpeechDispatcher::introduce() {
    command("SET SELF CLIENT_NAME \"" + userName() + ":kova-alarm:main\"");
    command("SET SELF NOTIFICATION END ON");
    command("SET SELF NOTIFICATION CANCEL ON");
    command("SET SELF PRIORITY IMPORTANT"); // no other program's message takes its place
    if (m_reading) {
        submit();
    } else {
        rest();
    }
}

void SpeechDispatcher::lost(const QString &reason) {
    drop();
    if (!m_reading) {
        return;
    }
    if (m_stage == Stage::Waiting && !m_hasStartedService) {
        startService();
        return;
    }
    qWarning().noquote() << "kova-alarm: no speech:" << reason;
    end(false);
}

// Whatever the service still has to say is of no more use.
void SpeechDispatcher::drop() {
    m_idle.stop();
    m_replies.clear();
    m_lines.clear();
    m_message.clear();
    m_earlyEnds.clear();
    m_isJapanese = false;
    const QSignalBlocker blocker(m_socket);
    m_socket.flush();
    m_socket.abort();
    if (m_starter.state() != QProcess::NotRunning) {
        m_starter.kill();
    }
}

// A service that owes an answer for long is better called anew.
bool SpeechDispatcher::isStuck() const {
    if (m_starter.state() != QProcess::NotRunning) {
        return m_sinceProgress.hasExpired(std::chrono::milliseconds(longestStart).count());
    }
    const bool owesAnswer = !m_replies.empty() || m_socket.state() == QLocalSocket::ConnectingState;
    return owesAnswer && m_sinceProgress.hasExpired(std::chrono::milliseconds(longestSilence).count());
}

// The reading.

void SpeechDispatcher::submit() {
    if (!isJapanese(m_reading->text)) {
        announce(m_reading->text);
        return;
    }
    m_isJapanese = true;
    command("SET SELF LANGUAGE ja");
    command("GET OUTPUT_MODULE", [this, id = m_reading->id](int code, const Lines &lines) {
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
        if (isWaiting && m_socket.state() == QLocalSocket::ConnectedState) {
            announce(kana);
        }
    });
}

void SpeechDispatcher::announce(const QString &text) {
    command("SET SELF VOLUME " + QByteArray::number(m_reading->volume));
    m_stage = Stage::Announced;
    m_message.clear();
    m_earlyEnds.clear();
    command("SPEAK", [this, id = m_reading->id, text](int code, const Lines &) {
        if (code != answer::receivingData) {
            end(false);
            return;
        }
        m_stage = Stage::Sent;
        send(asData(text), [this, id](int result, const Lines &lines) {
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
    rest();
    QMetaObject::invokeMethod(
        this, [this, id, finished] { m_ended(id, finished); }, Qt::QueuedConnection);
}

void SpeechDispatcher::rest() {
    if (m_socket.state() == QLocalSocket::ConnectedState) {
        m_idle.start();
    }
}

// The protocol: a command is a line, an answer some lines with a code, the last one without a hyphen after
// it.

void SpeechDispatcher::command(const QByteArray &line, Reply reply) {
    send(line + "\r\n", std::move(reply));
}

void SpeechDispatcher::send(const QByteArray &bytes, Reply reply) {
    if (m_replies.empty()) {
        m_sinceProgress.start();
    }
    m_replies.push_back(std::move(reply));
    m_socket.write(bytes);
    m_socket.flush();
}

void SpeechDispatcher::receive() {
    while (m_socket.canReadLine()) {
        receiveLine(m_socket.readLine().trimmed());
    }
    const bool isFlood = m_lines.size() > longestAnswer || m_earlyEnds.size() > longestAnswer;
    if (isFlood || m_socket.bytesAvailable() > longestLine) {
        lost(noSpeechService());
    }
}

void SpeechDispatcher::receiveLine(const QByteArray &line) {
    constexpr qsizetype codeLength = 3;
    bool isCode = false;
    const int code = line.left(codeLength).toInt(&isCode);
    if (!isCode || line.size() <= codeLength) {
        lost(noSpeechService());
        return;
    }
    if (line[codeLength] == '-') {
        m_lines.append(line.mid(codeLength + 1));
        return;
    }
    const Lines lines = std::exchange(m_lines, {});
    if (code >= answer::firstEvent) {
        receiveEvent(code, lines);
    } else if (!m_replies.empty()) {
        m_sinceProgress.start();
        const Reply reply = std::move(m_replies.front());
        m_replies.pop_front();
        if (reply) {
            reply(code, lines);
        }
    }
}

void SpeechDispatcher::receiveEvent(int code, const Lines &lines) {
    const bool isEnd = code == answer::end || code == answer::cancel;
    if (!isEnd || lines.isEmpty() || !m_reading) {
        return;
    }
    const bool finished = code == answer::end;
    if (m_stage == Stage::Sent) {
        m_earlyEnds.insert(lines.first(), finished);
    } else if (m_stage == Stage::Read && lines.first() == m_message) {
        end(finished);
    }
}

} // namespace kova
