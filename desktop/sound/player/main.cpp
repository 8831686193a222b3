// Plays one sound for the application, which starts this program with one end of a socket pair; see
// PlayerProtocol.h.

#include "Confinement.h"
#include "Playback.h"

#include <csignal>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

namespace {

using namespace kova;

std::optional<protocol::Request> receiveRequest() {
    std::array<char, sizeof(protocol::Request)> packet{};
    const ssize_t size = recv(protocol::socket, packet.data(), packet.size(), MSG_TRUNC);
    const bool isWhole = size == static_cast<ssize_t>(packet.size());
    return isWhole ? protocol::decode<protocol::Request>(packet) : std::nullopt;
}

// Waits until the application closes its end of the socket or the time is over.
void waitForStop(int maxDuration) {
    pollfd application{.fd = protocol::socket, .events = POLLIN, .revents = 0};
    if (poll(&application, 1, maxDuration) == 0) {
        sendEvent(protocol::Event::Kind::Ended);
    }
}

} // namespace

int main() {
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);         // a write beyond the limit then fails instead
    prctl(PR_SET_NAME, "kova-alarm-play"); // instead of the number of the descriptor it was started from
    confine();
    const std::optional<protocol::Request> request = receiveRequest();
    if (!request) {
        return 1;
    }
    Playback playback(*request);
    std::thread([&playback] { playback.sendHeartbeats(); }).detach();
    std::thread([&playback] {
        playback.play();
        _exit(0);
    }).detach();
    waitForStop(request->maxDuration);
    _exit(0); // without joining the threads, which the sound server or the decoder may block
}
