#include "PlayerProcess.h"

#include "shownText.h"

#include <QtDebug>
#include <linux/close_range.h>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace kova {

namespace {

using Kind = protocol::Event::Kind;
using namespace std::chrono_literals;

constexpr auto heartbeatTimeout = 2s;
constexpr auto stopGracePeriod = 250ms;
const auto startError = QStringLiteral("The player cannot be started: ");

// Upper bound on messages after `age` ms: twice the heartbeat rate plus a margin. Counted from the start, so
// that a backlog that is read late does not exceed it.
qint64 maxMessages(qint64 age) {
    return 16 + 4 * age / 1000;
}

} // namespace

PlayerProcess::PlayerProcess(const Program &program, const protocol::Request &request,
                             AudioPlayers::ErrorCallback onError)
    : m_request(request),
      m_onError(std::move(onError)) {
    m_age.start();
    m_heartbeatTimer.setSingleShot(true);
    connect(&m_heartbeatTimer, &QTimer::timeout, this, &PlayerProcess::onHeartbeatTimeout);
    m_heartbeatTimer.start(heartbeatTimeout);
    std::array<int, 2> ends{-1, -1};
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()) != 0) {
        fail(startError + qt_error_string());
        return;
    }
    m_socket = ends[0];
    m_notifier = std::make_unique<QSocketNotifier>(m_socket, QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &PlayerProcess::receive);
    send(m_socket, &m_request, sizeof m_request, MSG_NOSIGNAL | MSG_DONTWAIT);
    start(program, ends[1]);
    close(ends[1]);
}

// The player exits when the socket is closed.
PlayerProcess::~PlayerProcess() {
    m_notifier.reset();
    close(m_socket);
    if (m_process) {
        releaseProcess(stopGracePeriod);
    }
}

// Starts the player in its own process group, so that Ctrl+C in the terminal does not reach it, with no
// descriptors but its own.
void PlayerProcess::start(const Program &program, int socket) {
    m_process = std::make_unique<QProcess>();
    m_process->setProcessEnvironment(program.environment);
    m_process->setStandardInputFile(QProcess::nullDevice());
    m_process->setStandardOutputFile(QProcess::nullDevice());
    m_process->setStandardErrorFile(QProcess::nullDevice());
    m_process->setChildProcessModifier([socket, descriptors = program.descriptors] {
        setpgid(0, 0);
        int number = dup2(socket, protocol::socket);
        for (const int descriptor : descriptors) {
            number += 1;
            descriptor < 0 ? close(number) : dup2(descriptor, number);
        }
        close_range(static_cast<unsigned int>(number) + 1, ~0U, CLOSE_RANGE_CLOEXEC);
    });
    connect(m_process.get(), &QProcess::finished, this, &PlayerProcess::onExit);
    connect(m_process.get(), &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            fail(startError + m_process->errorString());
        }
    });
    m_process->start(program.path);
}

// Kills the process after the grace period. Its object deletes itself, since the destructor of a running
// QProcess blocks; at the end of the application the player exits by itself.
void PlayerProcess::releaseProcess(std::chrono::milliseconds gracePeriod) {
    QProcess *const process = m_process.release();
    process->disconnect(this);
    if (process->state() == QProcess::NotRunning) {
        process->deleteLater();
        return;
    }
    connect(process, &QProcess::stateChanged, process, [process](QProcess::ProcessState state) {
        if (state == QProcess::NotRunning) {
            process->deleteLater();
        }
    });
    QTimer::singleShot(gracePeriod, process, [process] { process->kill(); });
}

// Handles a bounded number of packets per call, to avoid starving the event loop.
void PlayerProcess::receive() {
    constexpr int maxPackets = 32;
    for (int i = 0; i < maxPackets && receiveOne(); ++i) {
    }
}

bool PlayerProcess::receiveOne() {
    std::array<char, sizeof(protocol::Event)> packet{};
    const ssize_t size = recv(m_socket, packet.data(), packet.size(), MSG_TRUNC | MSG_DONTWAIT);
    if (size < 0) {
        return false;
    }
    if (size == 0) {
        m_notifier->setEnabled(false); // end of file; QProcess reports the exit
        return false;
    }
    m_heartbeatTimer.start(heartbeatTimeout);
    m_messages += 1;
    const bool isWhole = static_cast<size_t>(size) == packet.size();
    const auto event = isWhole ? protocol::decode<protocol::Event>(packet) : std::nullopt;
    if (m_messages > maxMessages(m_age.elapsed())) {
        fail(QStringLiteral("The player sends too many messages"));
    } else if (!event) {
        fail(QStringLiteral("The player sent an invalid message"));
    } else {
        handleEvent(*event);
    }
    return m_onError != nullptr;
}

void PlayerProcess::handleEvent(const protocol::Event &event) {
    const QString reason = plainLine(QString::fromStdString(event.reason.toString()));
    switch (event.kind) {
    case Kind::Playing:
    case Kind::Alive:
        m_isOutage = false;
        break;
    case Kind::Waiting:
        if (!std::exchange(m_isOutage, true)) {
            qWarning().noquote() << "kova-alarm: no sound:" << reason;
        }
        break;
    case Kind::Rejected:
    case Kind::Failed:
        fail(reason, event.kind == Kind::Rejected);
        break;
    case Kind::Ended:
        if (m_request.loops < 0 && m_age.elapsed() < m_request.maxDuration) {
            fail(QStringLiteral("The repeated sound has ended"));
        }
        m_onError = {};
        m_heartbeatTimer.stop();
        break;
    }
}

// Reads the socket once more, since messages may be queued if the event loop was blocked.
void PlayerProcess::onHeartbeatTimeout() {
    const qint64 before = m_messages;
    receive();
    if (m_messages == before) {
        fail(QStringLiteral("The player does not respond"));
    }
}

// The exit code of a crashed process is the signal.
void PlayerProcess::onExit(int code, QProcess::ExitStatus status) {
    receive();
    fail(status == QProcess::NormalExit
             ? QStringLiteral("The player exited unexpectedly")
             : QStringLiteral("The player crashed: ") + QString::fromLocal8Bit(strsignal(code)));
}

void PlayerProcess::fail(const QString &reason, bool isFinal) {
    m_heartbeatTimer.stop();
    if (m_notifier) {
        m_notifier->setEnabled(false);
    }
    if (m_process) {
        releaseProcess(0ms);
    }
    if (const AudioPlayers::ErrorCallback onError = std::exchange(m_onError, {})) {
        QMetaObject::invokeMethod(
            this,
            [onError, reason, isFinal] {
                onError({reason, isFinal});
            },
            Qt::QueuedConnection);
    }
}

} // namespace kova
