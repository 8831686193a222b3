// Plays one sound for the application, which starts this program with one end of a socket pair; see
// PlayerProtocol.h. Files of unknown origin are decoded here, so that one that crashes or hangs its decoder
// costs only its sound.

#include "Confinement.h"
#include "Playback.h"

#include <csignal>
#include <sys/prctl.h>
#include <thread>
#include <unistd.h>

namespace {

using namespace kova;
using Kind = protocol::Request::Kind;

// Applies volume changes until another request, an invalid packet, the end of the application or the
// deadline.
void processRequests(const ApplicationLink &application, Playback &playback,
                     ApplicationLink::Deadline deadline) {
    for (;;) {
        const auto request = application.receive(deadline);
        if (!request || request->kind != Kind::SetVolume) {
            return;
        }
        playback.setVolume(request->volume);
    }
}

} // namespace

int main() {
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);         // a write beyond the limit then fails instead
    prctl(PR_SET_NAME, "kova-alarm-play"); // instead of the number of the descriptor it was started from
    confine();
    const ApplicationLink application;
    const auto request = application.receive();
    if (!request || request->kind != Kind::Play) {
        return 1;
    }
    Playback playback(application, *request);
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(request->maxDuration);
    std::thread([&playback] { playback.sendHeartbeats(); }).detach();
    std::thread([&playback] {
        playback.play();
        _exit(0);
    }).detach();
    processRequests(application, playback, deadline);
    application.send(protocol::Event::Kind::Ended);
    // Without joining the other threads, which the sound server or the decoder may block.
    _exit(0);
}
