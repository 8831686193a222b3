#include "PlayerProcess.h"

#include <QtDebug>
#include <array>
#include <cerrno>
#include <cstring>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace kova {

namespace {

using Kind = message::Answer::Kind;
using namespace std::chrono_literals;

constexpr auto longestSilence = 2s;
constexpr auto patience = 250ms;

// More than a player tells that is in order, even if we were away for a while.
qint64 mostAnswers(qint64 age) {
    return 16 + 4 * age / 1000;
}

} // namespace

PlayerProcess::PlayerProcess(const QByteArray &program, const message::Play &request, Failed failed,
                             const std::vector<int> &held)
    : m_failed(std::move(failed)) {
    m_age.start();
    m_silence.setSingleShot(true);
    connect(&m_silence, &QTimer::timeout, this, &PlayerProcess::fallenSilent);
    m_silence.start(longestSilence);
    if (const std::optional<QString> reason = start(program, request, held)) {
        fail(QStringLiteral("The player can't be started: ") + *reason);
    }
}

PlayerProcess::~PlayerProcess() {
    if (m_child) {
        tell(message::Stop());
        ChildProcess::endSoon(std::move(m_child), patience);
    }
    close(m_socket);
}

// Why it can't be.
std::optional<QString> PlayerProcess::start(const QByteArray &program, const message::Play &request,
                                            const std::vector<int> &held) {
    std::array<int, 2> ends{-1, -1};
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()) != 0) {
        return QString::fromLocal8Bit(std::strerror(errno));
    }
    m_socket = ends[0];
    m_notifier = std::make_unique<QSocketNotifier>(m_socket, QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &PlayerProcess::receive);
    tell(request);
    std::vector<int> descriptors{ends[1]};
    descriptors.insert(descriptors.end(), held.begin(), held.end());
    auto child = ChildProcess::start(program, descriptors, [this](int signal) { childEnded(signal); });
    close(ends[1]);
    if (!child) {
        return child.error();
    }
    m_child = std::move(child).value();
    return std::nullopt;
}

void PlayerProcess::setVolume(float volume) {
    tell(message::Volume{message::clampedVolume(volume)});
}

// A player that does not take it will be found to be silent.
void PlayerProcess::tell(const message::Request &request) {
    const std::string packet = message::encode(request);
    send(m_socket, packet.data(), packet.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
}

// Not more at a time than leaves room for others in the event loop.
void PlayerProcess::receive() {
    constexpr int most = 32;
    for (int i = 0; i < most && receiveOne(); ++i) {
    }
}

bool PlayerProcess::receiveOne() {
    std::array<char, message::longest> packet{};
    const ssize_t size = recv(m_socket, packet.data(), packet.size(), MSG_TRUNC | MSG_DONTWAIT);
    if (size < 0) {
        return false;
    }
    if (size == 0) {
        m_notifier->setEnabled(false); // its end comes by itself
        return false;
    }
    m_silence.start(longestSilence);
    m_answers += 1;
    const bool isWhole = static_cast<size_t>(size) <= packet.size();
    const auto answer =
        isWhole ? message::decodeAnswer({packet.data(), static_cast<size_t>(size)}) : std::nullopt;
    if (m_answers > mostAnswers(m_age.elapsed())) {
        fail(QStringLiteral("The player talks without end"));
    } else if (!answer) {
        fail(QStringLiteral("The player talks nonsense"));
    } else {
        heed(*answer);
    }
    return m_failed != nullptr;
}

void PlayerProcess::heed(const message::Answer &answer) {
    switch (answer.kind) {
    case Kind::Playing:
    case Kind::Alive:
        m_isOutage = false;
        break;
    case Kind::Waiting:
        if (!std::exchange(m_isOutage, true)) {
            qWarning().noquote() << "kova-alarm: no sound:" << QString::fromStdString(answer.reason);
        }
        break;
    case Kind::Refused:
        fail(QString::fromStdString(answer.reason));
        break;
    case Kind::Ended:
        m_failed = {};
        m_silence.stop();
        break;
    }
}

// What it has told may still lie in the socket, if we were away ourselves.
void PlayerProcess::fallenSilent() {
    const qint64 heard = m_answers;
    receive();
    if (m_answers == heard) {
        fail(QStringLiteral("The player does not answer"));
    }
}

void PlayerProcess::childEnded(int signal) {
    receive();
    fail(signal == 0 ? QStringLiteral("The player ended too soon")
                     : QStringLiteral("The player crashed: ") + QString::fromLocal8Bit(strsignal(signal)));
}

void PlayerProcess::fail(const QString &reason) {
    m_silence.stop();
    if (m_notifier) {
        m_notifier->setEnabled(false);
    }
    if (m_child) {
        ChildProcess::endSoon(std::move(m_child), 0ms);
    }
    if (const Failed failed = std::exchange(m_failed, {})) {
        QMetaObject::invokeMethod(
            this, [failed, reason] { failed(reason); }, Qt::QueuedConnection);
    }
}

} // namespace kova
