#include "SpeechConnection.h"

#include <QStandardPaths>

namespace kova {

namespace {

constexpr std::chrono::seconds idleTime{10};
constexpr std::chrono::seconds startTimeout{20};
constexpr qint64 maxLineLength = 4096;
constexpr qsizetype maxReplyLines = 20'000; // a module may list 13,000 voices
constexpr int firstEventCode = 700;

// "unix_socket" or "unix_socket:PATH", as libspeechd parses it.
QString socketPath() {
    const QString address = qEnvironmentVariable("SPEECHD_ADDRESS");
    const QString prefix = QStringLiteral("unix_socket:");
    if (address.startsWith(prefix)) {
        return address.mid(prefix.size());
    }
    const QString cache = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return (runtime.isEmpty() ? cache : runtime) + QStringLiteral("/speech-dispatcher/speechd.sock");
}

} // namespace

SpeechConnection::SpeechConnection(Listener listener, std::chrono::milliseconds replyTimeout)
    : m_listener(std::move(listener)),
      m_replyTimeout(replyTimeout) {
    m_socket.setReadBufferSize(2 * maxLineLength); // limits the memory that a faulty service can fill
    connect(&m_socket, &QLocalSocket::connected, this, &SpeechConnection::sendHandshake);
    connect(&m_socket, &QLocalSocket::readyRead, this, &SpeechConnection::receive);
    // Queued, so that a connection attempt that fails immediately is reported from the event loop too.
    connect(
        &m_socket, &QLocalSocket::stateChanged, this,
        [this](QLocalSocket::LocalSocketState state) {
            if (state == QLocalSocket::UnconnectedState && m_socket.state() == state) {
                fail(m_socket.errorString());
            }
        },
        Qt::QueuedConnection);

    m_starter.setStandardInputFile(QProcess::nullDevice());
    m_starter.setStandardOutputFile(QProcess::nullDevice());
    m_starter.setStandardErrorFile(QProcess::nullDevice());
    connect(&m_starter, &QProcess::stateChanged, this, [this](QProcess::ProcessState state) {
        if (state == QProcess::NotRunning && m_isNeeded) {
            open(); // it has spawned the service, or failed
        }
    });

    m_idle.setSingleShot(true);
    m_idle.setInterval(idleTime);
    connect(&m_idle, &QTimer::timeout, this, &SpeechConnection::abort);
    m_timeout.setSingleShot(true);
    connect(&m_timeout, &QTimer::timeout, this, &SpeechConnection::onTimeout);
}

SpeechConnection::~SpeechConnection() {
    m_isNeeded = false;
    abort();
    constexpr int gracePeriod = 500; // ms
    m_starter.waitForFinished(gracePeriod);
}

bool SpeechConnection::ensureConnected() {
    m_idle.stop();
    m_isNeeded = true;
    if (m_socket.state() == QLocalSocket::UnconnectedState && m_starter.state() == QProcess::NotRunning) {
        m_hasStartedService = false;
        open();
        return false;
    }
    return isReady();
}

void SpeechConnection::open() {
    m_timeout.start(m_replyTimeout);
    m_socket.connectToServer(socketPath());
}

bool SpeechConnection::startService() {
    if (std::exchange(m_hasStartedService, true)) {
        return false;
    }
    // QProcess in Qt 6.4 loses a descriptor at each start of a missing program.
    const QString program = QStandardPaths::findExecutable(QStringLiteral("speech-dispatcher"));
    if (program.isEmpty()) {
        open();
        return true;
    }
    m_timeout.start(startTimeout);
    m_starter.start(program, {QStringLiteral("--spawn"), QStringLiteral("--communication-method"),
                              QStringLiteral("unix_socket"), QStringLiteral("--socket-path"), socketPath()});
    return true;
}

void SpeechConnection::sendHandshake() {
    command("SET SELF CLIENT_NAME \"" + qgetenv("USER") + ":kova-alarm:main\"");
    command("SET SELF NOTIFICATION END ON");
    command("SET SELF NOTIFICATION CANCEL ON");
    command("SET SELF PRIORITY IMPORTANT"); // messages of other programs do not replace it
    m_listener.ready();
}

void SpeechConnection::setIdle() {
    m_isNeeded = false;
    if (isReady()) {
        m_idle.start();
    }
}

void SpeechConnection::fail(const QString &reason) {
    abort();
    m_listener.lost(reason);
}

void SpeechConnection::abort() {
    m_idle.stop();
    m_timeout.stop();
    m_replies.clear();
    m_lines.clear();
    const QSignalBlocker blocker(m_socket);
    if (isReady()) {
        m_socket.write("CANCEL SELF\r\n"); // read by an unresponsive service when it continues
        m_socket.flush();
    }
    m_socket.abort();
    if (m_starter.state() != QProcess::NotRunning) {
        m_starter.kill();
    }
}

void SpeechConnection::onTimeout() {
    if (m_isNeeded) {
        fail(QStringLiteral("the speech service does not reply"));
    } else {
        abort();
    }
}

// A command is a line. A reply consists of lines with a code; in the last one a space follows the code, in
// the others a hyphen.

void SpeechConnection::command(const QByteArray &line, Reply reply) {
    send(line + "\r\n", std::move(reply));
}

void SpeechConnection::send(const QByteArray &bytes, Reply reply) {
    if (m_replies.empty()) {
        m_timeout.start(m_replyTimeout);
    }
    m_replies.push_back(std::move(reply));
    m_socket.write(bytes);
    m_socket.flush();
}

void SpeechConnection::receive() {
    bool isValid = true;
    while (isValid && m_socket.canReadLine()) {
        isValid = receiveLine(m_socket.readLine().trimmed());
    }
    if (!isValid || m_lines.size() > maxReplyLines || m_socket.bytesAvailable() > maxLineLength) {
        fail(QStringLiteral("invalid reply from the speech service"));
    }
}

bool SpeechConnection::receiveLine(const QByteArray &line) {
    constexpr qsizetype codeLength = 3;
    bool isCode = false;
    const int code = line.left(codeLength).toInt(&isCode);
    if (!isCode || line.size() <= codeLength) {
        return false;
    }
    if (m_timeout.isActive()) {
        m_timeout.start(m_replyTimeout);
    }
    if (line[codeLength] == '-') {
        m_lines.append(line.mid(codeLength + 1));
        return true;
    }
    const Lines lines = std::exchange(m_lines, {});
    if (code >= firstEventCode) {
        m_listener.event(code, lines);
    } else if (!m_replies.empty()) {
        const Reply reply = std::move(m_replies.front());
        m_replies.pop_front();
        if (m_replies.empty()) {
            m_timeout.stop();
        }
        if (reply) {
            reply(code, lines);
        }
    }
    return true;
}

} // namespace kova
