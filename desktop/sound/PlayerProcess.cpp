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

PlayerProcess::PlayerProcess(QByteArray program, std::string path, AudioPlayers::Refusal refused,
                             std::vector<int> held)
    : m_program(std::move(program)),
      m_held(std::move(held)),
      m_refused(std::move(refused)) {
    m_request.path = std::move(path);
    m_request.longest = 1h;
    m_silence.setSingleShot(true);
    connect(&m_silence, &QTimer::timeout, this, &PlayerProcess::fallenSilent);
}

PlayerProcess::~PlayerProcess() {
    stop();
    close(m_socket);
}

void PlayerProcess::play() {
    m_age.start();
    m_silence.start(longestSilence);
    if (const std::optional<QString> reason = start()) {
        fail(QStringLiteral("The player can't be started: ") + *reason);
    }
}

void PlayerProcess::stop() {
    m_refused = {};
    m_silence.stop();
    if (m_child) {
        tell(message::Stop());
        ChildProcess::endSoon(std::move(m_child), patience);
    }
}

// Why it can't be.
std::optional<QString> PlayerProcess::start() {
    std::array<int, 2> ends{-1, -1};
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()) != 0) {
        return QString::fromLocal8Bit(std::strerror(errno));
    }
    m_socket = ends[0];
    m_notifier = std::make_unique<QSocketNotifier>(m_socket, QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &PlayerProcess::receive);
    tell(m_request);
    std::vector<int> descriptors{ends[1]};
    descriptors.insert(descriptors.end(), m_held.begin(), m_held.end());
    auto child = ChildProcess::start(m_program, descriptors, [this](int signal) { childEnded(signal); });
    close(ends[1]);
    if (!child) {
        return child.error();
    }
    m_child = std::move(child).value();
    return std::nullopt;
}

void PlayerProcess::setVolume(float volume) {
    m_request.volume = message::clampedVolume(volume);
    if (m_child) {
        tell(message::Volume{m_request.volume});
    }
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
    return m_refused != nullptr;
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
        m_refused = {};
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
    if (const AudioPlayers::Refusal refused = std::exchange(m_refused, {})) {
        QMetaObject::invokeMethod(
            this, [refused, reason] { refused(reason); }, Qt::QueuedConnection);
    }
}

} // namespace kova
