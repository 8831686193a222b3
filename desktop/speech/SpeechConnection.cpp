#include "SpeechConnection.h"

#include <QStandardPaths>
#include <pwd.h>
#include <unistd.h>

namespace kova {

namespace {

constexpr std::chrono::seconds idleTime{10};
constexpr std::chrono::seconds longestSilence{3};
constexpr std::chrono::seconds longestStart{20};
constexpr qint64 longestLine = 4096;
constexpr qsizetype longestAnswer = 2000; // lines
constexpr int firstEvent = 700;           // the code of an answer that nobody asked for

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

} // namespace

SpeechConnection::SpeechConnection(Listener listener) : m_listener(std::move(listener)) {
    m_socket.setReadBufferSize(2 * longestLine); // a flood waits on the service's side
    connect(&m_socket, &QLocalSocket::connected, this, &SpeechConnection::introduce);
    connect(&m_socket, &QLocalSocket::readyRead, this, &SpeechConnection::receive);
    // Queued, so that a connection that fails at once is told like one that is lost later.
    connect(
        &m_socket, &QLocalSocket::stateChanged, this,
        [this](QLocalSocket::LocalSocketState state) {
            if (state == QLocalSocket::UnconnectedState && m_socket.state() == state) {
                lose(m_socket.errorString());
            }
        },
        Qt::QueuedConnection);

    m_starter.setStandardInputFile(QProcess::nullDevice());
    m_starter.setStandardOutputFile(QProcess::nullDevice());
    m_starter.setStandardErrorFile(QProcess::nullDevice());
    connect(&m_starter, &QProcess::finished, this, &SpeechConnection::serviceStarted);
    connect(&m_starter, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            serviceStarted();
        }
    });

    m_idle.setSingleShot(true);
    m_idle.setInterval(idleTime);
    connect(&m_idle, &QTimer::timeout, this, &SpeechConnection::drop);
}

SpeechConnection::~SpeechConnection() {
    m_isWanted = false;
    drop();
    constexpr int untilKilled = 500; // ms
    m_starter.waitForFinished(untilKilled);
}

bool SpeechConnection::want() {
    m_idle.stop();
    m_isWanted = true;
    if (isStuck()) {
        drop();
    }
    if (isReady()) {
        return true;
    }
    if (m_socket.state() == QLocalSocket::UnconnectedState && m_starter.state() == QProcess::NotRunning) {
        m_hasStartedService = false;
        open();
    }
    return false;
}

void SpeechConnection::open() {
    m_sinceProgress.start();
    m_socket.connectToServer(socketPath());
}

bool SpeechConnection::startService() {
    if (std::exchange(m_hasStartedService, true)) {
        return false;
    }
    m_starter.start(QStringLiteral("speech-dispatcher"),
                    {QStringLiteral("--spawn"), QStringLiteral("--communication-method"),
                     QStringLiteral("unix_socket"), QStringLiteral("--socket-path"), socketPath()});
    return true;
}

void SpeechConnection::serviceStarted() {
    if (m_isWanted) {
        open();
    }
}

void SpeechConnection::introduce() {
    command("SET SELF CLIENT_NAME \"" + userName() + ":kova-alarm:main\"");
    command("SET SELF NOTIFICATION END ON");
    command("SET SELF NOTIFICATION CANCEL ON");
    command("SET SELF PRIORITY IMPORTANT"); // no other program's message takes its place
    m_listener.ready();
}

void SpeechConnection::rest() {
    m_isWanted = false;
    if (isReady()) {
        m_idle.start();
    }
}

void SpeechConnection::distrust() {
    lose(QStringLiteral("what answers is no speech service"));
}

void SpeechConnection::lose(const QString &reason) {
    drop();
    m_listener.lost(reason);
}

void SpeechConnection::drop() {
    m_idle.stop();
    m_replies.clear();
    m_lines.clear();
    const QSignalBlocker blocker(m_socket);
    m_socket.flush();
    m_socket.abort();
    if (m_starter.state() != QProcess::NotRunning) {
        m_starter.kill();
    }
}

// A service that owes an answer for long is better called anew.
bool SpeechConnection::isStuck() const {
    if (m_starter.state() != QProcess::NotRunning) {
        return m_sinceProgress.hasExpired(std::chrono::milliseconds(longestStart).count());
    }
    const bool owesAnswer = !m_replies.empty() || m_socket.state() == QLocalSocket::ConnectingState;
    return owesAnswer && m_sinceProgress.hasExpired(std::chrono::milliseconds(longestSilence).count());
}

// The protocol: a command is a line, an answer some lines with a code, the last one without a hyphen after
// it.

void SpeechConnection::command(const QByteArray &line, Reply reply) {
    send(line + "\r\n", std::move(reply));
}

void SpeechConnection::send(const QByteArray &bytes, Reply reply) {
    if (m_replies.empty()) {
        m_sinceProgress.start();
    }
    m_replies.push_back(std::move(reply));
    m_socket.write(bytes);
    m_socket.flush();
}

void SpeechConnection::receive() {
    while (m_socket.canReadLine()) {
        receiveLine(m_socket.readLine().trimmed());
    }
    if (m_lines.size() > longestAnswer || m_socket.bytesAvailable() > longestLine) {
        distrust();
    }
}

void SpeechConnection::receiveLine(const QByteArray &line) {
    constexpr qsizetype codeLength = 3;
    bool isCode = false;
    const int code = line.left(codeLength).toInt(&isCode);
    if (!isCode || line.size() <= codeLength) {
        distrust();
        return;
    }
    if (line[codeLength] == '-') {
        m_lines.append(line.mid(codeLength + 1));
        return;
    }
    const Lines lines = std::exchange(m_lines, {});
    if (code >= firstEvent) {
        m_listener.event(code, lines);
    } else if (!m_replies.empty()) {
        m_sinceProgress.start();
        const Reply reply = std::move(m_replies.front());
        m_replies.pop_front();
        if (reply) {
            reply(code, lines);
        }
    }
}

} // namespace kova
